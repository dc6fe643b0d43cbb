#include "batch/ShapeReport.h"

#include <gtest/gtest.h>

#include <cmath>

namespace boreforge {

using Nodes = std::vector<Vector3D>;
const Nodes kInside = {{2, -1, 0}, {2, 3, 0}, {-2, 3, 0}, {-2, -1, 0}};
const Nodes kOutside = {{3, -2, 0}, {3, 4, 0}, {-3, 4, 0}, {-3, -2, 0}};

TEST(ShapeReportTest, EachShapeThatIsProbablyWrongHasItsWarning) {
    const Nodes& a = kInside;
    const Nodes large = {{9, -9, 0}, {9, 0, 0}, {9, 9, 0}, {-9, 9, 0}, {-9, 0, 0}, {-9, -9, 0}};
    const std::string crossed = "The inside contour crosses itself.",
                      crossing = "The contours cross each other.";
    const struct {
        const char* name;
        Nodes inside, outside;
        std::string warning;
    } cases[] = {
        {"right", a, kOutside, ""},
        {"no wall between the contours", a, a, ""},
        {"empty", {}, {}, "The shape is empty, so the object has no faces."},
        {"a line", {{0, 0, 0}, {1, 1, 0}}, {{0, 2, 0}, {1, 3, 0}}, "The shape has fewer than three nodes."},
        {"clockwise", Nodes(a.rbegin(), a.rend()), kOutside,
         "The inside contour runs clockwise, so its walls face the wrong way."},
        {"crossed edges", {a[0], a[2], {-1, 5, 0}, a[3], a[3], a[3]}, large, crossed},
        {"crossed in a common node",
         {{-1, -1, 0}, {0, 0, 0}, {1, 1, 0}, {1, -1, 0}, {0, 0, 0}, {-1, 1, 0}},
         large,
         crossed},
        {"a node outside", {a[0], {4, 1, 0}, a[1], a[2]}, kOutside, crossing},
        {"crossing in a node",
         {a[0], {4, 0, 0}, {2, 4, 0}, {-2, 0, 0}},
         {{3, -2, 0}, {3, 2, 0}, {-3, 4, 0}, {-3, -2, 0}},
         crossing},
        {"a spike that touches the tip of a notch",
         {{2, -1, 0}, {2, 1, 0}, {3, 1, 0}, {2.5f, 1, 0}, {2, 3, 0}, {-2, 3, 0}, {-2, -1, 0}},
         {{3, -2, 0}, {3, 1, 0}, {5, -2, 0}, {5, 4, 0}, {1, 4, 0}, {-3, 4, 0}, {-3, -2, 0}},
         ""},
        {"a node on the other contour", {{3, 1, 0}, a[1], a[2], a[3]}, kOutside, ""},
        {"infinite",
         {a[0], a[1], {INFINITY, 0, 0}, a[3]},
         kOutside,
         "The shape has coordinates that are not finite; most programs will refuse the object."}};
    for (const auto& [name, inside, outside, warning] : cases) {
        const std::vector<std::string> expected(warning.empty() ? 0 : 1, warning);
        EXPECT_EQ(ShapeWarnings({.InsideNodes = inside, .OutsideNodes = outside}, false), expected) << name;
    }
}

TEST(ShapeReportTest, CrossingsAreLookedForInUpToTwoThousandNodes) {
    Nodes crossed = {kInside[0], kInside[2], {-1, 5, 0}};
    crossed.resize(2000, kInside[3]);
    EXPECT_EQ(ShapeWarnings({.InsideNodes = crossed, .OutsideNodes = crossed}, true).size(), 3u);
    crossed.resize(2001, kInside[3]);
    EXPECT_TRUE(ShapeWarnings({.InsideNodes = crossed, .OutsideNodes = crossed}, true).empty());
}

TEST(ShapeReportTest, TheRoomIsMeasuredFromTheInsideContour) {
    const struct {
        const char* name;
        Nodes inside;
        double width, height, aroundPath;
    } cases[] = {
        {"the floor is nearest", kInside, 4, 4, 1},
        {"clockwise", Nodes(kInside.rbegin(), kInside.rend()), 4, 4, 1},
        {"a sloping wall is nearest", {{3, -4, 0}, {3, 4, 0}, {-5, 0, 0}}, 8, 8, 2.236},
        {"a corner is nearest", {{9, -9, 0}, {9, 9, 0}, {-9, 9, 0}, {-0.5, 0, 0}, {-9, -9, 0}}, 18, 18, 0.5},
        {"the path is left of it", {{1, -1, 0}, {3, -1, 0}, {3, 1, 0}, {1, 1, 0}}, 2, 2, 0},
        {"the path is above it", {{1, -3, 0}, {1, -1, 0}, {-1, -1, 0}, {-1, -3, 0}}, 2, 2, 0},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const std::optional<Clearance> room = ClearanceOf({.InsideNodes = row.inside, .OutsideNodes = {}});
        ASSERT_TRUE(room);
        EXPECT_EQ(room->width, row.width);
        EXPECT_EQ(room->height, row.height);
        EXPECT_EQ(room->aroundPath, row.aroundPath);
    }
}

TEST(ShapeReportTest, AShapeWithoutNodesOrWithCoordinatesThatAreNotFiniteHasNoRoom) {
    EXPECT_FALSE(ClearanceOf({}));
    EXPECT_FALSE(ClearanceOf({.InsideNodes = {{0, NAN, 0}}, .OutsideNodes = {}}));
}

}  // namespace boreforge
