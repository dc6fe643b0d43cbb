#include "editor/ShapeHistory.h"

#include <cmath>
#include <functional>

#include "editor/ShapeInput.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "support/CoreTest.h"

namespace boreforge {
namespace {

// Starts with the box, its right floor node selected, and one shape unit for each pixel from (0, 0).
struct ShapeHistoryTest : CoreTest {
    ShapeHistoryTest() { Restart(); }
    static void Restart() {
        MakePresetShape(kPresetBox);
        TunnelShape.SelectedNode = 0;
        TunnelShape.ZoomScale = 1;
        ShapeView = {};
        ShapeHistory = {};
        EndShapeStep();
    }
    // Far from every node.
    void Press() { PressMouse(MouseButton::Left, 70, -70, controls); }
    void Drag() { MoveMouse(MouseState::Left, 90, -90, controls); }
    void Release() { ReleaseMouse(MouseButton::Left, controls); }
    void Add() {
        Press();
        Drag();
        Release();
    }
    void Run(ShapeTool tool) { RunShapeTool(tool, controls); }
    bool Undo() { return RunShapeTool(ShapeTool::Undo, controls); }
    bool Redo() { return RunShapeTool(ShapeTool::Redo, controls); }
    EditorControls controls{.shown = {}, .snapText = "1.0"};
};

TEST_F(ShapeHistoryTest, EveryChangeIsOneStepThatUndoesAndRedoes) {
    WriteBytes(In("wrong.zrbf"), FromHex("'ZRBE' 00000000"));
    const struct {
        const char* name;
        std::function<void()> change;
    } cases[] = {{"adding and dragging away", [&] { Add(); }},
                 {"a tool", [&] { Run(ShapeTool::Mirror); }},
                 {"an even wall", [&] { Run(ShapeTool::EvenWall); }},
                 {"the other way round", [&] { Run(ShapeTool::Reverse); }},
                 {"a preset", [&] { UsePreset(kPresetRounded, controls); }},
                 {"a wrong file, which empties the shape",
                  [&] { EXPECT_FALSE(OpenShapeFile(In("wrong.zrbf"), controls)); }}};
    for (const auto& [name, change] : cases) {
        SCOPED_TRACE(name);
        Restart();
        const TunnelShapeState box = TunnelShape;
        change();
        const TunnelShapeState changed = TunnelShape;
        EXPECT_TRUE(Undo());
        EXPECT_EQ(TunnelShape.InsideNodes, box.InsideNodes);
        EXPECT_EQ(TunnelShape.OutsideNodes, box.OutsideNodes);
        EXPECT_EQ(TunnelShape.SelectedNode, -1);
        EXPECT_FALSE(Undo()) << "more than one step";
        EXPECT_TRUE(Redo());
        EXPECT_EQ(TunnelShape.InsideNodes, changed.InsideNodes);
        EXPECT_EQ(TunnelShape.OutsideNodes, changed.OutsideNodes);
        EXPECT_FALSE(Redo());
    }
}

TEST_F(ShapeHistoryTest, OnlyAChangeDropsWhatWasUndone) {
    TunnelShape.InsideNodes[3] = {NAN, 0, 0};
    EndShapeStep();
    Run(ShapeTool::Mirror);
    Undo();
    Run(ShapeTool::ZoomIn);
    TunnelShape.InsideNodes[3].y = -0.0f;
    EXPECT_FALSE(OpenShapeFile(In("absent.zrbf"), controls));
    EXPECT_TRUE(Redo());
    Undo();
    Run(ShapeTool::Flip);
    EXPECT_FALSE(Redo());
}

TEST_F(ShapeHistoryTest, NothingIsUndoneAndNoStepEndsWhileAButtonIsDown) {
    Press();
    controls.buttonDown = true;
    EXPECT_FALSE(Undo());
    Run(ShapeTool::Mirror);
    Drag();
    controls.buttonDown = false;
    Release();
    EXPECT_TRUE(Undo());
    EXPECT_EQ(TunnelShape.NodeCount(), 4);
    EXPECT_EQ(TunnelShape.InsideNodes[0], (Vector3D{2, -1, 0}));
}

TEST_F(ShapeHistoryTest, ARunOfArrowKeysIsOneStepUntilAnythingElseHappens) {
    const struct {
        const char* name;
        std::function<void()> between;
        int steps;
    } cases[] = {{"nothing", [] {}, 1},
                 {"a key elsewhere", [&] { PressKey({KeyCode::Other}, false, controls); }, 2},
                 {"adding a node", [&] { Press(); }, 2},
                 {"a zoom", [&] { TurnWheel(120, controls); }, 2},
                 {"a mirror", [&] { Run(ShapeTool::Mirror); }, 3}};
    for (const auto& [name, between, steps] : cases) {
        Restart();
        PressKey({KeyCode::Up}, true, controls);
        PressKey({KeyCode::Right}, true, controls);
        between();
        PressKey({KeyCode::Up}, true, controls);
        int undone = 0;
        while (Undo())
            ++undone;
        EXPECT_EQ(undone, steps) << name;
    }
}

TEST_F(ShapeHistoryTest, TheLastThousandStepsAreKept) {
    for (int i = 1; i <= 1100; ++i) {
        TunnelShape.InsideNodes[0].x = static_cast<float>(i);
        EndShapeStep();
    }
    int undone = 0;
    while (UndoShapeStep())
        ++undone;
    EXPECT_EQ(undone, 1000);
}

}  // namespace
}  // namespace boreforge
