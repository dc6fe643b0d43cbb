// 4-by-4 matrices of 32-bit floats. Each element of a result is formed in 64 bits and rounded once.
#pragma once

#include <array>

#include "tracing/mMath3D.h"

namespace boreforge {

// Row-major: element (row r, column c) stands at index 4r + c. Points are column vectors multiplied from the
// right, so the translation stands at the indices 3, 7 and 11. Zero until it is set.
struct Matrix3D {
    std::array<float, 16> element{};
    float& operator[](int index) { return element[static_cast<std::size_t>(index)]; }
    float operator[](int index) const { return element[static_cast<std::size_t>(index)]; }
    friend bool operator==(const Matrix3D&, const Matrix3D&) = default;
};

Matrix3D MatIdentity();

// Rotations about one axis by `angle` radians, right-handed.
Matrix3D MatRotateX(float angle);
Matrix3D MatRotateY(float angle);
Matrix3D MatRotateZ(float angle);

Matrix3D MatTranslation(float x, float y, float z);

// The product a times b: b acts first on a point.
Matrix3D MatMultiply(const Matrix3D& a, const Matrix3D& b);

Matrix3D MatTranspose(const Matrix3D& m);

// The point m times (v, 1); the bottom row is not used and there is no division.
Vector3D MatTransformPoint(const Matrix3D& m, const Vector3D& v);

}  // namespace boreforge
