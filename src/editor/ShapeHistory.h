// What Undo and Redo restore: whole copies of the shape's nodes, one for each step, since shapes are small.
// Zoom, pan and SelectedIsOutside are not part of a step.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// The oldest steps are dropped beyond either limit, but the last step is always kept.
inline constexpr std::size_t kMaxUndoSteps = 1000;
inline constexpr std::size_t kMaxUndoBytes = 64'000'000;

struct ShapeNodes {
    std::vector<Vector3D> InsideNodes;
    std::vector<Vector3D> OutsideNodes;
};

struct ShapeHistoryState {
    std::deque<ShapeNodes> undo;        // before each step, the latest step last
    std::deque<ShapeNodes> redo;        // after each step that was undone, the next to redo last
    std::optional<ShapeNodes> present;  // at the last call of EndShapeStep
};

// The one shape's history. A fresh one takes the shape of the next EndShapeStep as its beginning.
extern ShapeHistoryState ShapeHistory;

// Makes whatever has changed since the last call one step. The same coordinates are no change. If memory runs
// out, the history starts anew rather than keep the user from working.
void EndShapeStep();

// Each restores the nodes before, or after, one step, and selects nothing. What has changed since the last
// EndShapeStep is a step of its own. False if there is no such step: nothing has changed then.
bool UndoShapeStep();
bool RedoShapeStep();

}  // namespace boreforge
