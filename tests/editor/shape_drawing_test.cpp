#include "editor/ShapeDrawing.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

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

std::string Draw(ShownNodes shown = {}) {
    Recorder recorder;
    DrawTunnelShape(recorder, shown);
    return recorder.calls.str();
}

// The calls that contain a text.
std::string CallsWith(const std::string& text, const std::string& calls) {
    std::istringstream lines(calls);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (line.find(text) != line.npos) found += line + '\n';
    return found;
}
auto CountCallsWith(const std::string& text, const std::string& calls) {
    const std::string found = CallsWith(text, calls);
    return std::ranges::count(found, '\n');
}

struct ShapeDrawingTest : CoreTest {
    ShapeDrawingTest() { ShapeView = {0, 0, 390, 240}; }
    static void MakeShape(std::size_t nodes, int selected = -1, Truth outside = kFalse) {
        TunnelShape.InsideNodes = {{1, 1, 5}, {-1, 0.5f, 5}, {0, -1, 5}};
        TunnelShape.OutsideNodes = {{2, 2, 5}, {-2, 1, 5}, {0, -2, 5}};
        TunnelShape = {TunnelShape.InsideNodes, TunnelShape.OutsideNodes, 50, selected, outside};
        TunnelShape.InsideNodes.resize(nodes);
        TunnelShape.OutsideNodes.resize(nodes);
    }
};

TEST_F(ShapeDrawingTest, AnEmptyShapeIsDrawnAsTheOriginUnderTheGrid) {
    const std::string drawn = Draw();
    EXPECT_TRUE(
        drawn.starts_with("clear\ndot 390,240 C0C0C0 15\n390,0 - 390,481 404040 1\n390,0 - 390,481 404040 1\n"
                          "0,240 - 781,240 404040 1\n0,240 - 781,240 404040 1\n340,0 - 340,481 202020 1\n"
                          "440,0 - 440,481 202020 1\n0,190 - 781,190 202020 1\n0,290 - 781,290 202020 1\n"));
    EXPECT_TRUE(
        drawn.ends_with("-4610,0 - -4610,481 404040 1\n5390,0 - 5390,481 404040 1\n"
                        "0,-4760 - 781,-4760 404040 1\n0,5240 - 781,5240 404040 1\n"));
    EXPECT_EQ(CountCallsWith("404040", drawn), 44) << "every tenth line and the axes";
    EXPECT_EQ(CountCallsWith("202020", drawn), 360);
}

TEST_F(ShapeDrawingTest, DotsGrowWithTheZoom) {
    const struct {
        float zoom;
        int size;
    } cases[] = {{10, 3}, {14, 3}, {15, 4}, {20, 5}, {50, 15}, {200, 65}};
    for (const auto& [zoom, size] : cases) {
        TunnelShape.ZoomScale = zoom;
        EXPECT_EQ(CallsWith("dot", Draw()), "dot 390,240 C0C0C0 " + std::to_string(size) + "\n");
    }
}

TEST_F(ShapeDrawingTest, EachNodeIsDrawnAsDotsAndASpokeThenTheEdgesFromTheNodeBefore) {
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

TEST_F(ShapeDrawingTest, TheSelectedPointAndTheEdgeThatLeavesItAreMarked) {
    const struct {
        std::size_t nodes;
        int selected;
        Truth outside;
        const char* marked;  // the calls in the colours of a selection
    } cases[] = {{3, -1, kTrue, ""},
                 {3, 0, kTrue, "dot 490,140 FFFF00 15\n490,140 - 290,190 FF8000 1\n"},
                 {3, 1, kFalse, "dot 340,215 FFFF00 15\n340,215 - 390,290 FF8000 1\n"},
                 {3, 2, kTrue, "dot 390,340 FFFF00 15\n390,340 - 490,140 FF8000 1\n"},
                 {2, 1, kFalse, "dot 340,215 FFFF00 15\n340,215 - 440,190 FF8000 1\n"},
                 {1, 0, kTrue, "dot 490,140 FFFF00 15\n"}};
    for (const auto& [nodes, selected, outside, marked] : cases) {
        MakeShape(nodes, selected, outside);
        EXPECT_EQ(CallsWith(" FF", Draw()), marked) << selected << " of " << nodes;
    }
}

TEST_F(ShapeDrawingTest, AHiddenContourLosesItsDotsAndTheSpokesAreDimmed) {
    MakeShape(3);
    const std::string all = Draw(), origin = CallsWith("C0C0C0", all);
    const struct {
        ShownNodes shown;
        std::string dots;
    } cases[] = {{{.inside = true, .outside = false}, origin + CallsWith("8080FF", all)},
                 {{.inside = false, .outside = true}, origin + CallsWith("80FFFF", all)},
                 {{.inside = false, .outside = false}, origin}};
    for (const auto& [shown, dots] : cases) {
        const std::string drawn = Draw(shown);
        EXPECT_EQ(CallsWith("dot", drawn), dots);
        EXPECT_EQ(CountCallsWith("808080", drawn), 0);
        EXPECT_EQ(CountCallsWith("404040", drawn), 44 + 3) << "grid and spokes";
    }
}

}  // namespace
}  // namespace boreforge
