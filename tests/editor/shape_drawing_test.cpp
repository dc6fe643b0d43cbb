#include "editor/ShapeDrawing.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <utility>

#include "support/CoreTest.h"

namespace boreforge {
namespace {

// A surface of 781 by 481 pixels that lists the calls it gets, each with its colour and the pen's width.
struct Recorder {
    std::ostringstream calls;
    int pen = 0;
    void Clear() { calls << "clear\n"; }
    int Width() const { return 781; }
    int Height() const { return 481; }
    void SetPenWidth(int pixels) { pen = pixels; }
    void Dot(CanvasPoint p, const ColorRGB& color) { Write("dot ", p, color); }
    void Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color) {
        calls << from.x << ',' << from.y;
        Write(" - ", to, color);
    }
    void Write(const char* start, CanvasPoint p, const ColorRGB& c) {
        calls << start << p.x << ',' << p.y << ' ' << std::hex << std::uppercase << std::setfill('0')
              << std::setw(6) << (c.red << 16 | c.green << 8 | c.blue) << std::dec << ' ' << pen << '\n';
    }
};

std::string Draw(ShownNodes shown) {
    Recorder recorder;
    DrawTunnelShape(recorder, shown);
    return recorder.calls.str();
}

struct ShapeDrawingTest : CoreTest {
    ShapeDrawingTest() { ShapeView = {0, 0, 390, 240}; }
    // What is drawn over the grid of an empty shape.
    static std::string DrawnOverGrid(ShownNodes shown = {}) {
        const std::string drawn = Draw(shown);
        const std::string_view lastOfGrid = "0,5240 - 781,5240 404040 1\n";
        return drawn.substr(drawn.find(lastOfGrid) + lastOfGrid.size());
    }
};

TEST_F(ShapeDrawingTest, AnEmptyShapeIsDrawnAsTheOriginUnderTheGrid) {
    const std::string drawn = Draw({});
    EXPECT_TRUE(
        drawn.starts_with("clear\ndot 390,240 C0C0C0 15\n390,0 - 390,481 404040 1\n390,0 - 390,481 404040 1\n"
                          "0,240 - 781,240 404040 1\n0,240 - 781,240 404040 1\n340,0 - 340,481 202020 1\n"
                          "440,0 - 440,481 202020 1\n0,190 - 781,190 202020 1\n0,290 - 781,290 202020 1\n"));
    EXPECT_TRUE(
        drawn.ends_with("-4610,0 - -4610,481 404040 1\n5390,0 - 5390,481 404040 1\n"
                        "0,-4760 - 781,-4760 404040 1\n0,5240 - 781,5240 404040 1\n"));
    EXPECT_EQ(std::ranges::count(drawn, '\n'), 2 + 4 * 101) << "lines to 100 units each way";
}

TEST_F(ShapeDrawingTest, NodesAreDrawnInTurnWithTheSelectedPointAndTheEdgeThatLeavesItMarked) {
    TunnelShape = {{{1, 1, 5}, {-1, 0.5f, 5}}, {{2, 2, 5}, {-2, 1, 5}}, 50, 1, kTrue};
    EXPECT_EQ(DrawnOverGrid(),
              "dot 490,140 80FFFF 15\ndot 440,190 8080FF 15\n440,190 - 490,140 808080 1\n"  // node 0
              "dot 290,190 FFFF00 15\ndot 340,215 8080FF 15\n340,215 - 290,190 808080 1\n"  // node 1
              "440,190 - 340,215 0000FF 1\n490,140 - 290,190 00FFFF 1\n"
              "340,215 - 440,190 0000FF 1\n290,190 - 490,140 FF8000 1\n");  // back to node 0
}

TEST_F(ShapeDrawingTest, ANodeHasNoEdgesAndTheDotsOfTheContoursThatAreShown) {
    const std::string inside = "dot 440,190 FFFF00 15\n", outside = "dot 490,140 80FFFF 15\n";
    const std::string spoke = "440,190 - 490,140 404040 1\n";
    TunnelShape = {{{1, 1, 5}}, {{2, 2, 5}}, 50, 0, kFalse};
    EXPECT_EQ(DrawnOverGrid(), outside + inside + "440,190 - 490,140 808080 1\n");
    EXPECT_EQ(DrawnOverGrid({.inside = true, .outside = false}), inside + spoke);
    EXPECT_EQ(DrawnOverGrid({.inside = false, .outside = true}), outside + spoke);
    EXPECT_EQ(DrawnOverGrid({.inside = false, .outside = false}), spoke);
}

TEST_F(ShapeDrawingTest, DotsGrowWithTheZoomFromThreePixelsOn) {
    for (const auto& [zoom, size] : {std::pair(14, 3), {15, 4}, {200, 65}}) {
        TunnelShape.ZoomScale = static_cast<float>(zoom);
        EXPECT_EQ(NodeDotSize(), size) << zoom;
    }
}

}  // namespace
}  // namespace boreforge
