// The walls of a tunnel: a contour of the shape, swept along one traced segment.
#pragma once

#include <cstdint>
#include <vector>

#include "export3ds/mSave3DSObject.h"
#include "tracing/mMatrix3D.h"

namespace boreforge {

// Adds the wall of one segment to the model store, as an object of its own: a ring of the contour at every
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

// The name prefix of every object of a tunnel.
inline constexpr char kObjectPrefix[] = "SEGT";

// Transforms a contour from shape space to track space and appends it to `points`.
void CarryContour(const std::vector<Vector3D>& contour, const Matrix3D& world, std::vector<Vector3D>& points);

// Adds the triangles (a, b, c) and (c, d, a) to the open object.
void AddQuad(const Vector3D& a, const Vector3D& b, const Vector3D& c, const Vector3D& d);

}  // namespace boreforge
