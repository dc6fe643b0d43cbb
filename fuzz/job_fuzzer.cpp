// Runs the whole job on a small track, a shape and settings of any kind. Either the object is sound, or none
// is written and the track on the disk is unchanged.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "editor/TunnelShape.h"
#include "job/mMain.h"
#include "scratch_files.h"
#include "shared/Read3DSObject.h"
#include "tracing/mMath3D.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

// Mostly a coordinate of a small track, sometimes any 32 bits.
float AnyFloat(FuzzedDataProvider& input) {
    if (input.ConsumeIntegralInRange(0, 15) > 0)
        return static_cast<float>(input.ConsumeIntegralInRange(-400, 400)) / 8;
    const auto bits = input.ConsumeIntegral<std::uint32_t>();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

Vector3D AnyPoint(FuzzedDataProvider& input) { return {AnyFloat(input), AnyFloat(input), AnyFloat(input)}; }

void MakeTrack(FuzzedDataProvider& input) {
    ResetTrackFile();
    const auto segments = input.ConsumeIntegralInRange<std::size_t>(0, 6);
    TrackFile.Segments.resize(segments);
    for (TrackSegment& segment : TrackFile.Segments) {
        segment.IsTunnel = ToTruth(input.ConsumeBool());
        segment.UseOwnColors = ToTruth(input.ConsumeBool());
        segment.Color1 = input.ConsumeIntegral<std::int32_t>();
    }
    TrackFile.BezierNodes.resize(input.ConsumeIntegralInRange<std::size_t>(0, 7));
    for (TrackBezierNode& node : TrackFile.BezierNodes) {
        node.Position = AnyPoint(input);
        node.ControlIn = AnyPoint(input);
        node.ControlOut = AnyPoint(input);
        node.Roll = AnyFloat(input);
        node.RollFlag = ToTruth(input.ConsumeBool());
    }
}

void MakeShape(FuzzedDataProvider& input) {
    ResetTunnelShape();
    for (int left = input.ConsumeIntegralInRange(0, 6); left > 0; --left) {
        AddShapeNode(AnyPoint(input));
        if (input.ConsumeBool()) TunnelShape.OutsideNodes.back() = AnyPoint(input);
    }
}

TunnelChoices AnyChoices(FuzzedDataProvider& input) {
    TunnelChoices choices;
    choices.color = input.ConsumeIntegral<std::int32_t>();
    choices.transparency = input.ConsumeIntegralInRange<std::int16_t>(0, 100);
    choices.detailItem = input.ConsumeIntegralInRange(0, 4);
    choices.doubleSided = input.ConsumeBool();
    choices.removeTunnels = input.ConsumeBool();
    choices.dimColors = input.ConsumeBool();
    choices.dimPercent = input.ConsumeIntegralInRange(0, 100);
    choices.placeObject = input.ConsumeBool();
    return choices;
}

// An upper bound of the path's length: no piece is longer than the lines between its control points. There
// may be more nodes than pieces.
double MaxPathLength() {
    const std::size_t pieces = std::min(TrackFile.Segments.size(), TrackFile.BezierNodes.size());
    double length = 0;
    for (std::size_t i = 0; i < pieces; ++i) {
        const TrackBezierNode& from = TrackFile.BezierNodes[i];
        const TrackBezierNode& to = TrackFile.BezierNodes[(i + 1) % pieces];
        length += VecDistance(from.Position, from.ControlOut) + VecDistance(from.ControlOut, to.ControlIn) +
                  VecDistance(to.ControlIn, to.Position);
    }
    return length;
}

// Long paths take long to trace and find nothing new. Paths that are too long to trace are refused quickly.
bool TakesLong() {
    const double length = MaxPathLength();
    return length > 1000 && length < 1e9;
}

// Only coordinates may be bad, because those of the shape and the track may be.
void RequireSoundObject(const std::string& path) {
    const auto content = ReadScratch(path);
    Object3DS object;
    ObjectDamage damage;
    Require(Read3DSObject(Bytes(content.begin(), content.end()), object, damage) || damage.isCoordinate);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string track = ScratchPath("track.zrtrack");
    static const std::string object = ScratchPath("object.3ds");
    FuzzedDataProvider input(data, size);
    MakeTrack(input);
    if (TakesLong()) return 0;
    MakeShape(input);
    const TunnelChoices choices = AnyChoices(input);
    Require(WriteTrackFile(track));
    const auto before = ReadScratch(track);
    WriteScratch(object, {});
    Require(OpenTrack(track));
    if (RunTunnelJob(DeriveJobSettings(choices, object))) {
        RequireSoundObject(object);
        Require(ReadTrackFile(track));
    } else {
        Require(ReadScratch(object).empty());
        Require(ReadScratch(track) == before);
    }
    return 0;
}
