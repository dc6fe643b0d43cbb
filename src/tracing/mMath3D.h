// Vectors, the four-quadrant arctangent and the cubic Bezier curve. Stored values are 32-bit floats; sums and
// products are formed in 64 bits and rounded once, when stored. Angles are in radians.
#pragma once

#include <cfloat>
#include <cmath>

// Wider intermediate values, as x87 arithmetic has, would change the bytes of an export.
static_assert(FLT_EVAL_METHOD == 0, "build with SSE2 arithmetic: -msse2 -mfpmath=sse");

namespace boreforge {

// A point or a direction. In track space y points up and a heading of zero looks along negative z.
struct Vector3D {
    float x = 0;
    float y = 0;
    float z = 0;
    friend bool operator==(const Vector3D&, const Vector3D&) = default;
};

inline bool IsFinite(const Vector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
inline bool HasNaN(const Vector3D& v) { return std::isnan(v.x) || std::isnan(v.y) || std::isnan(v.z); }

// b - a, the vector from a to b.
inline Vector3D VecSubtract(const Vector3D& a, const Vector3D& b) {
    return {b.x - a.x, b.y - a.y, b.z - a.z};
}

// The distance from a to b in 64 bits, not yet rounded to a stored value.
inline double VecDistance(const Vector3D& a, const Vector3D& b) {
    const double dx = double(b.x) - a.x;
    const double dy = double(b.y) - a.y;
    const double dz = double(b.z) - a.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// The angle of the point (x, y), from -pi to pi with pi itself included; 0 for (0, 0).
double Atan2(double y, double x);

// The point at t of the cubic Bezier curve from p0 to p1 with the control points c0 (next to p0) and c1 (next
// to p1): u^3 p0 + 3 t u^2 c0 + 3 t^2 u c1 + t^3 p1 with u = 1 - t. t is not limited to 0..1.
inline Vector3D BezierPoint(const Vector3D& p0, const Vector3D& c0, const Vector3D& p1, const Vector3D& c1,
                            double t) {
    const double u = 1 - t;
    const double weight0 = u * u * u;
    const double weight1 = 3 * t * u * u;
    const double weight2 = 3 * t * t * u;
    const double weight3 = t * t * t;
    return {static_cast<float>(weight0 * p0.x + weight1 * c0.x + weight2 * c1.x + weight3 * p1.x),
            static_cast<float>(weight0 * p0.y + weight1 * c0.y + weight2 * c1.y + weight3 * p1.y),
            static_cast<float>(weight0 * p0.z + weight1 * c0.z + weight2 * c1.z + weight3 * p1.z)};
}

}  // namespace boreforge
