#include "job/mMain.h"

#include <limits>
#include <tuple>

#include "base/FileTags.h"
#include "editor/TunnelShape.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/TrackModifications.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "tunnelmesh/TunnelMesh.h"

namespace boreforge {

std::string TrackFilePath;
bool TrackLoaded = false;

namespace {

constexpr std::int16_t kShininess = 25;
constexpr std::int16_t kShininessStrength = 5;

bool IsTunnel(std::int32_t index) { return TrackFile.Segments[index].IsTunnel; }

// Calls `sweep` with the index of each tunnel segment in ascending order.
template <class Sweep>
void ForEachTunnelSegment(Sweep sweep) {
    for (std::int32_t i = 0; i < TrackFile.SegmentCount(); ++i)
        if (IsTunnel(i)) sweep(i);
}

// True if the walls can't fit a .3ds file: 32-bit lengths and kMaxMeshes objects. Counts only the faces and
// the points that can't be shared, a lower bound, before any memory is filled.
bool IsTooLarge(const TunnelJobSettings& settings) {
    constexpr std::int64_t kMaxBytes = std::numeric_limits<std::int32_t>::max();
    std::int64_t bytes = 0, meshes = 0;
    ForEachTunnelSegment([&](std::int32_t i) {
        if (bytes > kMaxBytes) return;
        for (const auto* contour : {&TunnelShape.OutsideNodes, &TunnelShape.InsideNodes}) {
            const WallSize size = SizeOfWall(*contour, i, settings.DetailStep, settings.DoubleSided);
            bytes += kFaceBytes * size.faces + kPointBytes * size.unsharedPoints;
            meshes += (size.faces + kMaxFacesOfMesh - 1) / kMaxFacesOfMesh;
        }
    });
    return bytes > kMaxBytes || meshes > kMaxMeshes;
}

// The material in the settings' colours, each channel times `brightness`, ties to even.
std::int16_t AddTunnelMaterial(const TunnelJobSettings& settings, double brightness) {
    return AddMaterial(ScaleColor(settings.HalfColor, brightness), ScaleColor(settings.BaseColor, brightness),
                       ScaleColor(settings.BrightColor, brightness), kShininess, kShininessStrength,
                       settings.Transparency);
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

// Fills the model, in the order that the objects will have in the file.
void BuildTunnels(const TunnelJobSettings& settings) {
    ObjectPartNumber = 0;
    ResetModel();
    const std::int16_t outside = AddTunnelMaterial(settings, 1);
    ForEachTunnelSegment(
        [&](std::int32_t i) { SweepOutsideWall(i, outside, settings.DetailStep, settings.DoubleSided); });
    CapTunnels(outside, settings.DoubleSided);
    const std::int16_t inside = AddTunnelMaterial(settings, 0.5);
    ForEachTunnelSegment(
        [&](std::int32_t i) { SweepInsideWall(i, inside, settings.DetailStep, settings.DoubleSided); });
}

void ModifyTrack(const TunnelJobSettings& settings) {
    if (settings.DimColors) DimTunnelSegments(settings.DimFactor);
    if (settings.RemoveTunnels) ClearTunnelFlags();
    if (settings.PlaceObject) PlaceObjectInTrack(settings.OutputPath);
}

constexpr char kNothingWritten[] = "Nothing was written.";
// When the user reads a message, the settings dialog has closed, so the advice says how to get back there.
constexpr char kOtherName[] = "Open the track again and choose another name.";
constexpr char kLessDetail[] =
    "Open the track again and choose less detail, or use a shape with fewer nodes.";

const Failure kNoMemory = {.headline = "Error - Not Enough Memory for This Tunnel!",
                           .consequence = kNothingWritten,
                           .advice = kLessDetail};
const Failure kTooLarge = {.headline = "Error - The Tunnel Is Too Large for a 3DS File!",
                           .consequence = kNothingWritten,
                           .advice = kLessDetail};
const Failure kNoPath = {
    .headline = "Error - The Track's Path Can't Be Followed!",
    .consequence =
        "A tunnel needs at least two segments, a node for each of them, finite positions and rolls, "
        "and no more than 1,000,000 units of path. Nothing was written."};

// Completes a failure of the object's file for the user.
Outcome ExplainObject(const Outcome& outcome, const std::string& path) {
    if (outcome) return outcome;
    const bool noAccess = outcome.Why().problem == Problem::NoAccess;
    return outcome.With(
        {.headline = "Error - The 3DS Object Can't Be Written!",
         .path = path,
         .consequence = "The track was not changed.",
         .advice = noAccess ? "Open it again and save the object in a folder of your own." : ""});
}

// The same for the track's file; `state` says what was written.
Outcome ExplainTrack(const Outcome& outcome, const std::string& state) {
    if (outcome) return outcome;
    Failure failure = outcome.Why();
    switch (failure.problem) {
        case Problem::Changed:
            failure = {.headline = "Error - The Track Was Changed by Another Program!",
                       .advice = "Open the track again and make the object once more."};
            break;
        case Problem::InUse:
            failure = {.headline = "Error - The Track Is in Use by Another Program!",
                       .advice = "Open the track again when that program has finished."};
            break;
        case Problem::NoAccess:
            failure.advice = "Copy the track to a folder of your own and open it there.";
            break;
        case Problem::Other:
            break;
    }
    return Outcome(failure).With(
        {.headline = "Error - The Track Can't Be Saved!", .path = TrackFilePath, .consequence = state});
}

SaveRules ObjectRules() {
    SaveRules rules;
    rules.mayReplace = [](std::string_view beginning) {
        return MayReplace(beginning, "").With({.consequence = kNothingWritten, .advice = kOtherName});
    };
    if (!TrackOnDisk.path.empty()) rules.permissionsOf = &TrackOnDisk.state;
    return rules;
}

// Every reason to refuse the job that follows from the track in memory and the settings.
Outcome CheckJob(const TunnelJobSettings& settings, const SkippedSteps& skipped) {
    const std::string& path = settings.OutputPath;
    if (!TrackTraced) return kNoPath;
    if (SameFile(path, TrackSavePath(TrackFilePath)))
        return Failure{.headline = "Error - The 3DS Object Would Replace the Track!",
                       .consequence = kNothingWritten,
                       .advice = kOtherName};
    if (settings.PlaceObject && !skipped.track && !ObjectNameInTrack(path))
        return Failure{.headline = "Error - The Object's Name Can't Be Put into the Track!",
                       .path = path,
                       .consequence =
                           "The texts in a track can hold only Western European characters "
                           "(Windows-1252). " +
                           std::string(kNothingWritten),
                       .advice = kOtherName};
    return IsTooLarge(settings) ? kTooLarge : Outcome();
}

// Both files are complete on the disk before either is put in its place, and the object is in its place for
// good before the track names it.
Outcome MakeFiles(const TunnelJobSettings& settings, const SkippedSteps& skipped) {
    const std::string path = settings.OutputPath;
    OutputFile object;
    TrackWriter track;
    const auto trackStep = [&](const auto& step, const std::string& state) {
        return skipped.track ? Outcome() : ExplainTrack(step(), state);
    };
    const Outcome built =
        CheckJob(settings, skipped)
            .Then([&] { return ExplainObject(object.Open(path, ObjectRules()), path); })
            .Then([&] { return trackStep([&] { return track.Open(TrackFilePath); }, kNothingWritten); })
            .Then([&] {
                BuildTunnels(settings);
                return Compute3DSLength() < 0 ? kTooLarge : Outcome();
            });
    if (!built || skipped.writing) return built;
    const auto writeTrack = [&] {
        ModifyTrack(settings);
        return track.Write();
    };
    return ExplainObject(Write3DSFile(object).Then([&] { return object.Complete(); }), path)
        .Then([&] { return trackStep(writeTrack, kNothingWritten); })
        .Then([&] { return ExplainObject(object.PutInPlace(), path); })
        .Then([&] { return ExplainObject(object.FlushFolder(), path); })
        .Then([&] {
            return trackStep([&] { return track.PutInPlace(); },
                             "The 3DS object was written; the track was not saved.");
        });
}

}  // namespace

std::int32_t CountTunnelSegments() {
    std::int32_t count = 0;
    ForEachTunnelSegment([&](std::int32_t) { ++count; });
    return count;
}

Outcome OpenTrack(const std::string& path) {
    TrackLoaded = TrackTraced = false;
    if (Outcome read = ReadTrackFile(path); !read)
        return read.With({.headline = "Error - Invalid Track File!", .path = path});
    TrackFilePath = path;
    const auto trace = [] {
        std::ignore = TraceTrack();  // the job checks TrackTraced
        return Outcome();
    };
    const Outcome traced = CatchingOutOfMemory(trace, {.headline = "Error - Not Enough Memory!",
                                                       .path = path,
                                                       .reason = "There is not enough memory for its path."});
    TrackLoaded = bool(traced);
    return traced;
}

Outcome RunTunnelJob(const TunnelJobSettings& settings, const SkippedSteps& skipped) {
    if (!TrackLoaded) return Failure{};
    if (CountTunnelSegments() == 0) {
        BuildTunnels(settings);  // the model then has only the materials
        return Failure{.headline = "Track does not have any tunnels!", .isNotice = true};
    }
    const Outcome done = CatchingOutOfMemory([&] { return MakeFiles(settings, skipped); }, kNoMemory);
    if (!done) ResetModel();  // frees its memory
    return done;
}

}  // namespace boreforge
