#include "editor/TunnelShape.h"

#include <algorithm>
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
    const Vector3D late{-1, -7, 2};
    for (const std::int32_t nowhere : {-1, 3}) {
        DeleteShapeNode(nowhere);
        InsertShapeNode(nowhere, late);
    }
    EXPECT_EQ(Shape(), " 1,-2,3 -4,5,0 0,-0.25,-1| 1.5,-2.5,3 -4.5,5.5,0 0.5,-0.75,-1");
    DeleteShapeNode(1);
    InsertShapeNode(0, late);
    EXPECT_EQ(Shape(), " 1,-2,3 -1,-7,2 0,-0.25,-1| 1.5,-2.5,3 -1.5,-7.5,2 0.5,-0.75,-1");
    DeleteShapeNode(0);
    InsertShapeNode(1, {5, 5, 5});
    MirrorTunnelShape();
    EXPECT_EQ(Shape(), " 1,-7,2 -0,-0.25,-1 -5,5,5| 1.5,-7.5,2 -0.5,-0.75,-1 -5.5,5.5,5");
    DeleteShapeNode(2);
    FlipTunnelShape();
    EXPECT_EQ(Shape(), " 1,7,2 -0,0.25,-1| 1.5,7.5,2 -0.5,0.75,-1");
    for (int i = 0; i < 3; ++i)
        DeleteShapeNode(0);
    InsertShapeNode(0, late);
    EXPECT_EQ(Shape(), "|");
}

TEST_F(TunnelShapeTest, APointOfTheShapeItselfMayBeAddedOrInserted) {
    AddShapeNode({1, 2, 3});
    TunnelShape.InsideNodes.shrink_to_fit();  // so that the next node moves the array
    AddShapeNode(TunnelShape.InsideNodes[0]);
    TunnelShape.InsideNodes.shrink_to_fit();
    InsertShapeNode(0, TunnelShape.InsideNodes[1]);
    EXPECT_EQ(Shape(), " 1,2,3 1,2,3 1,2,3| 1.5,2.5,3 1.5,2.5,3 1.5,2.5,3");
}

TEST_F(TunnelShapeTest, APresetReplacesShapeZoomAndSelection) {
    const struct {
        std::int16_t preset;
        const char* shape;
    } cases[] = {{kPresetBox, " 2,-1,0 2,3,0 -2,3,0 -2,-1,0| 2.5,-1.5,0 2.5,3.5,0 -2.5,3.5,0 -2.5,-1.5,0"},
                 {kPresetRounded,
                  " 2,0,0 2,2,0 1,3,0 -1,3,0 -2,2,0 -2,0,0 -1,-1,0 1,-1,0| "
                  "2.5,0,0 2.5,2,0 1,3.5,0 -1,3.5,0 -2.5,2,0 -2.5,0,0 -1,-1.5,0 1,-1.5,0"},
                 {kPresetRounded + 1, "|"},
                 {-1, "|"}};
    for (const auto& [preset, shape] : cases) {
        TunnelShape = {{{9, 9, 9}}, {{9, 9, 9}}, 175, 0, kTrue};
        MakePresetShape(preset);
        EXPECT_EQ(Shape(), shape);
        EXPECT_EQ(TunnelShape.ZoomScale, 50);
        EXPECT_EQ(TunnelShape.SelectedNode, -1);
    }
}

class ShapeFileTest : public CoreTest {
  protected:
    ShapeFileTest() { SetShape(); }
    static void SetShape() {
        TunnelShape = {{{1, 2, 3}, {-0.5f, 0, -1}}, {{4, 5, 6}, {1.5f, 0.25f, -7}}, 175, 1, kTrue};
    }
    Bytes WithStart(const std::string& start) const {
        Bytes file = whole_;
        std::ranges::copy(FromHex(start), file.begin());
        return file;
    }
    const std::string path_ = In("s.zrbf");
    const Bytes whole_ = FromHex(
        "'ZRBF' 02000000 0000803F 00000040 00004040 00008040 0000A040 0000C040 "
        "000000BF 00000000 000080BF 0000C03F 0000803E 0000E0C0");
};

TEST_F(ShapeFileTest, ASaveWritesEachNodesInsideAndOutsidePoint) {
    WriteBytes(path_, Bytes(900, 1));
    ASSERT_TRUE(SaveTunnelShape(path_));
    EXPECT_EQ(ReadBytes(path_), whole_);
    TunnelShape = {};
    ASSERT_TRUE(SaveTunnelShape(path_));
    EXPECT_EQ(ReadBytes(path_), FromHex("'ZRBF' 00000000"));
}

TEST_F(ShapeFileTest, ALoadTakesTheNodesAndTheDefaultZoom) {
    const std::string shape = Shape();
    Bytes longer = WithStart("'zrBf'");
    longer.resize(70, 0x55);
    for (const Bytes& file : {whole_, longer}) {
        WriteBytes(path_, file);
        TunnelShape = {{{9, 9, 9}}, {{9, 9, 9}}, 175, 0, kTrue};
        EXPECT_TRUE(LoadTunnelShape(path_));
        EXPECT_EQ(Shape(), shape);
        EXPECT_EQ(TunnelShape.ZoomScale, 50);
    }
}

TEST_F(ShapeFileTest, TheCountOfNodesDecidesWhatIsLoaded) {
    const struct {
        const char* start;
        bool loaded;
        int nodes;
    } cases[] = {{"'ZRBF' 01", true, 1},
                 {"'ZRBF' FFFFFFFF", true, 0},  // -1
                 {"'ZRBF' 03", false, 0},
                 {"'ZRBF' FFFFFF7F", false, 0},
                 {"'ZRBE' 02", false, 0}};
    for (const auto& [start, loaded, nodes] : cases) {
        SetShape();
        WriteBytes(path_, WithStart(start));
        EXPECT_EQ(bool(LoadTunnelShape(path_)), loaded) << start;
        EXPECT_EQ(TunnelShape.NodeCount(), nodes) << start;
    }
}

TEST_F(ShapeFileTest, NoPrefixOfAShapeFileIsOne) {
    for (std::size_t length = 0; length < whole_.size(); ++length) {
        SetShape();
        WriteBytes(path_, Bytes(whole_.begin(), whole_.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_FALSE(LoadTunnelShape(path_)) << length;
        EXPECT_EQ(TunnelShape.NodeCount(), 0) << length;
    }
}

TEST_F(ShapeFileTest, AFileThatIsNotThereLeavesTheShape) {
    EXPECT_FALSE(LoadTunnelShape(""));
    EXPECT_FALSE(LoadTunnelShape(In("absent.zrbf")));
    EXPECT_EQ(TunnelShape.NodeCount(), 2);
}

}  // namespace boreforge
