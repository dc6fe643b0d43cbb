#include "job/mMain.h"

#include <cstdint>
#include <limits>
#include <new>

#include "base/Message.h"
#include "editor/TunnelShape.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/TrackModifications.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "tunnelmesh/TunnelCaps.h"
#include "tunnelmesh/TunnelSweep.h"

namespace boreforge {

std::string TrackFilePath;
bool TrackLoaded = false;

namespace {

constexpr std::int16_t kShininess = 25;
constexpr std::int16_t kShininessStrength = 5;

bool IsTunnel(std::int32_t index) { return TrackFile.Segments[index].IsTunnel != kFalse; }

// Calls `sweep` with the index of each tunnel segment in ascending order. Returns their number.
template <class Sweep>
std::int32_t ForEachTunnel(Sweep sweep) {
    std::int32_t tunnels = 0;
    for (std::int32_t i = 0; i < TrackFile.SegmentCount(); ++i) {
        if (!IsTunnel(i)) continue;
        sweep(i);
        ++tunnels;
    }
    return tunnels;
}

std::int32_t CountTunnels() {
    return ForEachTunnel([](std::int32_t) {});
}

// True if the walls alone are more than the format can hold: 32-bit lengths, with 14 bytes for each face, and
// kMaxMeshes objects. Computed from the counts, before any memory is filled.
bool IsTooLarge(const TunnelJobSettings& settings) {
    constexpr std::int64_t kFaceBytes = 14, kWalls = 2, kMaxBytes = std::numeric_limits<std::int32_t>::max();
    const std::int64_t nodes = TunnelShape.NodeCount();
    const std::int64_t facesOfRing = nodes * (settings.DoubleSided ? 4 : 2);
    std::int64_t bytes = 0, meshes = 0;
    ForEachTunnel([&](std::int32_t i) {
        const std::int32_t samples = TracedSegments[i].SampleCount();
        const std::int64_t faces = facesOfRing * (1 + (samples - 1) / settings.DetailStep);
        bytes += kWalls * faces * kFaceBytes;
        meshes += kWalls * ((faces + kMaxFacesOfMesh - 1) / kMaxFacesOfMesh);
    });
    return bytes > kMaxBytes || meshes > kMaxMeshes;
}

std::int16_t AddTunnelMaterial(const TunnelJobSettings& settings) {
    return AddMaterial(settings.HalfColor, settings.BaseColor, settings.BrightColor, kShininess,
                       kShininessStrength, settings.Transparency);
}

// Caps where the tunnel flag changes along the list. The walk doesn't wrap: a run that reaches the last
// segment gets no exit cap.
void CapTunnels(std::int16_t material, bool doubleSided) {
    bool inTunnel = false;
    for (std::int32_t i = 0; i < TrackFile.SegmentCount(); ++i) {
        if (IsTunnel(i) == inTunnel) continue;
        inTunnel = !inTunnel;
        if (inTunnel)
            CapTunnelEntry(i, material, doubleSided);
        else
            CapTunnelExit(i, material, doubleSided);
    }
}

// The inside of a tunnel is the same colour at half brightness.
void Darken(ColorRGB& color) { color = ScaleColor(color, 0.5); }

// Fills the model, in the order that the objects will have in the file.
void BuildTunnels(TunnelJobSettings& settings) {
    ObjectPartNumber = 0;
    ResetModel();
    const std::int16_t outside = AddTunnelMaterial(settings);
    ForEachTunnel(
        [&](std::int32_t i) { SweepOutsideWall(i, outside, settings.DetailStep, settings.DoubleSided); });
    CapTunnels(outside, settings.DoubleSided);
    Darken(settings.BaseColor);
    Darken(settings.HalfColor);
    Darken(settings.BrightColor);
    const std::int16_t inside = AddTunnelMaterial(settings);
    ForEachTunnel(
        [&](std::int32_t i) { SweepInsideWall(i, inside, settings.DetailStep, settings.DoubleSided); });
}

void ModifyTrack(const TunnelJobSettings& settings) {
    if (settings.DimColors) DimTunnelSegments(settings.DimFactor);
    if (settings.RemoveTunnels) ClearTunnelFlags();
    if (settings.PlaceObject) PlaceObjectInTrack(settings.OutputPath);
}

void ShowTrackFailure(const std::string& consequence) {
    const FileProblem problem = lastFileFailure.problem;
    if (problem == FileProblem::Changed)
        ShowError("Error - The Track Was Changed by Another Program!\n\n" + TrackFilePath + "\n\n" +
                  consequence + " Open the track again and make the object once more.");
    else if (problem == FileProblem::InUse)
        ShowError("Error - The Track Is in Use by Another Program!\n\n" + TrackFilePath + "\n\n" +
                  consequence + " Open the track again when that program has finished.");
    else
        ShowError(FailureMessage("Error - The Track Can't Be Saved!", TrackFilePath, consequence));
}

// When the user reads a message, the settings dialog has closed, so the message says how to get back there.
constexpr char kOtherName[] = "Nothing was written. Open the track again and choose another name.";
constexpr char kLessDetail[] =
    "Nothing was written. Open the track again and choose less detail, or use a shape with fewer nodes.";

bool Refuse(const std::string& headline, const std::string& explanation) {
    ShowError("Error - " + headline + "!\n\n" + explanation);
    return false;
}

bool HasWalkedPath() {
    return TrackTraced ||
           Refuse("The Track's Path Can't Be Followed",
                  "A tunnel needs at least two segments, a node for each of them, finite positions "
                  "and rolls, and no more than 1,000,000 units of path. Nothing was written.");
}

bool ObjectMayBeWritten(const TunnelJobSettings& settings) {
    const std::string& path = settings.OutputPath;
    if (SameFile(path, TrackSavePath(TrackFilePath)))
        return Refuse("The 3DS Object Would Replace the Track", kOtherName);
    if (!MayReplace(path, FileKind::Other)) {
        ShowError(FailureMessage("", path, kOtherName));
        return false;
    }
    if (!settings.PlaceObject || ObjectNameInTrack(path)) return true;
    return Refuse("The Object's Name Can't Be Put into the Track",
                  path +
                      "\n\nThe texts in a track can hold only Western European characters (Windows-1252). " +
                      kOtherName);
}

// Locks the track that will be replaced against other instances. A track that was read from another path is
// neither locked nor compared.
bool HoldTrack(HeldFile& held) {
    const std::string path = TrackSavePath(TrackFilePath);
    const bool wasRead = path == TrackOnDisk.Path || SameFile(path, TrackOnDisk.Path);
    if (!wasRead || held.Hold(path, TrackOnDisk.State)) return true;
    ShowTrackFailure("Nothing was written.");
    return false;
}

bool SaveTrack(HeldFile& held) {
    if (WriteTrackFile(TrackFilePath, held.IsHeld() ? &held : nullptr)) return true;
    ShowTrackFailure("The 3DS object was written; the track was not saved.");
    return false;
}

bool FitsFormat(const TunnelJobSettings& settings) {
    return !IsTooLarge(settings) || Refuse("The Tunnel Is Too Large for a 3DS File", kLessDetail);
}

// Everything before the first write. If `held` is given, locks the track before memory is filled.
bool BuildObject(TunnelJobSettings& settings, HeldFile* held) {
    if (!TrackLoaded) return false;
    if (CountTunnels() == 0) {
        BuildTunnels(settings);  // leaves only the materials in the model
        ShowMessage("Track does not have any tunnels!", "Notice!", MessageIcon::Information);
        return false;
    }
    if (!HasWalkedPath() || !ObjectMayBeWritten(settings) || !FitsFormat(settings)) return false;
    if (held && !HoldTrack(*held)) return false;
    BuildTunnels(settings);
    return true;
}

// Calls `work`, which returns false with a message when it fails.
template <class Work>
bool WithinMemory(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        ResetModel();
        return Refuse("Not Enough Memory for This Tunnel", kLessDetail);
    }
}

}  // namespace

bool OpenTrack(const std::string& path) {
    TrackTraced = false;
    TrackLoaded = ReadTrackFile(path);
    if (!TrackLoaded) {
        ShowError("Error - Invalid Track File!");
        return false;
    }
    TrackFilePath = path;
    (void)TraceTrack();  // the job checks TrackTraced
    return true;
}

bool BuildTunnelObject(TunnelJobSettings settings) {
    return WithinMemory([&] { return BuildObject(settings, nullptr); });
}

bool WriteTunnelObject(const std::string& path) {
    if (Save3DSFile(path)) return true;
    ShowError(FailureMessage("Error - The 3DS Object Can't Be Written!", path, "The track was not changed."));
    return false;
}

bool RunTunnelJob(TunnelJobSettings settings) {
    return WithinMemory([&] {
        HeldFile held;
        if (!BuildObject(settings, &held)) return false;
        ModifyTrack(settings);
        return WriteTunnelObject(settings.OutputPath) && SaveTrack(held);
    });
}

}  // namespace boreforge
