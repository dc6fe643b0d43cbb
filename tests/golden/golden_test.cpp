// Whole jobs, byte for byte. Each folder beside this file is a case; README.md says what is in it.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "batch/BatchOptions.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/ChunkIds.h"
#include "job/mMain.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace {

namespace fs = std::filesystem;

const std::string kCases = PROJECT "/tests/golden";

std::size_t LittleEndian(const Bytes& file, std::size_t at, std::size_t size) {
    return size == 0 ? 0 : file.at(at) | LittleEndian(file, at + 1, size - 1) << 8;
}

std::string NameAt(const Bytes& file, std::size_t at) { return reinterpret_cast<const char*>(&file.at(at)); }

// The bytes of a chunk in front of the chunks in it; all of them if there are none.
std::size_t OwnBytes(const Bytes& file, std::size_t chunk) {
    switch (LittleEndian(file, chunk, 2)) {
        case MAIN3DS:
        case MDATA:
        case MAT_ENTRY:
        case N_TRI_OBJECT:
            return 6;
        case NAMED_OBJECT:
            return 6 + NameAt(file, chunk + 6).size() + 1;
        case FACE_ARRAY:
            return 8 + 8 * LittleEndian(file, chunk + 6, 2);
        default:
            return LittleEndian(file, chunk + 2, 4);
    }
}

std::string Place(std::size_t byte, std::size_t chunk, const std::string& name) {
    return "byte " + std::to_string(byte - chunk) + " of chunk " + name;
}

// What a byte of a .3ds file belongs to.
std::string PlaceInObject(const Bytes& file, std::size_t byte) {
    std::string owner;
    for (std::size_t chunk = 0;; chunk += OwnBytes(file, chunk)) {
        const std::size_t id = LittleEndian(file, chunk, 2);
        if (id == MAT_ENTRY) owner = " of " + NameAt(file, chunk + 12);
        if (id == MASTER_SCALE) owner = "";
        if (id == NAMED_OBJECT) owner = " of " + NameAt(file, chunk + 6);
        if (byte >= chunk + OwnBytes(file, chunk)) continue;
        std::ostringstream name;
        name << "0x" << std::hex << std::uppercase << id << owner;
        return Place(byte, chunk, name.str());
    }
}

// What a byte of a track belongs to. No text in a case is the tag of a chunk.
std::string PlaceInTrack(const Bytes& file, std::size_t byte) {
    const std::string text(file.begin(), file.end());
    std::size_t chunk = 0;
    for (const char* tag : {"ZPHR", "TRCK", "INFO", "BEZR", "SEGM", "SUPP", "FUND", "RASC", "FREN", "TUBE",
                            "CATW", "SCEN", "SCOB", "TERA", "ENVC"})
        if (const std::size_t found = text.rfind(tag, byte); found != std::string::npos)
            chunk = std::max(chunk, found);
    return Place(byte, chunk, text.substr(chunk, 4));
}

// Empty if the files are equal; otherwise says where they first differ. If they differ in length, that isn't
// in the lengths at their start.
std::string Difference(const Bytes& got, const Bytes& expected) {
    if (got == expected) return "";
    constexpr std::size_t kLengths = 40;
    std::size_t byte = got.size() == expected.size() ? 0 : kLengths;
    while (byte < got.size() && byte < expected.size() && got[byte] == expected[byte])
        ++byte;
    const auto place = expected.at(0) == 'Z' ? PlaceInTrack : PlaceInObject;
    return std::to_string(got.size()) + " bytes, expected " + std::to_string(expected.size()) + "; byte " +
           std::to_string(byte) + " differs: " + place(expected, std::min(byte, expected.size() - 1));
}

}  // namespace

struct GoldenTest : CoreTest {
    // Runs the job of a case as the batch program would.
    void RunCase(const std::string& folder) {
        std::ifstream file(folder + "/options");
        std::string text;
        ASSERT_TRUE(std::getline(file, text));
        BatchOptions options;
        CLI::App application;
        AddBatchOptions(application, options);
        application.parse("track.zrtrack tube.3ds " + text);
        if (options.shape.empty())
            MakePresetShape(options.preset == "rounded" ? kPresetRounded : kPresetBox);
        else
            ASSERT_TRUE(static_cast<bool>(LoadTunnelShape(folder + "/" + options.shape)));
        WriteBytes(In("track.zrtrack"), ReadBytes(folder + "/track.zrtrack"));
        ASSERT_TRUE(static_cast<bool>(OpenTrack(In("track.zrtrack"))));
        TrackFilePath = In(options.trackOut.empty() ? "track.zrtrack" : options.trackOut);
        ASSERT_TRUE(static_cast<bool>(RunTunnelJob(DeriveJobSettings(options.choices, In("tube.3ds")))));
        EXPECT_EQ(Difference(ReadBytes(In("tube.3ds")), ReadBytes(folder + "/tube.3ds")), "");
        EXPECT_EQ(Difference(ReadBytes(TrackFilePath), ReadBytes(folder + "/after.zrtrack")), "");
    }
};

TEST_F(GoldenTest, EachCaseHasTheExpectedBytes) {
    for (const auto& entry : fs::directory_iterator(kCases)) {
        if (!entry.is_directory()) continue;
        SCOPED_TRACE(entry.path().filename().string());
        RunCase(entry.path().string());
    }
}

}  // namespace boreforge
