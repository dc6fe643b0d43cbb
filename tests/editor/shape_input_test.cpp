#include "editor/ShapeInput.h"

#include <string>
#include <vector>

#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "support/CoreTest.h"

namespace boreforge {
namespace {

struct ShapeInputTest : CoreTest {
    ShapeInputTest() { ShapeView = {0, 0, 100, 80}; }
    // Canvas positions, with the origin at 100, 80.
    static float X(double x) { return static_cast<float>(100 + TunnelShape.ZoomScale * x); }
    static float Y(double y) { return static_cast<float>(80 - TunnelShape.ZoomScale * y); }
    bool Press(double x, double y) { return PressMouse(MouseButton::Left, X(x), Y(y), controls); }
    bool Drag(double x, double y) { return MoveMouse(MouseState::Left, X(x), Y(y), controls); }
    EditorControls controls{{true, true}, true, "0.5", 781, 481};
};

TEST_F(ShapeInputTest, APositionIsSnappedToTheIntervalWithHalvesGoingUp) {
    const struct {
        const char* interval;
        float value, snapped;  // the same without an interval above 0
    } cases[] = {{"0.5", 1.2f, 1},      {"0.5", 1.25f, 1.5f},   {"0.5", -1.25f, -1}, {"0.5", -0.26f, -0.5f},
                 {" 0.5x", 0.7f, 0.5f}, {".25", 0.374f, 0.25f}, {"2.", 1, 2},        {"", 1.2f, 1.2f},
                 {"0", 1.2f, 1.2f},     {"-1", 1.2f, 1.2f},     {"inf", 1.2f, 1.2f}, {"1e39", 1.2f, 1.2f}};
    for (const auto& [interval, value, snapped] : cases) {
        controls.snapText = interval;
        EXPECT_EQ(Snapped({value, value, 0}, controls), (Vector3D{snapped, snapped, 0})) << interval;
    }
}

TEST_F(ShapeInputTest, PositionsShowOneOrTwoDigitsWithHalvesAwayFromZero) {
    const struct {
        float value;
        const char* text;
    } cases[] = {{0, "0.0"},         {0.999f, "1.0"}, {-1.5f, "-1.5"},  {0.125f, "0.13"},
                 {-0.125f, "-0.13"}, {1.005f, "1.0"}, {-0.004f, "0.0"}, {16777216, "16777216.0"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(FormatPosition(value), text);
}

// Which point of which node a press selects. The nodes are at 0 and 2 with their outside points close by.
TEST_F(ShapeInputTest, APressSelectsTheFirstVisiblePointInReachOrAddsANode) {
    constexpr bool kInside = false, kOutside = true;
    constexpr ShownNodes kBoth{true, true}, kInsideOnly{true, false}, kOutsideOnly{false, true};
    constexpr int kNew = 2, kNone = -1;
    const struct {
        const char* name;
        float zoom;
        double x, y;
        ShownNodes shown;
        int node;
        bool outside;
    } cases[] = {{"inside wins over outside", 50, 0.1, 0.1, kBoth, 0, kInside},
                 {"inside is hidden", 50, 0.1, 0.1, kOutsideOnly, 0, kOutside},
                 {"a lower node wins over a nearer one", 50, 0.4, 0.4, kBoth, 0, kOutside},
                 {"only a hidden point in reach", 50, 0.4, 0.4, kInsideOnly, kNew, kOutside},
                 {"the corner of the square in reach", 200, -0.28, 0.28, kBoth, 0, kInside},
                 {"the square's left edge is out of reach", 10, -0.3, 0, kBoth, kNew, kOutside},
                 {"its lower edge is out of reach", 50, 0, -0.3, kBoth, kNew, kOutside},
                 {"everything is hidden", 50, 0.1, 0.1, {false, false}, kNone, kOutside}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        TunnelShape = {{{0, 0, 0}, {2, 0, 0}}, {{0.2f, 0.2f, 0}, {0.4f, 0.4f, 0}}, row.zoom, 1, kTrue};
        controls.shown = row.shown;
        EXPECT_TRUE(Press(row.x, row.y));
        EXPECT_EQ(TunnelShape.SelectedNode, row.node);
        EXPECT_EQ(TunnelShape.SelectedIsOutside, ToTruth(row.outside));
        EXPECT_EQ(TunnelShape.NodeCount(), row.node == kNew ? 3 : 2);
    }
}

TEST_F(ShapeInputTest, ADragSnapsThePointThatIsHitOrTheNewNodesOnTheLastHitContour) {
    TunnelShape = {{{-2, 1, 7}}, {{-3, 2, 7}}};
    Press(-3, 2);
    EXPECT_TRUE(Drag(-3.2, 2.25));
    EXPECT_EQ(TunnelShape.OutsideNodes.at(0), (Vector3D{-3, 2.5f, 0}));
    Press(1.25, -1.25);
    EXPECT_EQ(TunnelShape.OutsideNodes.at(1), (Vector3D{2, -1.5f, 0}));
    EXPECT_TRUE(Drag(4, 3));
    EXPECT_EQ(TunnelShape.InsideNodes.at(1), (Vector3D{1.5f, -1, 0}));
    EXPECT_EQ(TunnelShape.OutsideNodes.at(1), (Vector3D{4, 3, 0}));
    ReleaseMouse(MouseButton::Left, controls);
    EXPECT_EQ(TunnelShape.SelectedNode, 1);
    ReleaseMouse(MouseButton::Right, controls);
    EXPECT_EQ(TunnelShape.SelectedNode, -1) << "after a pan";
}

TEST_F(ShapeInputTest, TheRightButtonPansUpToTwentyUnits) {
    const struct {
        float x, y, panX, panY;
    } steps[] = {{230, 90, 30, -10}, {220, 95, 20, -5}, {5000, -5000, 1000, -1000}, {4990, -4970, 990, -970}};
    EXPECT_FALSE(PressMouse(MouseButton::Right, 200, 100, controls));
    for (const auto& [x, y, panX, panY] : steps) {
        EXPECT_TRUE(MoveMouse(MouseState::Right, x, y, controls));
        EXPECT_EQ(ShapeView.ViewOriginX, 390 + panX);
        EXPECT_EQ(ShapeView.ViewOriginY, 240 + panY);
    }
}

TEST_F(ShapeInputTest, TheZoomAndThePanKeepToTheirLimits) {
    const struct {
        ShapeTool tool;
        float from, to, panX, panY;  // the pan before is 3000, -700
    } cases[] = {{ShapeTool::ZoomIn, 50, 60, 1200, -700},
                 {ShapeTool::ZoomIn, 195, 200, 3000, -700},
                 {ShapeTool::ZoomOut, 50, 40, 800, -700},
                 {ShapeTool::ZoomOut, 15, 10, 200, -200},
                 {ShapeTool::ZoomReset, 200, 50, 1000, -700}};
    for (const auto& [tool, from, to, panX, panY] : cases) {
        TunnelShape.ZoomScale = from;
        ShapeView = {3000, -700, 0, 0};
        EXPECT_TRUE(RunShapeTool(tool, controls));
        EXPECT_EQ(TunnelShape.ZoomScale, to);
        EXPECT_EQ(ShapeView.ViewOriginX, 390 + panX) << from;
        EXPECT_EQ(ShapeView.ViewOriginY, 240 + panY) << from;
    }
}

TEST_F(ShapeInputTest, EachWholeNotchOfTheWheelIsOneStepOfTheZoomTools) {
    const struct {
        std::vector<int> turns;  // a notch is 120
        float zoom;              // from 180
    } cases[] = {{{120}, 190},           {{-240}, 160},      {{40, 40}, 180},       {{40, 40, 40}, 190},
                 {{100, 100, 100}, 200}, {{100, -120}, 170}, {{110, -10, 110}, 180}};
    for (const auto& [turns, zoom] : cases) {
        TunnelShape.ZoomScale = 180;
        Wheel = {};
        bool stepped = false;
        for (const int turn : turns)
            stepped |= TurnWheel(turn, controls);
        EXPECT_EQ(TunnelShape.ZoomScale, zoom) << turns[0];
        EXPECT_EQ(stepped, zoom != 180) << turns[0];
    }
}

TEST_F(ShapeInputTest, InsertAddsTheMidpointToTheNextNodeOfTheInsideContour) {
    const struct {
        int selected;
        std::vector<Vector3D> inside;
    } cases[] = {{0, {{2, 0, 5}, {1, -2, 0}, {0, -4, 5}}}, {1, {{2, 0, 5}, {0, -4, 5}, {1, -2, 0}}}};
    for (const auto& [selected, inside] : cases) {
        TunnelShape = {{{2, 0, 5}, {0, -4, 5}}, {{9, 9, 5}, {9, 8, 5}}, 50, selected, kTrue};
        EXPECT_TRUE(RunShapeTool(ShapeTool::Insert, controls));
        EXPECT_EQ(TunnelShape.InsideNodes, inside);
        EXPECT_EQ(TunnelShape.SelectedNode, selected);
    }
}

TEST_F(ShapeInputTest, DeleteDropsTheSelectionWithoutWhichNeitherItNorInsertActs) {
    MakePresetShape(kPresetBox);
    TunnelShape.SelectedNode = 1;
    EXPECT_TRUE(RunShapeTool(ShapeTool::Delete, controls));
    EXPECT_EQ(TunnelShape.SelectedNode, -1);
    EXPECT_FALSE(RunShapeTool(ShapeTool::Insert, controls));
    EXPECT_FALSE(RunShapeTool(ShapeTool::Delete, controls));
    EXPECT_EQ(TunnelShape.InsideNodes, (std::vector<Vector3D>{{2, -1, 0}, {-2, 3, 0}, {-2, -1, 0}}));
}

TEST_F(ShapeInputTest, ArrowKeysMoveTheSelectedPointByTheIntervalWithoutSnappingIt) {
    const struct {
        KeyCode code;
        const char* interval;
        bool snap;
        Vector3D moved;  // from 2.25, 3
    } cases[] = {{KeyCode::Left, "0.5", true, {1.75f, 3, 0}},   {KeyCode::Up, "0.5", true, {2.25f, 3.5f, 0}},
                 {KeyCode::Right, "0.25", true, {2.5f, 3, 0}},  {KeyCode::Down, "2", true, {2.25f, 1, 0}},
                 {KeyCode::Down, "2", false, {2.25f, 2.9f, 0}}, {KeyCode::Right, "", true, {2.35f, 3, 0}}};
    const Vector3D from{2.25f, 3, 7};
    for (const auto& [code, interval, snap, moved] : cases) {
        TunnelShape = {{{1, 1, 1}, from}, {{1, 1, 1}, from}, 50, 1, kTrue};
        controls.snapTo = snap;
        controls.snapText = interval;
        EXPECT_TRUE(PressKey({code}, true, controls));
        EXPECT_EQ(TunnelShape.InsideNodes[1], from) << int(code) << ' ' << interval;
        EXPECT_EQ(TunnelShape.OutsideNodes[1], moved) << int(code) << ' ' << interval;
    }
    EXPECT_TRUE(PressKey({.code = KeyCode::Left, .alt = true}, true, controls));
    EXPECT_EQ(TunnelShape.InsideNodes[1], (Vector3D{2.15f, 3, 0})) << "Alt moves both points";
    EXPECT_EQ(TunnelShape.OutsideNodes[1], (Vector3D{2.25f, 3, 0}));
}

TEST_F(ShapeInputTest, ControlAndArrowKeysSelectTheNextVisiblePoint) {
    constexpr ShownNodes kBoth{true, true}, kInsideOnly{true, false}, kOutsideOnly{false, true};
    const struct {
        const char* name;
        KeyCode code;
        int node;
        bool outside;
        ShownNodes shown;
        int nextNode;
        bool nextOutside;
    } cases[] = {{"next", KeyCode::Right, 1, false, kBoth, 2, false},
                 {"next after the last", KeyCode::Right, 3, true, kBoth, 0, true},
                 {"previous of the first", KeyCode::Left, 0, false, kBoth, 3, false},
                 {"the other contour", KeyCode::Down, 1, false, kBoth, 1, true},
                 {"the other contour by the other key", KeyCode::Up, 1, true, kBoth, 1, false},
                 {"the first, since nothing is selected", KeyCode::Right, -1, true, kBoth, 0, true},
                 {"the first that is visible", KeyCode::Right, -1, true, kInsideOnly, 0, false},
                 {"the other contour is hidden", KeyCode::Down, 1, true, kOutsideOnly, 1, true},
                 {"its own contour is hidden", KeyCode::Right, 1, true, kInsideOnly, 1, true},
                 {"all is hidden", KeyCode::Left, -1, true, {false, false}, -1, true}};
    MakePresetShape(kPresetBox);
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        TunnelShape.SelectedNode = row.node;
        TunnelShape.SelectedIsOutside = ToTruth(row.outside);
        controls.shown = row.shown;
        EXPECT_EQ(PressKey({.code = row.code, .control = true}, true, controls),
                  row.node != row.nextNode || row.outside != row.nextOutside);
        EXPECT_EQ(TunnelShape.SelectedNode, row.nextNode);
        EXPECT_EQ(TunnelShape.SelectedIsOutside, ToTruth(row.nextOutside));
    }
}

TEST_F(ShapeInputTest, AnEvenWallIsAsThickAsTheSnapInterval) {
    const struct {
        const char* name;
        bool snap;
        const char* interval;
        float corner;  // x of the outside point of a corner at 2
    } cases[] = {
        {"an interval", true, "1.0", 3}, {"0", true, "0", 2.5f}, {"snap is off", false, "1.0", 2.5f}};
    for (const auto& row : cases) {
        MakePresetShape(kPresetBox);
        controls.snapTo = row.snap;
        controls.snapText = row.interval;
        RunShapeTool(*ToolOfKey({KeyCode::W}), controls);
        EXPECT_EQ(TunnelShape.OutsideNodes[0].x, row.corner) << row.name;
    }
}

TEST_F(ShapeInputTest, NoCanvasKeyActsWithoutTheFocusOrWhileAButtonIsDown) {
    MakePresetShape(kPresetBox);
    TunnelShape.SelectedNode = 0;
    EditorControls pressed = controls;
    pressed.buttonDown = true;
    for (const KeyCode code : {KeyCode::Escape, KeyCode::Up}) {
        EXPECT_FALSE(PressKey({code}, false, controls)) << int(code);
        EXPECT_FALSE(PressKey({.code = code, .super = true}, true, controls)) << int(code);
        EXPECT_FALSE(PressKey({code}, true, pressed)) << int(code);
    }
    EXPECT_EQ(TunnelShape.SelectedNode, 0);
    EXPECT_EQ(TunnelShape.InsideNodes[0], (Vector3D{2, -1, 0}));
    EXPECT_TRUE(PressKey({KeyCode::Escape}, true, controls));
    EXPECT_FALSE(PressKey({KeyCode::Up}, true, controls)) << "nothing is selected";
}

}  // namespace
}  // namespace boreforge
