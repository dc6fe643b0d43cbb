#include "tunnelmesh/TunnelCaps.h"

#include <cstddef>

#include "editor/TunnelShape.h"
#include "tracing/mZR_TraceTrack.h"
#include "tunnelmesh/TunnelSweep.h"

namespace boreforge {

namespace {

void CapTunnel(std::int32_t segmentIndex, std::int16_t materialIndex, bool alongTravel, bool againstTravel) {
    const Matrix3D& world = TracedSegments[segmentIndex].Samples.front().WorldMatrix;
    BeginObject(kObjectPrefix, materialIndex, false, true);
    std::vector<Vector3D> inner, outer;
    CarryContour(TunnelShape.InsideNodes, world, inner);
    CarryContour(TunnelShape.OutsideNodes, world, outer);
    for (std::size_t k = 0; k < inner.size(); ++k) {
        const std::size_t k2 = k + 1 < inner.size() ? k + 1 : 0;
        if (alongTravel) AddQuad(inner[k], inner[k2], outer[k2], outer[k]);
        if (againstTravel) AddQuad(inner[k], outer[k], outer[k2], inner[k2]);
    }
    FlushObject();
}

}  // namespace

void CapTunnelEntry(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided) {
    CapTunnel(segmentIndex, materialIndex, doubleSided, true);
}

void CapTunnelExit(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided) {
    CapTunnel(segmentIndex, materialIndex, true, doubleSided);
}

}  // namespace boreforge
