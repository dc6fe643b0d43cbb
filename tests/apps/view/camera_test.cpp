// The viewer's cameras and paths, without a window.
#include <gtest/gtest.h>

#include <cmath>

#include "view/Camera.h"
#include "view/Geometry.h"

namespace boreforge {

namespace {

// A box with its corners at these two points, its faces outwards.
Object3DS Box(const Vector3D& low, const Vector3D& high) {
    Object3DS box;
    box.Materials.push_back({"m", {255, 51, 0}, 40});
    for (int i = 0; i < 8; ++i)
        box.Points.push_back({i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
    const std::uint32_t corners[][4] = {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4},
                                        {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}};
    for (const auto& c : corners) {
        box.Faces.push_back({c[0], c[1], c[2]});
        box.Faces.push_back({c[0], c[2], c[3]});
    }
    return box;
}

// A straight path along positive x, at height 12.
TrackPath StraightPath(int count) {
    TrackPath path;
    for (int i = 0; i < count; ++i)
        path.push_back({{double(i), 12, 30}, {0, 0, 1}, kUp, {1, 0, 0}});
    return path;
}

// Where a point is in the picture, from -1 to 1 along each side.
struct Place {
    double x, y;
};
Place PlaceOf(const Aim& aim, const Vec& point) {
    const Vec way = point - aim.Pose.Eye;
    const double slope =
        aim.Lens.HalfAngle * Dot(way, aim.Pose.Forward) / std::min(aim.Lens.Width, aim.Lens.Height);
    return {Dot(way, aim.Pose.Right) / (slope * aim.Lens.Width),
            Dot(way, aim.Pose.Up) / (slope * aim.Lens.Height)};
}

}  // namespace

TEST(Aim, TheWholeObjectFillsThePicture) {
    const Object3DS box = Box({100, 10, -50}, {180, 25, -20});
    for (const CameraLens lens : {CameraLens{0.3, 800, 400}, CameraLens{0.3, 300, 900}}) {
        const Aim aim = AimAtWhole(box, lens);
        double farthest = 0;
        for (const Vector3D& point : box.Points) {
            const Place place = PlaceOf(aim, ToVec(point));
            farthest = std::max({farthest, std::abs(place.x), std::abs(place.y)});
        }
        EXPECT_NEAR(farthest, 0.9, 0.01) << lens.Width;
    }
}

TEST(Path, IsCoveredWhereTheObjectIsAboveAndBelow) {
    TrackPath path = StraightPath(100);
    FindCover(path, Box({20.5, 10, 25}, {60.5, 15, 35}));
    const std::vector<CoveredStretch> stretches = CoveredStretches(path);
    ASSERT_EQ(stretches.size(), 1u);
    EXPECT_EQ(stretches[0].first % 100, 21u);
    EXPECT_EQ(stretches[0].count, 40u);
    EXPECT_NEAR(stretches[0].roof, 3, 1e-6);
}

TEST(Walls, CarryNormalColourAndEdges) {
    Object3DS one = Box({1, 2, 3}, {5, 7, 9});
    one.Faces = {{0, 4, 6}, {2, 2, 3}};  // the second has no area
    const QByteArray bytes = WallVertices(one);
    ASSERT_EQ(bytes.size(), 3 * 12 * 4);
    const auto* const values = reinterpret_cast<const float*>(bytes.constData());
    const std::vector<float> first(values, values + 12);
    // The longest edge is from the first corner to the third, so the second corner is 0 from both others.
    EXPECT_EQ(first, (std::vector<float>{1, 2, 3, -1, 0, 0, 1, 0.2f, 0, 0.6f, 0, 1}));
}

}  // namespace boreforge
