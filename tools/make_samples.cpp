// make_samples: writes the tracks and shapes that are handed out with the program.
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "sample_shapes.h"
#include "sample_tracks.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr char kUsage[] =
    R"(Usage: make_samples FOLDER

Writes the sample tracks to FOLDER/tracks and the sample shapes to
FOLDER/elements, over files of the same names.

Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.
)";

struct Sample {
    const char* name;
    void (*make)();
};

constexpr Sample kTracks[] = {
    {"small-circuit.zrtrack", MakeSmallCircuit},
    {"mountain-circuit.zrtrack", MakeMountainCircuit},
    {"long-circuit.zrtrack", MakeLongCircuit},
};
constexpr Sample kShapes[] = {
    {"box.zrbf", [] { MakePresetShape(0); }},
    {"rounded.zrbf", [] { MakePresetShape(1); }},
    {"horseshoe.zrbf", MakeHorseshoe},
    {"round-tube.zrbf", MakeRoundTube},
    {"double-track-arch.zrbf", MakeDoubleTrackArch},
};

bool MakeFolder(const std::filesystem::path& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        std::fprintf(stderr, "make_samples: can't make the folder %s: %s\n", folder.c_str(),
                     failure.message().c_str());
    return !failure;
}

template <std::size_t Count>
bool WriteSamples(const std::filesystem::path& folder, const Sample (&samples)[Count],
                  bool (*write)(const std::string& path)) {
    if (!MakeFolder(folder)) return false;
    for (const Sample& sample : samples) {
        sample.make();
        const std::string path = (folder / sample.name).string();
        if (write(path)) continue;
        std::fprintf(stderr, "make_samples: can't write %s\n", path.c_str());
        return false;
    }
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string folder = count == 2 ? arguments[1] : "";
    if (folder.empty() || folder.starts_with('-')) {
        std::fputs(kUsage, stderr);
        return kWrongUsage;
    }
    const std::filesystem::path root = folder;
    const bool good = WriteSamples(root / "tracks", kTracks,
                                   [](const std::string& path) { return WriteTrackFile(path); }) &&
                      WriteSamples(root / "elements", kShapes, SaveTunnelShape);
    return good ? kDone : kFailed;
}
