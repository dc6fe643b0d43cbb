// boreforge-batch: the tunnel job from a command line, for scripts.
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/Message.h"
#include "batch/BatchOptions.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

bool IsApart(const char* what, const std::string& output, const std::string& input) {
    if (output.empty() || input.empty() || !SameFile(output, input)) return true;
    ShowError(std::string("Error - The ") + what + " Would Replace " + input + "!");
    return false;
}

// What is written goes over whatever stands there; that must be none of the user's inputs.
bool OutputsAreApart(const BatchOptions& options) {
    const std::string trackOut = options.TrackOut.empty() ? std::string() : TrackSavePath(options.TrackOut);
    return IsApart("3DS Object", options.Object, options.Track) &&
           IsApart("3DS Object", options.Object, options.Shape) &&
           IsApart("3DS Object", options.Object, trackOut) && IsApart("Track", trackOut, options.Shape);
}

bool PrepareShape(const BatchOptions& options) {
    if (options.Shape.empty()) {
        MakePresetShape(options.Preset);
        return true;
    }
    if (LoadTunnelShape(options.Shape)) return true;
    ShowError("Error - Invalid Tunnel Shape File!\n\n" + options.Shape);
    return false;
}

std::int32_t CountTunnels() {
    std::int32_t tunnels = 0;
    for (const TrackSegment& segment : TrackFile.Segments)
        tunnels += segment.IsTunnel ? 1 : 0;
    return tunnels;
}

void PrintSummary(std::int32_t tunnels, const std::string& object) {
    std::int64_t faces = 0;
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        faces += mesh.FaceCount();
    std::printf("%d segments, %d tunnel segments: %d objects, %lld faces, %d bytes in %s\n",
                TrackFile.SegmentCount(), tunnels, Model3DS.MeshCount(), static_cast<long long>(faces),
                Compute3DSLength(), Printable(object).c_str());
}

int RunBatch(const BatchOptions& options) {
    ResetTunnelShape();
    if (!OutputsAreApart(options) || !PrepareShape(options)) return kFailed;
    if (!OpenTrack(options.Track)) {
        PrintError("\n" + options.Track);  // one of many in a script's loop
        return kFailed;
    }
    if (!options.TrackOut.empty()) TrackFilePath = options.TrackOut;
    const std::int32_t tunnels = CountTunnels();
    if (!RunTunnelJob(DeriveJobSettings(options.Choices, options.Object))) return kFailed;
    PrintSummary(tunnels, options.Object);
    return kDone;
}

}  // namespace

int main(int count, char** arguments) {
    BatchOptions options;
    CLI::App application("", "boreforge-batch");
    AddBatchOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return RunBatch(options); });
}
