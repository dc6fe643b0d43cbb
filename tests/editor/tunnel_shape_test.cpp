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

TEST_F(TunnelShapeTest, NodesComeAndGoInPairs) {
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

TEST_F(TunnelShapeTest, PresetsReplaceShapeZoomAndSelection) {
    const char* const rounded =
        " 2,0,0 2,2,0 1,3,0 -1,3,0 -2,2,0 -2,0,0 -1,-1,0 1,-1,0| "
        "2.5,0,0 2.5,2,0 1,3.5,0 -1,3.5,0 -2.5,2,0 -2.5,0,0 -1,-1.5,0 1,-1.5,0";
    const char* const presets[] = {
        " 2,-1,0 2,3,0 -2,3,0 -2,-1,0| 2.5,-1.5,0 2.5,3.5,0 -2.5,3.5,0 -2.5,-1.5,0", rounded, "|"};
    for (std::int16_t i = 0; i < 3; ++i) {
        TunnelShape = {{{9, 9, 9}}, {{9, 9, 9}}, 175, 0, kTrue};
        MakePresetShape(i);
        EXPECT_EQ(Shape(), presets[i]);
        EXPECT_TRUE(TunnelShape.ZoomScale == 50 && TunnelShape.SelectedNode == -1);
    }
}

TEST_F(TunnelShapeTest, AShapeFileByteForByteAndWhatElseIsOne) {
    const std::string path = In("s.zrbf");
    ASSERT_TRUE(SaveTunnelShape(path));
    EXPECT_EQ(ReadBytes(path), Unfold("'ZRBF' 00000000"));
    WriteBytes(path, Bytes(900, 1));
    TunnelShape = {{{1, 2, 3}, {-0.5f, 0, -1}}, {{4, 5, 6}, {1.5f, 0.25f, -7}}, 175, 1, kTrue};
    const std::string shape = Shape();
    ASSERT_TRUE(SaveTunnelShape(path));
    const Bytes whole = ReadBytes(path);
    EXPECT_EQ(whole, Unfold("'ZRBF' 02000000 0000803F 00000040 00004040 00008040 0000A040 0000C040 "
                            "000000BF 00000000 000080BF 0000C03F 0000803E 0000E0C0"));
    EXPECT_FALSE(SaveTunnelShape("") || SaveTunnelShape(In("absent/s.zrbf")));

    const auto expectNodes = [&](const Bytes& file, int nodes) {
        TunnelShape = {{{9, 9, 9}}, {{9, 9, 9}}, 175, 0, kTrue};
        WriteBytes(path, file);
        EXPECT_EQ(LoadTunnelShape(path), nodes >= 0) << file.size() << " bytes for " << nodes;
        EXPECT_TRUE(TunnelShape.NodeCount() == std::max(nodes, 0) && TunnelShape.ZoomScale == 50) << nodes;
        EXPECT_TRUE(nodes != 2 || Shape() == shape);
    };
    const std::pair<const char*, int> heads[] = {{"'zrBf' 02", 2},       {"'ZRBF' 01", 1},
                                                 {"'ZRBF' FFFFFFFF", 0}, {"'ZRBE' 02", -1},
                                                 {"'ZRBF' 03", -1},      {"'ZRBF' FFFFFF7F", -1}};
    for (const auto& [head, nodes] : heads) {
        Bytes file = whole;
        std::ranges::copy(Unfold(head), file.begin());
        if (nodes == 2) file.resize(70, 0x55);
        expectNodes(file, nodes);
    }
    for (std::size_t length = 0; length < whole.size(); ++length)
        expectNodes(Bytes(whole.begin(), whole.begin() + length), -1);
    MakePresetShape(0);
    EXPECT_FALSE(LoadTunnelShape("") || LoadTunnelShape(In("absent.zrbf")) || TunnelShape.NodeCount() != 4);
}

}  // namespace boreforge
