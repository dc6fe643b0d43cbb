// Vectors, the four-quadrant arctangent and the cubic Bezier curve. Stored values are 32-bit floats; sums and
// products are formed in 64 bits and rounded once, when stored. Angles are in radians.
#pragma once

namespace boreforge {

// A point or a direction. In track space y points up and a heading of zero looks along negative z.
struct Vector3D {
    float x = 0;
    float y = 0;
    float z = 0;
    friend bool operator==(const Vector3D&, const Vector3D&) = default;
};

// Out: b - a, the vector from a to b.
Vector3D VecSubtract(const Vector3D& a, const Vector3D& b);

// The distance from a to b in 64 bits, not yet rounded to a stored value.
double VecDistance(const Vector3D& a, const Vector3D& b);

// Out: the angle of the point (x, y), from -pi to pi with pi itself included; 0 for (0, 0).
double Atan2(double y, double x);

// The point at t of the cubic Bezier curve from p0 to p1 with the control points c0 (beside p0) and c1
// (beside p1): u^3 p0 + 3 t u^2 c0 + 3 t^2 u c1 + t^3 p1 with u = 1 - t. t is not limited to 0..1.
Vector3D BezierPoint(const Vector3D& p0, const Vector3D& c0, const Vector3D& p1, const Vector3D& c1,
                     double t);

}  // namespace boreforge
