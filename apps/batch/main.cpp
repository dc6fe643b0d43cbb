// boreforge-batch: the tunnel job from a command line, for scripts.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "base/Text.h"
#include "batch/BatchOptions.h"
#include "batch/OutputConflicts.h"
#include "batch/ShapeWarnings.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

// A file of a wrong kind, or one that can't be read: the reason is in a second line.
ExitStatus FailToRead(const Failure& failure, const std::string& path) {
    PrintError(failure.headline + "\n" + OneLine(path) + ": " + failure.reason);
    return kFailed;
}

// False with --strict, where a warning is a failure.
bool Warn(const BatchOptions& options, const std::string& text) {
    PrintError("Warning: " + text);
    return !options.strict;
}

ExitStatus PrepareShape(const BatchOptions& options) {
    ResetTunnelShape();
    if (options.shape.empty()) {
        MakePresetShape(options.preset);
    } else if (const Outcome loaded = LoadTunnelShape(options.shape); !loaded) {
        const Failure context = {.headline = "Error - Invalid Tunnel Shape File!"};
        return FailToRead(loaded.With(context).Why(), options.shape);
    }
    ExitStatus status = kDone;
    for (const std::string& warning : ShapeWarnings(TunnelShape, options.choices.doubleSided))
        if (!Warn(options, warning)) status = kFailed;
    return status;
}

// "1 object", "2 objects"
std::string Count(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

bool WarnOfLosses(const BatchOptions& options, const std::string& track) {
    std::string lost;
    if (TrackOnDisk.foreignChunks > 0)
        lost = Count(TrackOnDisk.foreignChunks, "chunk") + " of an unknown kind";
    if (TrackOnDisk.bytesAfterEnd > 0)
        lost += (lost.empty() ? "" : " and ") + Count(TrackOnDisk.bytesAfterEnd, "byte") +
                " after the last chunk";
    return lost.empty() ||
           Warn(options, OneLine(track) + " has " + lost + "; the saved track won't have them.");
}

void PrintSummary(std::int32_t tunnels, const std::string& object, bool isWritten) {
    std::int64_t faces = 0;
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        faces += mesh.FaceCount();
    const std::string text = Count(TrackFile.SegmentCount(), "segment") + ", " +
                             Count(tunnels, "tunnel segment") + ": " + Count(Model3DS.MeshCount(), "object") +
                             ", " + Count(faces, "face") + ", " + Count(Compute3DSLength(), "byte") +
                             (isWritten ? " in " : " for ") + OneLine(object) + "\n";
    std::fputs(text.c_str(), stdout);
}

Outcome MakeObject(const BatchOptions& options, const BatchJob& job) {
    TunnelJobSettings settings = DeriveJobSettings(options.choices, job.object);
    if (!options.dryRun && !options.noTrack) return RunTunnelJob(settings);
    if (options.noTrack) settings.PlaceObject = false;
    const Outcome built = BuildTunnelObject(settings);
    return options.dryRun ? built : built.Then([&] { return WriteTunnelObject(job.object); });
}

ExitStatus RunJob(const BatchOptions& options, const BatchJob& job) {
    if (const Outcome opened = OpenTrack(job.track); !opened) return FailToRead(opened.Why(), job.track);
    if (!options.noTrack && !WarnOfLosses(options, job.track)) return kFailed;
    if (!job.trackOut.empty()) TrackFilePath = job.trackOut;
    const std::int32_t tunnels = CountTunnels();
    if (const Outcome made = MakeObject(options, job); !made) return Fail(made.Why());
    PrintSummary(tunnels, job.object, !options.dryRun);
    return kDone;
}

// The output folder, if it isn't there yet.
Outcome MakeFolder(const BatchOptions& options) {
    const std::string& path = options.outputFolder;
    std::error_code error;
    if (!path.empty() && !options.dryRun)
        std::filesystem::create_directory(std::u8string(path.begin(), path.end()), error);
    if (!error) return {};
    return Failure{.headline = "Error - The Folder Can't Be Made!", .path = path, .reason = error.message()};
}

int RunBatch(const BatchOptions& options) {
    if (const std::string conflict = ConflictOf(options); !conflict.empty()) {
        PrintError("boreforge-batch: " + conflict);
        return kWrongUsage;
    }
    if (PrepareShape(options) != kDone) return kFailed;
    if (const Outcome made = MakeFolder(options); !made) return Fail(made.Why());
    int status = kDone;
    for (const BatchJob& job : options.jobs) {
        if (RunJob(options, job) == kDone) continue;
        status = kFailed;
        if (options.jobs.size() > 1) PrintError("Failed: " + OneLine(job.track));
    }
    return status;
}

}  // namespace

int main(int count, char** arguments) {
    BatchOptions options;
    CLI::App application("", "boreforge-batch");
    AddBatchOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return RunBatch(options); });
}
