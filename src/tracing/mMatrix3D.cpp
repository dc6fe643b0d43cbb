#include "tracing/mMatrix3D.h"

#include <cmath>

namespace boreforge {

namespace {

struct Turn {
    float cosine;
    float sine;
};

Turn TurnBy(float angle) {
    return {static_cast<float>(std::cos(double(angle))), static_cast<float>(std::sin(double(angle)))};
}

}  // namespace

Matrix3D MatIdentity() { return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}; }

Matrix3D MatRotateX(float angle) {
    const auto [c, s] = TurnBy(angle);
    return {{1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1}};
}

Matrix3D MatRotateY(float angle) {
    const auto [c, s] = TurnBy(angle);
    return {{c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1}};
}

Matrix3D MatRotateZ(float angle) {
    const auto [c, s] = TurnBy(angle);
    return {{c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
}

Matrix3D MatTranslation(float x, float y, float z) {
    return {{1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z, 0, 0, 0, 1}};
}

Matrix3D MatMultiply(const Matrix3D& a, const Matrix3D& b) {
    Matrix3D product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            product[4 * row + column] = static_cast<float>(
                double(a[4 * row]) * b[column] + double(a[4 * row + 1]) * b[4 + column] +
                double(a[4 * row + 2]) * b[8 + column] + double(a[4 * row + 3]) * b[12 + column]);
    return product;
}

Matrix3D MatTranspose(const Matrix3D& m) {
    Matrix3D transposed;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            transposed[4 * row + column] = m[4 * column + row];
    return transposed;
}

Vector3D MatTransformPoint(const Matrix3D& m, const Vector3D& v) {
    const auto component = [&](int row) {
        return static_cast<float>(double(m[row]) * v.x + double(m[row + 1]) * v.y + double(m[row + 2]) * v.z +
                                  double(m[row + 3]));
    };
    return {component(0), component(4), component(8)};
}

}  // namespace boreforge
