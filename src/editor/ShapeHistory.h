// Undo and redo. Each step is a copy of all the shape's nodes, since shapes are small. Zoom, pan and
// SelectedIsOutside are not part of a step.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// Older steps are dropped.
inline constexpr std::size_t kMaxUndoSteps = 1000;

struct ShapeNodes {
    std::vector<Vector3D> inside, outside;
};

struct ShapeHistoryState {
    std::deque<ShapeNodes> undo;        // the shape before each step; the latest step is last
    std::deque<ShapeNodes> redo;        // the shape after each undone step; the next to redo is last
    std::optional<ShapeNodes> present;  // the shape at the last call of EndShapeStep
};

// The history of the one shape. An empty history starts from the shape at the next call of EndShapeStep.
extern ShapeHistoryState ShapeHistory;

// Makes one step of everything that has changed since the last call, or none if all coordinates are the same.
// Throws std::bad_alloc if memory runs out; what has changed is then a part of the next step.
void EndShapeStep();

// Restores the nodes from before the last step, or from after the last undone one, and clears the selection.
// Calls EndShapeStep first. If there is no such step, returns false and changes nothing. Throws
// std::bad_alloc if memory runs out; the shape is then unchanged.
bool UndoShapeStep();
bool RedoShapeStep();

}  // namespace boreforge
