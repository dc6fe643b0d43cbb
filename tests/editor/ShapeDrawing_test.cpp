#include "editor/ShapeDrawing.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>

#include "support/CoreTest.h"

namespace boreforge {
namespace {

// Writes down what is drawn on 781 by 481 pixels, each call with its colour and the pen's width.
struct Recorder {
    std::string calls;
    int pen = 0;

    void Clear() { calls += "clear\n"; }
    int Width() const { return 781; }
    int Height() const { return 481; }
    void SetPenWidth(int pixels) { pen = pixels; }
    void Dot(CanvasPoint p, const ColorRGB& color) { Write("dot", p, color); }
    void Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color) {
        std::snprintf(text, sizeof text, "%g,%g -", from.x, from.y);
        Write(std::string(text).c_str(), to, color);
    }
    void Write(const char* start, CanvasPoint p, const ColorRGB& c) {
        const unsigned rgb = c.red << 16u | c.green << 8u | c.blue;
        std::snprintf(text, sizeof text, "%s %g,%g %06X %d\n", start, p.x, p.y, rgb, pen);
        calls += text;
    }
    char text[80];
};

std::string Draw(ShownNodes shown = {}) {
    Recorder recorder;
    DrawTunnelShape(recorder, shown);
    return recorder.calls;
}

// The calls in which a text stands, and their number.
std::string Of(const std::string& calls, const std::string& text) {
    std::istringstream lines(calls);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (line.find(text) != line.npos) found += line + '\n';
    return found;
}
auto CountOf(const std::string& calls, const std::string& text) {
    const std::string found = Of(calls, text);
    return std::count(found.begin(), found.end(), '\n');
}

struct ShapeDrawingTest : CoreTest {
    ShapeDrawingTest() { ShapeView = {0, 0, 390, 240}; }
    static void MakeShape(std::size_t nodes) {
        TunnelShape.InsideNodes = {{1, 1, 5}, {-1, 0.5f, 5}, {0, -1, 5}};
        TunnelShape.OutsideNodes = {{2, 2, 5}, {-2, 1, 5}, {0, -2, 5}};
        TunnelShape.InsideNodes.resize(nodes);
        TunnelShape.OutsideNodes.resize(nodes);
    }
};

TEST_F(ShapeDrawingTest, AnEmptyShapeIsTheOriginUnderTheGrid) {
    const std::string drawn = Draw();
    EXPECT_TRUE(
        drawn.starts_with("clear\ndot 390,240 C0C0C0 15\n390,0 - 390,481 404040 1\n"
                          "390,0 - 390,481 404040 1\n0,240 - 781,240 404040 1\n0,240 - 781,240 404040 "
                          "1\n340,0 - 340,481 202020 1\n"
                          "440,0 - 440,481 202020 1\n0,190 - 781,190 202020 1\n0,290 - 781,290 202020 1\n"));
    EXPECT_TRUE(
        drawn.ends_with("-4610,0 - -4610,481 404040 1\n5390,0 - 5390,481 404040 1\n"
                        "0,-4760 - 781,-4760 404040 1\n0,5240 - 781,5240 404040 1\n"));
    EXPECT_TRUE(CountOf(drawn, "404040") == 44 && CountOf(drawn, "202020") == 360);
    for (const auto& [zoom, size] : {std::pair{10, 3}, {14, 3}, {15, 4}, {20, 5}, {50, 15}, {200, 65}}) {
        TunnelShape.ZoomScale = static_cast<float>(zoom);
        EXPECT_EQ(Of(Draw(), "dot"), "dot 390,240 C0C0C0 " + std::to_string(size) + "\n");
    }
}

TEST_F(ShapeDrawingTest, EachNodeIsDotsAndASpokeThenTheEdgesFromTheNodeBefore) {
    const std::string grid = Draw();
    const std::string node0 = "dot 490,140 80FFFF 15\ndot 440,190 8080FF 15\n440,190 - 490,140 808080 1\n";
    const std::string node1 =
        "dot 290,190 80FFFF 15\ndot 340,215 8080FF 15\n340,215 - 290,190 808080 1\n"
        "440,190 - 340,215 0000FF 1\n490,140 - 290,190 00FFFF 1\n";
    const std::string node2 =
        "dot 390,340 80FFFF 15\ndot 390,290 8080FF 15\n390,290 - 390,340 808080 1\n"
        "340,215 - 390,290 0000FF 1\n290,190 - 390,340 00FFFF 1\n";
    const std::string shapes[] = {
        grid, grid + node0, grid + node0 + node1 + "340,215 - 440,190 0000FF 1\n290,190 - 490,140 00FFFF 1\n",
        grid + node0 + node1 + node2 + "390,290 - 440,190 0000FF 1\n390,340 - 490,140 00FFFF 1\n"};
    for (std::size_t count = 0; count < 4; ++count) {
        MakeShape(count);
        EXPECT_EQ(Draw(), shapes[count]) << count;
    }
}

TEST_F(ShapeDrawingTest, SelectionMarksAPointAndTheEdgeThatLeavesItAndHidingTakesDotsAway) {
    // The number of nodes, the selected one and its contour; the calls in the colours of a selection.
    const std::tuple<std::size_t, int, Truth, const char*> cases[] = {
        {3, -1, kTrue, ""},
        {3, 0, kTrue, "dot 490,140 FFFF00 15\n490,140 - 290,190 FF8000 1\n"},
        {3, 1, kFalse, "dot 340,215 FFFF00 15\n340,215 - 390,290 FF8000 1\n"},
        {3, 2, kTrue, "dot 390,340 FFFF00 15\n390,340 - 490,140 FF8000 1\n"},
        {2, 1, kFalse, "dot 340,215 FFFF00 15\n340,215 - 440,190 FF8000 1\n"},
        {1, 0, kTrue, "dot 490,140 FFFF00 15\n"}};
    for (const auto& [nodes, selected, outside, calls] : cases) {
        MakeShape(nodes);
        TunnelShape.SelectedNode = selected;
        TunnelShape.SelectedIsOutside = outside;
        EXPECT_EQ(Of(Draw(), " FF"), calls) << nodes << ' ' << selected << ' ' << outside;
    }
    // Inside dots, outside dots, bright spokes, and dim ones among the lines of the grid.
    using Counts = std::array<std::ptrdiff_t, 4>;
    const auto counts = [](ShownNodes shown) {
        const std::string drawn = Draw(shown);
        return Counts{CountOf(drawn, "8080FF"), CountOf(drawn, "80FFFF"), CountOf(drawn, "808080"),
                      CountOf(drawn, "404040")};
    };
    MakeShape(3);
    TunnelShape.SelectedNode = -1;
    EXPECT_EQ(counts({true, true}), (Counts{3, 3, 3, 44}));
    EXPECT_EQ(counts({true, false}), (Counts{3, 0, 0, 47}));
    EXPECT_EQ(counts({false, true}), (Counts{0, 3, 0, 47}));
    EXPECT_EQ(counts({false, false}), (Counts{0, 0, 0, 47}));
}

}  // namespace
}  // namespace boreforge
