#include <gtest/gtest.h>

#include "tracing/mMath3D.h"
#include "tracing/mMatrix3D.h"

namespace boreforge {
namespace {

constexpr double kPi = 3.14159265358979;

TEST(MathTest, Atan2HasAFixedValueOnEachAxisAndInEachQuadrant) {
    const struct {
        double y, x, angle;
    } cases[] = {{0, 0, 0},        {0, 5, 0},        {0, -5, kPi},           {-0.0, -5, kPi},
                 {2, 0, kPi / 2},  {-2, 0, -kPi / 2}, {1, 1, kPi / 4},       {-1, 1, -kPi / 4},
                 {1, -1, 3 * kPi / 4}, {-1, -1, -3 * kPi / 4}};
    for (const auto& [y, x, angle] : cases)
        EXPECT_NEAR(Atan2(y, x), angle, 1e-15) << y << ", " << x;
    EXPECT_EQ(Atan2(0, -1), kPi) << "to the last bit";
}

TEST(MathTest, BezierPointTakesStartHandleEndHandle) {
    const Vector3D p0{8, -16, 0}, c0{16, 0, 8}, p1{0, 8, -8}, c1{-8, 24, 32};
    EXPECT_EQ(BezierPoint(p0, c0, p1, c1, 0), p0);
    EXPECT_EQ(BezierPoint(p0, c0, p1, c1, 1), p1);
    // At a half (p0 + 3 c0 + 3 c1 + p1) / 8, at two (-p0 + 6 c0 - 12 c1 + 8 p1).
    EXPECT_EQ(BezierPoint(p0, c0, p1, c1, 0.5), (Vector3D{4, 8, 14}));
    EXPECT_EQ(BezierPoint(p0, c0, p1, c1, 2), (Vector3D{184, -208, -400}));
    EXPECT_EQ(VecSubtract(p0, c0), (Vector3D{8, 16, 8}));
    EXPECT_DOUBLE_EQ(VecDistance({1, 2, 3}, {3, -1, 9}), 7);
}

TEST(MathTest, MatricesTurnRightHandedAndTheSecondFactorActsFirst) {
    const float quarter = 1.5707964f;
    const auto near = [](const Vector3D& a, const Vector3D& b) { return VecDistance(a, b) < 1e-6; };
    EXPECT_TRUE(near(MatTransformPoint(MatRotateX(quarter), {5, 1, 2}), {5, -2, 1}));
    EXPECT_TRUE(near(MatTransformPoint(MatRotateY(quarter), {1, 5, 2}), {2, 5, -1}));
    EXPECT_TRUE(near(MatTransformPoint(MatRotateZ(quarter), {1, 2, 5}), {-2, 1, 5}));
    const Matrix3D moved = MatTranslation(10, 20, 30);
    EXPECT_TRUE(near(MatTransformPoint(MatMultiply(moved, MatRotateZ(quarter)), {1, 2, 5}), {8, 21, 35}));
    EXPECT_TRUE(near(MatTransformPoint(MatMultiply(MatRotateZ(quarter), moved), {1, 2, 5}), {-22, 11, 35}));
    EXPECT_EQ(MatTransformPoint(MatTranspose(moved), {1, 2, 3}), (Vector3D{1, 2, 3}));
    EXPECT_EQ(MatMultiply(MatIdentity(), moved), moved);
    EXPECT_EQ(moved[7], 20);
}

}  // namespace
}  // namespace boreforge
