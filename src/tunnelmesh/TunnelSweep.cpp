#include "tunnelmesh/TunnelSweep.h"

#include <cstddef>
#include <utility>

#include "editor/TunnelShape.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

// Which faces of a wall are made.
struct Faces {
    bool outward;
    bool inward;
};

void EmitBand(Ring& previous, Ring& current, Faces faces) {
    for (std::size_t k = 0; k < current.size(); ++k) {
        const std::size_t k2 = k + 1 < current.size() ? k + 1 : 0;
        if (faces.outward) AddQuad(previous[k], current[k], current[k2], previous[k2]);
        if (faces.inward) AddQuad(previous[k2], current[k2], current[k], previous[k]);
    }
}

void SweepWall(const std::vector<Vector3D>& contour, std::int32_t segmentIndex, std::int16_t materialIndex,
               std::int32_t detailStep, Faces faces) {
    const auto samplesOf = [](std::int32_t segment) -> const auto& {
        return TracedSegments[static_cast<std::size_t>(segment)].Samples;
    };
    const auto& samples = samplesOf(segmentIndex);

    BeginObject(kObjectPrefix, materialIndex, false, true);
    Ring previous, current;
    for (std::size_t s = 0; s < samples.size(); s += static_cast<std::size_t>(detailStep)) {
        CarryContour(contour, samples[s].WorldMatrix, current);
        if (s > 0) EmitBand(previous, current, faces);
        std::swap(previous, current);
    }
    // The bridge: the next segment's wall starts with the very same ring, so the two meet without a gap.
    CarryContour(contour, samplesOf(FollowingSegment(segmentIndex)).front().WorldMatrix, current);
    EmitBand(previous, current, faces);
    FlushObject();
}

}  // namespace

void SweepOutsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                      bool doubleSided) {
    SweepWall(TunnelShape.OutsideNodes, segmentIndex, materialIndex, detailStep, {true, doubleSided});
}

void SweepInsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                     bool doubleSided) {
    SweepWall(TunnelShape.InsideNodes, segmentIndex, materialIndex, detailStep, {doubleSided, true});
}

std::int32_t FollowingSegment(std::int32_t segmentIndex) {
    return segmentIndex + 1 < TrackFile.SegmentCount() ? segmentIndex + 1 : 0;
}

void CarryContour(const std::vector<Vector3D>& contour, const Matrix3D& world, Ring& ring) {
    ring.resize(contour.size());
    for (std::size_t k = 0; k < contour.size(); ++k)
        ring[k] = BufferPoint(MatTransformPoint(world, contour[k]));
}

}  // namespace boreforge
