// Vectors of 64-bit floats, for what the programs compute about objects, paths and cameras.
#pragma once

#include <cmath>

#include "tracing/mMath3D.h"

namespace boreforge {

struct Vec {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const Vec&, const Vec&) = default;
};

constexpr Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
constexpr Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
constexpr Vec operator*(const Vec& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
constexpr double Dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
constexpr Vec Cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const Vec& a) { return std::sqrt(Dot(a, a)); }

// `a` scaled to length 1, or `fallback` if its length is 0.
inline Vec Normalized(const Vec& a, const Vec& fallback = {0, 0, -1}) {
    const double length = Length(a);
    return length > 0 ? a * (1 / length) : fallback;
}

constexpr Vec Mix(const Vec& a, const Vec& b, double share) { return a + (b - a) * share; }
constexpr Vec ToVec(const Vector3D& v) { return {v.x, v.y, v.z}; }

inline constexpr Vec kUp{0, 1, 0};

}  // namespace boreforge
