// make_samples: writes the sample tracks and shapes that come with the program.
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "sample_shapes.h"
#include "sample_tracks.h"
#include "shared/CommandLine.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

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
    {"box.zrbf", [] { MakePresetShape(kPresetBox); }},
    {"rounded.zrbf", [] { MakePresetShape(kPresetRounded); }},
    {"horseshoe.zrbf", MakeHorseshoe},
    {"round-tube.zrbf", MakeRoundTube},
    {"double-track-arch.zrbf", MakeDoubleTrackArch},
};

bool MakeFolder(const std::filesystem::path& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        std::fprintf(stderr, "make_samples: can't make the folder %s: %s\n", folder.string().c_str(),
                     failure.message().c_str());
    return !failure;
}

template <std::size_t Count>
bool WriteSamples(const std::filesystem::path& folder, const Sample (&samples)[Count],
                  Outcome (*write)(const std::string& path)) {
    if (!MakeFolder(folder)) return false;
    for (const Sample& sample : samples) {
        sample.make();
        const std::string path = (folder / sample.name).string();
        if (const Outcome written = write(path); !written) {
            Fail(written.With({.headline = "make_samples: can't write this file:", .path = path}).Why());
            return false;
        }
    }
    return true;
}

int WriteAllSamples(const std::filesystem::path& root) {
    const bool good = WriteSamples(root / "tracks", kTracks, WriteTrackFile) &&
                      WriteSamples(root / "elements", kShapes, SaveTunnelShape);
    return good ? kDone : kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    std::filesystem::path root;
    CLI::App application(
        "Writes the sample tracks to FOLDER/tracks and the sample shapes to FOLDER/elements, over files of "
        "the\n"
        "same names.",
        "make_samples");
    application.add_option("FOLDER", root, "Where the samples go")->required();
    return RunProgram(application, count, arguments, [&root] { return WriteAllSamples(root); });
}
