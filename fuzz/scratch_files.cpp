#include "scratch_files.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace boreforge {

namespace {

struct ScratchFolder {
    std::filesystem::path path;
    ScratchFolder() {
        const std::filesystem::path memory = "/dev/shm";
        const auto base =
            std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
        path = base / ("boreforge-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

}  // namespace

std::string ScratchPath(const std::string& name) {
    static const ScratchFolder folder;
    return folder.path / name;
}

void WriteScratch(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    Require(file.good());
}

std::vector<std::uint8_t> ReadScratch(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) return {};
    // Reads in one piece: the fuzzer instruments each step of an iterator, which would take most of its time.
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file.tellg()));
    file.seekg(0);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    Require(file.good());
    return bytes;
}

}  // namespace boreforge
