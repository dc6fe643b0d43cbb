#include "tracing/mMath3D.h"

#include <cmath>

namespace boreforge {

namespace {
// Pi to fifteen digits. Existing tracks were built with it: it is not the double nearest to pi, and the last
// bits of a frame depend on it.
constexpr double kPi = 3.14159265358979;
}  // namespace

double Atan2(double y, double x) {
    if (y == 0) return x < 0 ? kPi : 0;
    if (x == 0) return y < 0 ? -kPi / 2 : kPi / 2;
    const double angle = std::atan(y / x);
    if (x > 0) return angle;
    return y < 0 ? angle - kPi : angle + kPi;
}

}  // namespace boreforge
