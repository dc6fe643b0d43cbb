#include "editor/ShapeHistory.h"

#include <cmath>
#include <functional>
#include <span>

#include "editor/ShapeInput.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "support/CoreTest.h"

namespace boreforge {
namespace {

// Starts with the box, its right floor node selected, and one shape unit for each pixel from (0, 0).
struct ShapeHistoryTest : CoreTest {
    ShapeHistoryTest() {
        MakePresetShape(kPresetBox);
        TunnelShape.SelectedNode = 0;
        TunnelShape.ZoomScale = 1;
        ShapeView = {};
        EndShapeStep();
    }
    struct Position {
        float x, y;
    };
    using Way = std::vector<Position>;
    void Press(Position at) { PressMouse(MouseButton::Left, at.x, -at.y, controls); }
    void Move(Position to) { MoveMouse(MouseState::Left, to.x, -to.y, controls); }
    void Release() { ReleaseMouse(MouseButton::Left, controls); }
    // Presses the button at the first position, moves through the others and releases it at the last.
    void Drag(const Way& way) {
        Press(way[0]);
        for (const Position& position : std::span(way).subspan(1))
            Move(position);
        Release();
    }
    bool Undo() { return RunShapeTool(ShapeTool::Undo, controls); }
    bool Redo() { return RunShapeTool(ShapeTool::Redo, controls); }
    EditorControls controls;
};

TEST_F(ShapeHistoryTest, EveryChangeIsOneStepThatUndoesAndRedoes) {
    const std::string empty = In("empty.zrbf"), wrong = In("wrong.zrbf");
    const Way away = {{7, 7}, {8, 8}, {9, 9}}, dragging = {{2, 3}, {4, 4}, {5, 5}};
    WriteBytes(empty, FromHex("'ZRBF' 00000000"));
    WriteBytes(wrong, FromHex("'ZRBE' 00000000"));
    const struct {
        const char* name;
        std::function<void()> change;
    } cases[] = {{"adding and dragging away", [&] { Drag(away); }},
                 {"dragging", [&] { Drag(dragging); }},
                 {"inserting", [&] { RunShapeTool(ShapeTool::Insert, controls); }},
                 {"deleting", [&] { RunShapeTool(ShapeTool::Delete, controls); }},
                 {"mirror", [&] { RunShapeTool(ShapeTool::Mirror, controls); }},
                 {"flip", [&] { RunShapeTool(ShapeTool::Flip, controls); }},
                 {"New", [&] { RunShapeTool(ShapeTool::New, controls); }},
                 {"a preset", [&] { UsePreset(kPresetRounded, controls); }},
                 {"opening", [&] { EXPECT_TRUE(OpenShapeFile(empty, controls)); }},
                 {"a wrong start", [&] { EXPECT_FALSE(OpenShapeFile(wrong, controls)); }}};
    for (const auto& row : cases) {
        TunnelShape.SelectedNode = 0;
        const TunnelShapeState before = TunnelShape;
        row.change();
        const TunnelShapeState after = TunnelShape;
        EXPECT_TRUE(Undo()) << row.name;
        EXPECT_EQ(TunnelShape.InsideNodes, before.InsideNodes) << row.name;
        EXPECT_EQ(TunnelShape.OutsideNodes, before.OutsideNodes) << row.name;
        EXPECT_FALSE(Undo()) << row.name << " is more than one step";
        EXPECT_TRUE(Redo()) << row.name;
        EXPECT_EQ(TunnelShape.InsideNodes, after.InsideNodes) << row.name;
        EXPECT_EQ(TunnelShape.OutsideNodes, after.OutsideNodes) << row.name;
        EXPECT_FALSE(Redo()) << row.name;
        Undo();
    }
}

TEST_F(ShapeHistoryTest, UndoAndRedoSelectNothingAndLeaveTheViewAlone) {
    RunShapeTool(ShapeTool::Mirror, controls);
    for (const ShapeTool tool : {ShapeTool::Undo, ShapeTool::Redo}) {
        TunnelShape.SelectedNode = 1;
        TunnelShape.SelectedIsOutside = kTrue;
        TunnelShape.ZoomScale = 170;
        ShapeView = {30, 40, 50, 60};
        EXPECT_TRUE(RunShapeTool(tool, controls));
        EXPECT_EQ(TunnelShape.SelectedNode, -1);
        EXPECT_EQ(TunnelShape.SelectedIsOutside, kTrue);
        EXPECT_EQ(TunnelShape.ZoomScale, 170);
        EXPECT_EQ(ShapeView.PanX, 30);
        EXPECT_EQ(ShapeView.ViewOriginY, 60);
    }
}

TEST_F(ShapeHistoryTest, AnActionThatChangesNothingIsNoStep) {
    TunnelShape.InsideNodes[3] = {NAN, -0.0f, 0};
    ShapeHistory = {};
    EndShapeStep();
    Drag({{2, 3}, {5, 5}, {2, 3}});
    UsePreset(kPresetBox, controls);
    Undo();  // the NaN is back
    RunShapeTool(ShapeTool::ZoomIn, controls);
    TunnelShape.InsideNodes[3].y = 0;
    EXPECT_FALSE(Undo());
    TunnelShape.SelectedNode = 1;
    EXPECT_FALSE(OpenShapeFile(In("absent.zrbf"), controls));
    EXPECT_FALSE(Undo());
    EXPECT_EQ(TunnelShape.SelectedNode, 1);
    EXPECT_TRUE(Redo()) << "nothing that was undone is lost";
}

TEST_F(ShapeHistoryTest, NothingIsUndoneAndNoStepEndsWhileAButtonIsDown) {
    RunShapeTool(ShapeTool::Flip, controls);
    const TunnelShapeState flipped = TunnelShape;
    Press({7, 7});
    controls.buttonDown = true;
    EXPECT_FALSE(Undo());
    PressMouse(MouseButton::Other, 0, 0, controls);
    RunShapeTool(ShapeTool::Mirror, controls);
    ReleaseMouse(MouseButton::Other, controls);
    Move({9, 9});
    EXPECT_FALSE(Redo());
    controls.buttonDown = false;
    Release();
    EXPECT_TRUE(Undo());
    EXPECT_EQ(TunnelShape.InsideNodes, flipped.InsideNodes);
}

TEST_F(ShapeHistoryTest, ARunOfArrowKeysIsOneStepUntilAnythingElseHappens) {
    const Way click = {{2.5f, 0}};
    const struct {
        const char* name;
        std::function<void()> between;
        int steps;
    } cases[] = {
        {"nothing", [] {}, 1},
        {"a key elsewhere", [&] { PressKey({KeyCode::Other}, false, controls); }, 2},
        {"a choice", [&] { PressKey({.code = KeyCode::Right, .control = true}, true, controls); }, 2},
        {"a click", [&] { Drag(click); }, 2},
        {"a zoom", [&] { TurnWheel(120, controls); }, 2},
        {"a mirror", [&] { RunShapeTool(ShapeTool::Mirror, controls); }, 3}};
    for (const auto& [name, between, steps] : cases) {
        MakePresetShape(kPresetBox);
        TunnelShape.SelectedNode = 0;
        TunnelShape.ZoomScale = 1;
        ShapeHistory = {};
        EndShapeStep();
        for (const KeyCode code : {KeyCode::Up, KeyCode::Right, KeyCode::Up})
            PressKey({code}, true, controls);
        between();
        for (const KeyCode code : {KeyCode::Right, KeyCode::Up})
            PressKey({code}, true, controls);
        int undone = 0;
        while (Undo())
            ++undone;
        EXPECT_EQ(undone, steps) << name;
        EXPECT_EQ(TunnelShape.InsideNodes[0], (Vector3D{2, -1, 0})) << name;
    }
}

TEST_F(ShapeHistoryTest, ANewStepDropsWhatWasUndone) {
    RunShapeTool(ShapeTool::Mirror, controls);
    Undo();
    Drag({{7, 7}});
    EXPECT_FALSE(Redo());
    EXPECT_TRUE(Undo());
}

TEST_F(ShapeHistoryTest, TheLastThousandStepsAreKeptWithin64MegabytesButAtLeastOne) {
    const struct {
        std::size_t nodes;  // 24 bytes each
        int made, kept;
    } cases[] = {{1, 1100, 1000}, {26'000, 200, 102}, {3'000'000, 2, 1}};
    for (const auto& [nodes, made, kept] : cases) {
        TunnelShape.InsideNodes.assign(nodes, {});
        TunnelShape.OutsideNodes.assign(nodes, {});
        ShapeHistory = {};
        EndShapeStep();
        for (int i = 1; i <= made; ++i) {
            TunnelShape.InsideNodes[0].x = static_cast<float>(i);
            EndShapeStep();
        }
        int undone = 0;
        while (UndoShapeStep())
            ++undone;
        EXPECT_EQ(undone, kept);
        EXPECT_EQ(TunnelShape.InsideNodes[0].x, static_cast<float>(made - kept));
    }
}

}  // namespace
}  // namespace boreforge
