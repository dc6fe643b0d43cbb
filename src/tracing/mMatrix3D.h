// 4-by-4 matrices of 32-bit floats. Each element of a result is formed in 64 bits and rounded once.
#pragma once

#include <array>

#include "tracing/mMath3D.h"

namespace boreforge {

// Row-major: element (row r, column c) is at index 4r + c. Points are column vectors multiplied from the
// right, so the translation is at indices 3, 7 and 11. Initially zero.
struct Matrix3D {
    std::array<float, 16> element{};
    float& operator[](int index) { return element[index]; }
    float operator[](int index) const { return element[index]; }
    friend bool operator==(const Matrix3D&, const Matrix3D&) = default;
};

Matrix3D MatIdentity();

// Rotations about one axis by `angle` radians, right-handed.
Matrix3D MatRotateX(float angle);
Matrix3D MatRotateY(float angle);
Matrix3D MatRotateZ(float angle);

Matrix3D MatTranslation(float x, float y, float z);

// The product a times b: b is applied to a point first.
inline Matrix3D MatMultiply(const Matrix3D& a, const Matrix3D& b) {
    Matrix3D product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            product[4 * row + column] = static_cast<float>(
                double(a[4 * row]) * b[column] + double(a[4 * row + 1]) * b[4 + column] +
                double(a[4 * row + 2]) * b[8 + column] + double(a[4 * row + 3]) * b[12 + column]);
    return product;
}

inline Matrix3D MatTranspose(const Matrix3D& m) {
    Matrix3D transposed;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            transposed[4 * row + column] = m[4 * column + row];
    return transposed;
}

// The point m times (v, 1). Ignores the bottom row, so there is no perspective division.
inline Vector3D MatTransformPoint(const Matrix3D& m, const Vector3D& v) {
    const auto component = [&](int row) {
        return static_cast<float>(double(m[row]) * v.x + double(m[row + 1]) * v.y + double(m[row + 2]) * v.z +
                                  double(m[row + 3]));
    };
    return {component(0), component(4), component(8)};
}

}  // namespace boreforge
