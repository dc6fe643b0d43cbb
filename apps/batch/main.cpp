// boreforge-batch: the tunnel job from a command line, for scripts.
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/Message.h"
#include "batch/BatchOptions.h"
#include "batch/ShapeWarnings.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

bool IsApart(const char* what, const std::string& output, const std::string& input) {
    if (output.empty() || input.empty() || !SameFile(output, input)) return true;
    ShowError(std::string("Error - The ") + what + " Would Replace " + input + "!");
    return false;
}

// No output may replace one of the inputs. That the object doesn't replace the track is left to the job,
// which first reports a track without tunnels.
bool OutputsAreApart(const BatchOptions& options, const BatchJob& job) {
    const std::string trackOut = job.TrackOut.empty() ? std::string() : TrackSavePath(job.TrackOut);
    const bool isReplaced = options.OutputFolder.empty() || IsApart("Track", trackOut, job.Track);
    return isReplaced && IsApart("3DS Object", job.Object, options.Shape) &&
           IsApart("3DS Object", job.Object, trackOut) && IsApart("Track", trackOut, options.Shape);
}

bool PrepareShape(const BatchOptions& options) {
    ResetTunnelShape();
    if (options.Shape.empty()) {
        MakePresetShape(options.Preset);
    } else if (!LoadTunnelShape(options.Shape)) {
        ShowError("Error - Invalid Tunnel Shape File!");
        PrintError(options.Shape + ": " + ReadFailureText("tunnel shape"));
        return false;
    }
    for (const std::string& warning : ShapeWarnings(TunnelShape, options.Choices.DoubleSided))
        PrintError("Warning: " + warning);
    return true;
}

std::int32_t CountTunnels() {
    std::int32_t tunnels = 0;
    for (const TrackSegment& segment : TrackFile.Segments)
        tunnels += segment.IsTunnel ? 1 : 0;
    return tunnels;
}

void PrintSummary(std::int32_t tunnels, const std::string& object, bool isWritten) {
    std::int64_t faces = 0;
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        faces += mesh.FaceCount();
    std::printf("%d segments, %d tunnel segments: %d objects, %lld faces, %d bytes %s %s\n",
                TrackFile.SegmentCount(), tunnels, Model3DS.MeshCount(), static_cast<long long>(faces),
                Compute3DSLength(), isWritten ? "in" : "for", Printable(object).c_str());
}

bool RunJob(const BatchOptions& options, const BatchJob& job) {
    if (!OutputsAreApart(options, job)) return false;
    if (!OpenTrack(job.Track)) {
        PrintError(job.Track + ": " + ReadFailureText("track"));
        return false;
    }
    if (!job.TrackOut.empty()) TrackFilePath = job.TrackOut;
    const std::int32_t tunnels = CountTunnels();
    TunnelJobSettings settings = DeriveJobSettings(options.Choices, job.Object);
    if (options.NoTrack) settings.PlaceObject = false;
    if (options.DryRun || options.NoTrack) {
        if (!BuildTunnelObject(settings)) return false;
        if (Compute3DSLength() < 0) {
            ShowError("Error - The Tunnel Is Too Large for a 3DS File!");
            return false;
        }
        if (!options.DryRun && !WriteTunnelObject(job.Object)) return false;
    } else if (!RunTunnelJob(settings)) {
        return false;
    }
    PrintSummary(tunnels, job.Object, !options.DryRun);
    return true;
}

int RunBatch(const BatchOptions& options) {
    if (!PrepareShape(options)) return kFailed;
    int status = kDone;
    for (const BatchJob& job : options.Jobs) {
        if (RunJob(options, job)) continue;
        status = kFailed;
        if (options.Jobs.size() > 1) PrintError("Failed: " + job.Track);
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
