// The walls of a tunnel, contours of the shape swept along one traced segment each, and the caps at its ends.
#pragma once

#include <cstdint>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// Adds the wall of one segment to the model, as an object of its own: a ring of the contour at every
// detailStep-th sample, from the first on, and one at the first sample of the following segment, with a band
// of triangles between each ring and the next. The outside wall faces away from the tunnel's axis and the
// inside wall towards it; if doubleSided, each faces both ways. The trace must be that of the open track, and
// detailStep at least 1.
void SweepOutsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                      bool doubleSided);
void SweepInsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                     bool doubleSided);

// The size of a wall before it is added. Points of nodes with a coordinate that isn't finite may become NaN,
// which equals nothing, so they can't be shared: each face stores its own.
struct WallSize {
    std::int64_t faces = 0, unsharedPoints = 0;
};
WallSize SizeOfWall(const std::vector<Vector3D>& contour, std::int32_t segmentIndex, std::int32_t detailStep,
                    bool doubleSided);

// Adds the cap at the first sample of a segment to the model, as an object of its own: a flat ring of
// triangles that closes the gap between the two walls; the opening stays. The entry cap belongs to the first
// segment of a run and faces against the direction of travel; the exit cap belongs to the first segment after
// the run and faces along it. If doubleSided, each faces both ways.
void CapTunnelEntry(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);
void CapTunnelExit(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);

}  // namespace boreforge
