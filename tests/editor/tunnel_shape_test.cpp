#include "editor/TunnelShape.h"

#include <algorithm>
#include <limits>
#include <sstream>

#include "editor/TunnelShapeFile.h"
#include "support/CoreTest.h"

namespace boreforge {

using TunnelShapeTest = CoreTest;

// "x,y,z" of each point, a bar between the contours.
std::string Shape() {
    std::ostringstream text;
    for (const auto* contour : {&TunnelShape.InsideNodes, &TunnelShape.OutsideNodes}) {
        text << (contour == &TunnelShape.InsideNodes ? "" : "|");
        for (const Vector3D& p : *contour)
            text << " " << p.x << "," << p.y << "," << p.z;
    }
    return text.str();
}

TEST_F(TunnelShapeTest, BothContoursGainAndLoseNodesTogether) {
    for (const Vector3D& node : {Vector3D{1, -2, 3}, {-4, 5, 0}, {0, -0.25f, -1}})
        AddShapeNode(node);
    EXPECT_EQ(Shape(), " 1,-2,3 -4,5,0 0,-0.25,-1| 1.5,-2.5,3 -4.5,5.5,0 0.5,-0.75,-1");
    DeleteShapeNode(1);
    InsertShapeNode(1, {-1, -7, 2});
    EXPECT_EQ(Shape(), " 1,-2,3 0,-0.25,-1 -1,-7,2| 1.5,-2.5,3 0.5,-0.75,-1 -1.5,-7.5,2");
    DeleteShapeNode(0);
    MirrorTunnelShape();
    EXPECT_EQ(Shape(), " -0,-0.25,-1 1,-7,2| -0.5,-0.75,-1 1.5,-7.5,2");
    FlipTunnelShape();
    EXPECT_EQ(Shape(), " -0,0.25,-1 1,7,2| -0.5,0.75,-1 1.5,7.5,2");
    for (const std::int32_t nowhere : {-1, 2}) {
        DeleteShapeNode(nowhere);
        InsertShapeNode(nowhere, {9, 9, 9});
        EXPECT_EQ(TunnelShape.NodeCount(), 2) << nowhere;
    }
}

TEST_F(TunnelShapeTest, AReversedShapeKeepsNode0AndTheSelection) {
    TunnelShape = {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
                   {{4, 0, 0}, {5, 0, 0}, {6, 0, 0}, {7, 0, 0}}};
    TunnelShape.SelectedNode = 1;
    ReverseTunnelShape();
    EXPECT_EQ(Shape(), " 0,0,0 3,0,0 2,0,0 1,0,0| 4,0,0 7,0,0 6,0,0 5,0,0");
    EXPECT_EQ(TunnelShape.SelectedNode, 3);
}

TEST_F(TunnelShapeTest, AnEvenWallIsMitredOnTheOpenSide) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        std::vector<Vector3D> inside;
        const char* outside;  // of a wall of 1, or "" if nothing happens
    } cases[] = {
        {"counter-clockwise", {{2, 0, 0}, {2, 2, 7}, {0, 2, 0}, {0, 0, 0}}, " 3,-1,0 3,3,7 -1,3,0 -1,-1,0"},
        {"clockwise", {{0, 0, 0}, {0, 2, 0}, {2, 2, 0}, {2, 0, 0}}, " -1,-1,0 -1,3,0 3,3,0 3,-1,0"},
        {"an inner corner",
         {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 4, 0}, {2, 2, 0}, {0, 2, 0}},
         " -1,-1,0 5,-1,0 5,5,0 1,5,0 1,3,0 -1,3,0"},
        {"equal nodes",
         {{2, 0, 0}, {2, 2, 0}, {2, 2, 0}, {0, 0, 0}},
         " 3,-1,0 3,4.41421,0 3,4.41421,0 -2.41421,-1,0"},
        {"a mitre of 25/7 becomes one of 3",
         {{0, 0, 0}, {24, -7, 0}, {24, 7, 0}},
         " -3,0,0 25,-8.33333,0 25,8.33333,0"},
        {"the tip of a spike",
         {{4, 0, 0}, {4, 4, 0}, {4, 9, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}},
         " 5,-1,0 5,4,0 4,12,0 3,5,0 -1,5,0 -1,-1,0"},
        {"two nodes", {{0, 0, 0}, {1, 1, 0}}, ""},
        {"no area", {{0, 0, 0}, {1, 1, 0}, {3, 3, 0}}, ""},
        {"infinity", {{0, 0, 0}, {kInfinity, 0, 0}, {1, 1, 0}}, ""}};
    for (const auto& row : cases) {
        TunnelShape = {row.inside, std::vector<Vector3D>(row.inside.size())};
        const std::string before = Shape();
        const bool moves = *row.outside != 0;
        EXPECT_EQ(MakeWallEven(1), moves) << row.name;
        EXPECT_EQ(moves ? Shape().substr(Shape().find('|') + 1) : Shape(), moves ? row.outside : before)
            << row.name;
    }
}

struct ShapeFileTest : CoreTest {
    ShapeFileTest() {
        TunnelShape = {{{1, 2, 3}, {-0.5f, 0, -1}}, {{4, 5, 6}, {1.5f, 0.25f, -7}}, 175, 1, kTrue};
    }
    const std::string path = In("s.zrbf");
    const Bytes whole = FromHex(
        "'ZRBF' 02000000 0000803F 00000040 00004040 00008040 0000A040 0000C040 "
        "000000BF 00000000 000080BF 0000C03F 0000803E 0000E0C0");
};

TEST_F(ShapeFileTest, ASaveWritesEachNodesInsideAndOutsidePoint) {
    WriteBytes(path, Bytes(900, 1));
    ASSERT_TRUE(SaveTunnelShape(path));
    EXPECT_EQ(ReadBytes(path), whole);
}

TEST_F(ShapeFileTest, TheNumberOfNodesDecidesWhatIsLoaded) {
    const struct {
        const char* start;
        std::size_t length;
        const char* reason;
        const char* shape;
    } cases[] = {{"'zrBf' 02", 70, "", " 1,2,3 -0.5,0,-1| 4,5,6 1.5,0.25,-7"},
                 {"'ZRBF' 01", 56, "", " 1,2,3| 4,5,6"},
                 {"'ZRBF' FFFFFFFF", 56, "", "|"},  // -1
                 {"'ZRBF' 03", 56, "It ends at byte 56, which is too early for 3 nodes.", "|"},
                 {"'ZRBF' 01", 31, "It ends at byte 31, which is too early for 1 node.", "|"},
                 {"'ZRBF' FFFFFF7F", 56, "It ends at byte 56, which is too early for 2147483647 nodes.", "|"},
                 {"'ZRBF' 00", 7, "It ends at byte 7, within the number of its nodes.", "|"},
                 {"'ZRBE' 02", 56, "It is not a tunnel shape.", "|"},
                 {"'ZRBF' 02", 3, "It is not a tunnel shape.", "|"}};
    for (const auto& [start, length, reason, shape] : cases) {
        Bytes file = whole;
        std::ranges::copy(FromHex(start), file.begin());
        file.resize(length);
        WriteBytes(path, file);
        TunnelShape.ZoomScale = 175;
        EXPECT_EQ(TextOf(LoadTunnelShape(path)), reason);
        EXPECT_EQ(Shape(), shape);
        EXPECT_EQ(TunnelShape.ZoomScale, 50);
    }
}

}  // namespace boreforge
