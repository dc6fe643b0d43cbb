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

}  // namespace boreforge
