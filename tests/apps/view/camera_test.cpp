// The viewer's camera, the ride along a track and the tunnels on it, without a window.
#include <gtest/gtest.h>

#include <algorithm>

#include "view/CameraControl.h"

namespace boreforge {

namespace {

// A closed square path of 400 points, 100 units along each side, in which the given points are covered.
TrackPath SquarePath(std::size_t firstCovered = 0, std::size_t covered = 0) {
    const Vec corners[] = {{0, 0, 0}, {0, 0, -100}, {100, 0, -100}, {100, 0, 0}};
    TrackPath path;
    for (std::size_t i = 0; i < 400; ++i) {
        const Vec &from = corners[i / 100], &to = corners[(i / 100 + 1) % 4];
        const Vec forward = Normalized(to - from);
        path.push_back({from + forward * double(i % 100), Cross(forward, kUp), kUp, forward});
    }
    for (std::size_t i = 0; i < covered; ++i) {
        path[(firstCovered + i) % path.size()].isCovered = true;
        path[(firstCovered + i) % path.size()].roof = 3;
    }
    return path;
}

// A box of 20 by 4 by 10 units with its lowest corner at the origin; only its points matter.
Object3DS Box() {
    Object3DS object;
    for (const float x : {0.0f, 20.0f})
        for (const float y : {0.0f, 4.0f})
            for (const float z : {0.0f, 10.0f})
                object.points.push_back({x, y, z});
    object.faces = {{0, 1, 2, 0}};
    return object;
}

}  // namespace

TEST(CoveredStretches, ATunnelOverTheStartOfTheTrackIsOne) {
    const auto stretches = CoveredStretches(SquarePath(390, 30));
    ASSERT_EQ(stretches.size(), 1u);
    EXPECT_EQ(stretches[0].first, 390u);
    EXPECT_EQ(stretches[0].count, 30u);
}

TEST(CoveredStretches, ShortGapsAndShortTunnelsDontCount) {
    TrackPath path = SquarePath(100, 50);
    path[120].isCovered = false;
    path[300].isCovered = true;
    const auto stretches = CoveredStretches(path);
    ASSERT_EQ(stretches.size(), 1u);
    EXPECT_EQ(stretches[0].count, 50u);
}

TEST(CoveredStretches, TheRoofIsTheLowestOfTheStretch) {
    TrackPath path = SquarePath(100, 50);
    path[110].roof = 40;  // a bridge above
    EXPECT_EQ(CoveredStretches(path).at(0).roof, 3);
}

TEST(Ride, GoesOnFromTheEndOfTheRoundToItsStart) {
    Ride ride{.position = 399, .speed = 2, .isMoving = true};
    ride.Advance(1, SquarePath());
    EXPECT_NEAR(ride.position, 1, 1e-3);
}

// Looks at the box in a picture of 800 by 400 pixels.
class CameraControlTest : public testing::Test {
  protected:
    CameraControlTest() {
        camera.Resize(800, 400, object);
        camera.Fit(object);
    }
    // Where a point is in the picture, in pixels from its middle.
    std::pair<double, double> PixelOf(const Vec& point) const {
        const CameraPose pose = camera.Pose({});
        const Vec offset = point - pose.eye;
        const double unit = camera.Lens().PixelsPerUnit(Dot(offset, pose.forward));
        return {Dot(offset, pose.right) * unit, Dot(offset, pose.up) * unit};
    }
    void ExpectWholeObject(double halfWidth, double halfHeight) const {
        for (const Vector3D& point : object.points) {
            const auto [x, y] = PixelOf(ToVec(point));
            EXPECT_LT(std::fabs(x), halfWidth);
            EXPECT_LT(std::fabs(y), halfHeight);
        }
    }
    const Object3DS object = Box();
    CameraControl camera;
};

TEST_F(CameraControlTest, TheWholeObjectIsInThePictureAndStaysThereWithAnotherSize) {
    ExpectWholeObject(400, 200);
    camera.Resize(300, 900, object);
    ExpectWholeObject(150, 450);
}

TEST_F(CameraControlTest, AMovedCameraStaysWithAnotherSize) {
    camera.Drag(50, 20, false);
    const CameraPose before = camera.Pose({});
    camera.Resize(300, 900, object);
    EXPECT_EQ(camera.Pose({}).eye, before.eye);
}

TEST_F(CameraControlTest, ADragPansByThePixelsOfTheMouse) {
    const Vec target{10, 2, 5};
    const auto [x, y] = PixelOf(target);
    camera.Drag(30, -20, true);
    EXPECT_NEAR(PixelOf(target).first, x + 30, 1);
    EXPECT_NEAR(PixelOf(target).second, y + 20, 1);
}

TEST_F(CameraControlTest, AZoomKeepsWhatIsUnderThePointer) {
    const Vec corner = ToVec(object.points[0]);
    const auto [x, y] = PixelOf(corner);
    camera.Scroll(2, x, -y, object);
    EXPECT_NEAR(PixelOf(corner).first, x, 30);
    EXPECT_NEAR(PixelOf(corner).second, y, 30);
}

TEST_F(CameraControlTest, NoZoomLosesTheObject) {
    const struct {
        const char* name;
        double step, right, down;
    } cases[] = {{"in", 1, 0, 0}, {"in at the corner of the picture", 1, 400, 200}, {"out", -1, 0, 0}};
    for (const auto& row : cases) {
        camera.Fit(object);
        for (int notch = 0; notch < 100; ++notch)
            camera.Scroll(row.step, row.right, row.down, object);
        const CameraPose pose = camera.Pose({});
        EXPECT_TRUE(std::ranges::any_of(object.points, [&](const Vector3D& point) {
            return camera.Lens().Shows(pose, ToVec(point));
        })) << row.name;
        EXPECT_LT(Length(pose.eye), 400) << row.name;
    }
}

TEST_F(CameraControlTest, NextAndPreviousGoRoundTheTunnels) {
    TrackPath path = SquarePath(50, 40);
    for (std::size_t i = 200; i < 240; ++i) {
        path[i].isCovered = true;
        path[i].roof = 3;
    }
    const auto eyeAfter = [&](int step) {
        EXPECT_TRUE(camera.LookAtTunnel(step, path));
        return camera.Pose(path).eye;
    };
    const Vec first = eyeAfter(1), second = eyeAfter(1);
    EXPECT_NE(first, second);
    EXPECT_EQ(eyeAfter(1), first);
    EXPECT_EQ(eyeAfter(-1), second);
    EXPECT_FALSE(camera.LookAtTunnel(1, SquarePath()));
}

TEST_F(CameraControlTest, AfterARideTheCameraIsWhereItWas) {
    camera.Drag(50, 20, false);
    const CameraPose before = camera.Pose({});
    camera.StartOrStopRide(SquarePath());
    camera.Advance(3, SquarePath());
    EXPECT_NEAR(camera.Pose(SquarePath()).eye.z, -45, 0.1);  // 15 units a second
    camera.LeaveRide();
    EXPECT_EQ(camera.Pose({}).eye, before.eye);
}

TEST_F(CameraControlTest, TheScaleBarIsTrueAndOnlyThereIfThePictureHasOneScale) {
    const ScaleBar bar = camera.Scale().value_or(ScaleBar{});
    EXPECT_GT(bar.pixels, 0);
    EXPECT_LE(bar.pixels, 0.2 * 800);
    EXPECT_TRUE(camera.LookFrom(ViewFrom::Above, object, {}));
    EXPECT_TRUE(camera.Scale());
    EXPECT_TRUE(camera.LookFrom(ViewFrom::Side, object, {}));
    EXPECT_FALSE(camera.Scale());
    camera.StartOrStopRide(SquarePath());
    EXPECT_FALSE(camera.Scale());
}

TEST_F(CameraControlTest, AViewFromInsideNeedsATrackThroughTheObject) {
    EXPECT_EQ(camera.LookFrom(ViewFrom::Inside, object, {}).Why().reason,
              "The view from inside needs the track (--track).");
    EXPECT_EQ(camera.LookFrom(ViewFrom::Inside, object, SquarePath()).Why().reason,
              "The track doesn't run through the object.");
    EXPECT_TRUE(camera.LookFrom(ViewFrom::Inside, object, SquarePath(390, 60)));
    EXPECT_TRUE(camera.IsInTunnel(SquarePath()));
}

}  // namespace boreforge
