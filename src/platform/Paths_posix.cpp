#include <filesystem>

#include "platform/Paths.h"

namespace boreforge {

namespace {

// The path to which the links at `path` lead, even if nothing is there. Empty if they form a circle.
std::filesystem::path FollowLinks(std::filesystem::path path) {
    for (int hop = 0; hop < 40; ++hop) {
        std::error_code notALink;
        const std::filesystem::path target = std::filesystem::read_symlink(path, notALink);
        if (notALink) return path;
        path = path.parent_path() / target;
    }
    return {};
}

}  // namespace

Place PlaceOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

bool FileExists(const std::string& path) {
    std::error_code failure;
    const auto status = std::filesystem::status(path, failure);
    return !failure && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool SameFile(const std::string& one, const std::string& other) {
    namespace fs = std::filesystem;
    std::error_code failure;
    const bool oneExists = fs::exists(one, failure), otherExists = fs::exists(other, failure);
    if (oneExists && otherExists) return fs::equivalent(one, other, failure);
    if (oneExists || otherExists) return false;
    const fs::path a = FollowLinks(one), b = FollowLinks(other);
    const auto folder = [](const fs::path& path) {
        return path.has_parent_path() ? path.parent_path() : ".";
    };
    return !a.empty() && a.filename() == b.filename() && fs::equivalent(folder(a), folder(b), failure);
}

}  // namespace boreforge
