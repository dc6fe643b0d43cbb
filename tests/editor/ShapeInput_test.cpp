#include "editor/ShapeInput.h"

#include <map>
#include <sstream>

#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "support/CoreTest.h"

namespace boreforge {
namespace {

enum : int { kEscapeKey = 27, kArrowLeft = 37, kArrowUp = 38, kArrowRight = 39, kArrowDown = 40 };

struct ShapeInputTest : CoreTest {
    ShapeInputTest() { ShapeView = {0, 0, 100, 80}; }
    // Canvas positions, with the origin at 100, 80.
    static float X(double x) { return static_cast<float>(100 + TunnelShape.ZoomScale * x); }
    static float Y(double y) { return static_cast<float>(80 - TunnelShape.ZoomScale * y); }
    bool Press(double x, double y) { return PressMouse(MouseButton::Left, X(x), Y(y), controls); }
    bool Move(MouseState state, double x, double y) { return MoveMouse(state, X(x), Y(y), controls); }
    EditorControls controls{{true, true}, true, "0.5", 781, 481};
};

TEST_F(ShapeInputTest, PositionsAreSnappedWithHalvesGoingUpAndShownWithAPoint) {
    std::istringstream cases(  // what stands in the box, a value, the value snapped
        "0.5 1.2 1  0.5 -1.2 -1  0.5 1.25 1.5  0.5 -1.25 -1  0.5 -0.25 0  0.5 -0.26 -0.5  0.5x 0.7 0.5 "
        ".25 0.374 0.25  .25 0.375 0.5  1.5 2.2 1.5  1.5 -0.75 0  1.5 -0.76 -1.5  2. -1 0  2. 1 2  0 1.2 1.2 "
        "-1 1.2 1.2  . 1.2 1.2  - 1.2 1.2  abc 1.2 1.2  inf 1.2 1.2  nan 1.2 1.2  1e39 1.2 1.2");
    for (float value, snapped; cases >> controls.snapText >> value >> snapped;)
        EXPECT_EQ(Snapped({value, value, 0}, controls), (Vector3D{snapped, snapped, 0})) << controls.snapText;
    EXPECT_EQ(SnapInterval(""), 0);
    controls.snapTo = false;
    EXPECT_EQ(Snapped({1.2f, -1.2f, 0}, controls), (Vector3D{1.2f, -1.2f, 0}));
}

TEST_F(ShapeInputTest, PositionsShowOneOrTwoDigitsWithHalvesAwayFromZero) {
    const struct {
        float value;
        const char* text;
    } cases[] = {{0, "0.0"},       {-0.0f, "0.0"},     {0.004f, "0.0"},         {1, "1.0"},
                 {0.999f, "1.0"},  {1.25f, "1.25"},    {-1.5f, "-1.5"},         {100, "100.0"},
                 {0.125f, "0.13"}, {-0.125f, "-0.13"}, {0.375f, "0.38"},        {1.005f, "1.0"},
                 {0.625f, "0.63"}, {-0.004f, "0.0"},   {16777216, "16777216.0"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(FormatPosition(value), text);
}

TEST_F(ShapeInputTest, PressSelectsTheFirstVisiblePointOrAddsANode) {
    // Zoom, position, inside and outside shown; then what is selected, whether on the outside, and the count.
    // The area is a square without its edge, equally large at each zoom; the inside point of a node wins over
    // its outside point, and a lower node over a nearer one.
    const double cases[][8] = {
        {50, 0.1, 0.1, 1, 1, 0, 0, 2},     {50, 0.1, 0.1, 0, 1, 0, 1, 2},    {50, 0.4, 0.4, 1, 1, 0, 1, 2},
        {50, 0.4, 0.4, 1, 0, 2, 1, 3},     {50, -0.28, 0.28, 1, 1, 0, 0, 2}, {10, -0.28, 0.28, 1, 1, 0, 0, 2},
        {200, -0.28, 0.28, 1, 1, 0, 0, 2}, {10, -0.3, 0, 1, 1, 2, 1, 3},     {50, 0, -0.3, 1, 1, 2, 1, 3},
        {50, 2, 0, 1, 1, 1, 0, 2},         {50, 2, 0, 0, 0, -1, 1, 2},       {50, 7, 7, 0, 1, 2, 1, 3}};
    for (const auto& [zoom, x, y, inside, outside, selected, onOutside, count] : cases) {
        TunnelShape = {
            {{0, 0, 0}, {2, 0, 0}}, {{0.2f, 0.2f, 0}, {0.4f, 0.4f, 0}}, static_cast<float>(zoom), 1, kTrue};
        controls.shown = {inside != 0, outside != 0};
        EXPECT_TRUE(Press(x, y));
        EXPECT_TRUE(TunnelShape.SelectedNode == selected && TunnelShape.NodeCount() == count &&
                    TunnelShape.SelectedIsOutside == -onOutside)
            << zoom << ": " << x << ' ' << y;
    }
}

TEST_F(ShapeInputTest, ANewNodeIsSnappedAndItsPointOnTheLastHitContourIsDragged) {
    TunnelShape = {{{-2, 1, 7}}, {{-3, 2, 7}}};
    Press(-3, 2);
    EXPECT_TRUE(Move(MouseState::Left, -3.2, 2.25));
    Press(1.25, -1.25);
    EXPECT_EQ(TunnelShape.OutsideNodes.at(1), (Vector3D{2, -1.5f, 0}));
    EXPECT_TRUE(Move(MouseState::Left, 4, 3));
    EXPECT_FALSE(Move(MouseState::None, 0, 0) || Move(MouseState::Other, 0, 0));
    EXPECT_TRUE(ReleaseMouse(MouseButton::Left, controls) && TunnelShape.SelectedNode == 1);
    EXPECT_TRUE(ReleaseMouse(MouseButton::Right, controls) && TunnelShape.SelectedNode == -1);
    EXPECT_FALSE(Move(MouseState::Left, 0, 0));
    EXPECT_EQ(TunnelShape.InsideNodes, (std::vector<Vector3D>{{-2, 1, 7}, {1.5f, -1, 0}}));
    EXPECT_EQ(TunnelShape.OutsideNodes, (std::vector<Vector3D>{{-3, 2.5f, 0}, {4, 3, 0}}));
}

TEST_F(ShapeInputTest, PanAndZoomKeepToTheirLimits) {
    // Where the right button drags the view from 200, 100, and the pan after it.
    const float steps[][4] = {
        {230, 90, 30, -10}, {220, 95, 20, -5}, {5000, -5000, 1000, -1000}, {4990, -4970, 990, -970}};
    EXPECT_FALSE(PressMouse(MouseButton::Right, 200, 100, controls));
    for (const auto& [x, y, panX, panY] : steps) {
        EXPECT_TRUE(MoveMouse(MouseState::Right, x, y, controls));
        EXPECT_TRUE(ShapeView.ViewOriginX == 390 + panX && ShapeView.ViewOriginY == 240 + panY) << x;
    }
    // Tool, zoom before and after, pan after; before it is 3000, -700.
    const float cases[][5] = {{5, 50, 60, 1200, -700}, {5, 195, 200, 3000, -700}, {5, 200, 200, 3000, -700},
                              {6, 50, 40, 800, -700},  {6, 15, 10, 200, -200},    {6, 10, 10, 200, -200},
                              {7, 200, 50, 1000, -700}};
    for (const auto& [tool, from, to, panX, panY] : cases) {
        TunnelShape.ZoomScale = from;
        ShapeView = {3000, -700, 0, 0};
        EXPECT_TRUE(RunShapeTool(static_cast<int>(tool), controls));
        EXPECT_EQ(TunnelShape.ZoomScale, to);
        EXPECT_TRUE(ShapeView.ViewOriginX == 390 + panX && ShapeView.ViewOriginY == 240 + panY) << from;
    }
    ShapeView = {3000, 0, 7, 8};
    EXPECT_TRUE(RunShapeTool(kToolNew, controls));
    EXPECT_TRUE(ShapeView.PanX == 3000 && ShapeView.ViewOriginX == 7) << "New leaves the view alone";
}

TEST_F(ShapeInputTest, EachWholeNotchOfTheWheelIsOneStepOfTheZoomTools) {
    const struct {
        std::vector<int> turns;  // a notch is 120
        float zoom;              // from 180
    } cases[] = {{{120}, 190},           {{-120}, 170},       {{360}, 200},
                 {{40, 40}, 180},        {{40, 40, 40}, 190}, {{-70, -70}, 170},
                 {{100, 100, 100}, 200}, {{100, -120}, 170},  {{110, -10, 110}, 180}};
    for (const auto& [turns, zoom] : cases) {
        TunnelShape.ZoomScale = 180;
        Wheel = {};
        bool stepped = false;
        for (const int turn : turns)
            stepped |= TurnWheel(turn, controls);
        EXPECT_EQ(TunnelShape.ZoomScale, zoom) << turns[0];
        EXPECT_EQ(stepped, zoom != 180) << turns[0];
    }
    ShapeView = {-3600, 0, 0, 0};
    EXPECT_TRUE(TurnWheel(-240, controls));
    EXPECT_EQ(ShapeView.ViewOriginX, 390 - 3200) << "the pan keeps to the limit of the new zoom";
}

TEST_F(ShapeInputTest, TheWheelDoesNothingWhileAButtonIsDown) {
    TurnWheel(100, controls);
    controls.buttonDown = true;
    EXPECT_FALSE(TurnWheel(240, controls));
    controls.buttonDown = false;
    EXPECT_FALSE(TurnWheel(100, controls)) << "what was turned meanwhile or before doesn't count";
    EXPECT_EQ(TunnelShape.ZoomScale, 50);
}

TEST_F(ShapeInputTest, InsertTakesTheMidpointOfTheInsideContourAndDeleteDropsTheSelection) {
    const std::vector<Vector3D> inside = {{2, 0, 5}, {0, -4, 5}}, outside = {{9, 9, 5}, {9, 8, 5}};
    TunnelShape = {inside, outside, 50, 0, kTrue};
    EXPECT_TRUE(RunShapeTool(kToolInsert, controls));
    EXPECT_EQ(TunnelShape.InsideNodes, (std::vector<Vector3D>{{2, 0, 5}, {1, -2, 0}, {0, -4, 5}}));
    EXPECT_EQ(TunnelShape.OutsideNodes, (std::vector<Vector3D>{{9, 9, 5}, {1.5f, -2.5f, 0}, {9, 8, 5}}));
    TunnelShape = {inside, outside, 50, 1, kTrue};
    EXPECT_TRUE(RunShapeTool(kToolInsert, controls) && TunnelShape.SelectedNode == 1);
    EXPECT_EQ(TunnelShape.InsideNodes, (std::vector<Vector3D>{{2, 0, 5}, {0, -4, 5}, {1, -2, 0}}));
    EXPECT_TRUE(RunShapeTool(kToolDelete, controls) && TunnelShape.SelectedNode == -1);
    EXPECT_FALSE(RunShapeTool(kToolInsert, controls) || RunShapeTool(kToolDelete, controls));
    EXPECT_EQ(TunnelShape.InsideNodes, (std::vector<Vector3D>{{2, 0, 5}, {1, -2, 0}}));
}

TEST_F(ShapeInputTest, ArrowKeysMoveTheSelectedPointByTheIntervalWithoutSnappingIt) {
    const struct {
        int code;
        const char* interval;
        bool snap;
        Vector3D moved;  // from 2.25, 3
    } cases[] = {{kArrowLeft, "0.5", true, {1.75f, 3, 0}},   {kArrowUp, "0.5", true, {2.25f, 3.5f, 0}},
                 {kArrowRight, "0.25", true, {2.5f, 3, 0}},  {kArrowDown, "2", true, {2.25f, 1, 0}},
                 {kArrowDown, "2", false, {2.25f, 2.9f, 0}}, {kArrowRight, "", true, {2.35f, 3, 0}}};
    for (const auto& [code, interval, snap, moved] : cases)
        for (const Truth outside : {kFalse, kTrue}) {
            const Vector3D from{2.25f, 3, 7};
            TunnelShape = {{{1, 1, 1}, from}, {{1, 1, 1}, from}, 50, 1, outside};
            controls.snapTo = snap;
            controls.snapText = interval;
            EXPECT_TRUE(PressKey({code}, true, controls));
            EXPECT_EQ(TunnelShape.InsideNodes[1], outside ? from : moved) << code << ' ' << interval;
            EXPECT_EQ(TunnelShape.OutsideNodes[1], outside ? moved : from) << code << ' ' << interval;
            EXPECT_EQ(TunnelShape.SelectedNode, 1);
        }
}

TEST_F(ShapeInputTest, ControlAndArrowKeysChooseAmongVisiblePointsAndEscapeNone) {
    constexpr int kHidden = -2;  // in place of the node: nothing is chosen
    const struct {
        int code, node;
        bool outside;
        ShownNodes shown;
        int newNode;
        bool newOutside;
    } cases[] = {{kArrowRight, 1, false, {true, true}, 2, false},
                 {kArrowRight, 3, true, {true, true}, 0, true},
                 {kArrowLeft, 1, true, {true, true}, 0, true},
                 {kArrowLeft, 0, false, {true, true}, 3, false},
                 {kArrowUp, 1, false, {true, true}, 1, true},
                 {kArrowDown, 1, true, {true, true}, 1, false},
                 {kArrowUp, 1, true, {true, true}, 1, false},
                 {kArrowUp, 1, false, {true, false}, kHidden, false},
                 {kArrowDown, 1, true, {false, true}, kHidden, true},
                 {kArrowRight, 1, true, {true, false}, kHidden, true},
                 {kArrowRight, -1, true, {true, true}, 0, true},
                 {kArrowLeft, -1, false, {true, true}, 3, false},
                 {kArrowRight, -1, true, {true, false}, 0, false},
                 {kArrowLeft, -1, true, {false, false}, kHidden, true},
                 {kArrowUp, -1, true, {true, true}, kHidden, true}};
    for (const auto& row : cases) {
        MakePresetShape(0);
        TunnelShape.SelectedNode = row.node;
        TunnelShape.SelectedIsOutside = ToTruth(row.outside);
        controls.shown = row.shown;
        const bool chosen = row.newNode != kHidden;
        EXPECT_EQ(PressKey({.code = row.code, .control = true}, true, controls), chosen) << row.code;
        EXPECT_EQ(TunnelShape.SelectedNode, chosen ? row.newNode : row.node) << row.code << ' ' << row.node;
        EXPECT_EQ(TunnelShape.SelectedIsOutside, ToTruth(row.newOutside)) << row.code << ' ' << row.node;
    }
    TunnelShape.SelectedNode = 1;
    EXPECT_TRUE(PressKey({kEscapeKey}, true, controls));
    EXPECT_EQ(TunnelShape.SelectedNode, -1);
    EXPECT_FALSE(PressKey({kEscapeKey}, true, controls)) << "nothing was selected";
}

TEST_F(ShapeInputTest, CanvasKeysDoNothingElsewhereWithAltWithAButtonDownOrOnNothing) {
    EXPECT_FALSE(PressKey({.code = kArrowRight, .control = true}, true, controls)) << "the shape is empty";
    MakePresetShape(0);
    EXPECT_FALSE(PressKey({kArrowUp}, true, controls)) << "nothing is selected";
    TunnelShape.SelectedNode = 0;
    for (const int code : {kEscapeKey, kArrowUp, kArrowDown}) {
        EXPECT_FALSE(PressKey({code}, false, controls)) << code;
        EXPECT_FALSE(PressKey({.code = code, .alt = true}, true, controls)) << code;
        controls.buttonDown = true;
        EXPECT_FALSE(PressKey({code}, true, controls)) << code;
        controls.buttonDown = false;
    }
    EXPECT_EQ(TunnelShape.SelectedNode, 0);
    EXPECT_EQ(TunnelShape.InsideNodes[0], (Vector3D{2, -1, 0}));
}

TEST_F(ShapeInputTest, KeyCodesAndTypedCharacters) {
    std::string tools;
    for (int code = 0; code < 256; ++code)
        if (const int tool = ToolOfKey({code}); tool != -1)
            tools.append(" ").append(std::to_string(code)).append(":").append(std::to_string(tool));
    EXPECT_EQ(tools, " 46:2 70:9 73:1 77:8 107:5 109:6 111:7 187:5 189:6");
    const std::string digits = "\b.0123456789";
    const std::map<std::string, std::string> passing = {{"", digits},   {"1", "\b."},    {".", "\b."},
                                                        {"1.", digits}, {"1.2", digits}, {"1.25", "\b"}};
    for (const auto& [text, expected] : passing) {
        std::string passed;
        for (const char c : digits + "/:-+, eE")
            if (SnapCharacterPasses(text, static_cast<char32_t>(c))) passed += c;
        EXPECT_EQ(passed, expected) << text;
    }
}

}  // namespace
}  // namespace boreforge
