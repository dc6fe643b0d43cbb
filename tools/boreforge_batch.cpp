// boreforge-batch: the tunnel job from a command line, for scripts.
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "base/Message.h"
#include "batch_options.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "version.h"

using namespace boreforge;

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

void ShowOnStandardError(const std::string& text, const std::string&, MessageIcon) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

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
    ShowError("Error - Invalid Tunnel Shape File!");
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
                Compute3DSLength(), object.c_str());
}

int RunBatch(const BatchOptions& options) {
    ResetTunnelShape();
    if (!OutputsAreApart(options) || !PrepareShape(options) || !OpenTrack(options.Track)) return kFailed;
    if (!options.TrackOut.empty()) TrackFilePath = options.TrackOut;
    const std::int32_t tunnels = CountTunnels();
    if (!RunTunnelJob(DeriveJobSettings(options.Choices, options.Object))) return kFailed;
    PrintSummary(tunnels, options.Object);
    return kDone;
}

}  // namespace

int main(int count, char** arguments) {
    SetMessageHook(ShowOnStandardError);
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is a failed write, not the end
    std::string error;
    const auto options = ParseBatchOptions(std::vector<std::string>(arguments + 1, arguments + count), error);
    if (!options) {
        std::fprintf(stderr, "boreforge-batch: %s\n\n%s", error.c_str(), kBatchUsage);
        return kWrongUsage;
    }
    if (options->Help) {
        std::fputs(kBatchUsage, stdout);
        return kDone;
    }
    if (options->Version) {
        std::printf("boreforge-batch %s\n", kVersion);
        return kDone;
    }
    try {
        return RunBatch(*options);
    } catch (const std::bad_alloc&) {
        ShowError("Error - Not Enough Memory!");
        return kFailed;
    }
}
