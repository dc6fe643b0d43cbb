#include "editor/ShapeHistory.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "editor/TunnelShape.h"

namespace boreforge {

ShapeHistoryState ShapeHistory;

namespace {

// A shape file may hold NaN, which doesn't equal itself.
bool SameCoordinate(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }

bool SamePoints(const std::vector<Vector3D>& a, const std::vector<Vector3D>& b) {
    return std::ranges::equal(a, b, [](const Vector3D& p, const Vector3D& q) {
        return SameCoordinate(p.x, q.x) && SameCoordinate(p.y, q.y) && SameCoordinate(p.z, q.z);
    });
}

// Restores the last step of `from` and appends the present shape to `to`.
bool Restore(std::deque<ShapeNodes>& from, std::deque<ShapeNodes>& to) {
    EndShapeStep();
    if (from.empty()) return false;
    ShapeNodes nodes = from.back();  // allocate first: a failure then changes nothing
    to.push_back(std::move(*ShapeHistory.present));
    ShapeHistory.present = std::move(from.back());
    from.pop_back();
    TunnelShape.InsideNodes = std::move(nodes.inside);
    TunnelShape.OutsideNodes = std::move(nodes.outside);
    TunnelShape.SelectedNode = -1;
    return true;
}

}  // namespace

void EndShapeStep() {
    ShapeNodes now{TunnelShape.InsideNodes, TunnelShape.OutsideNodes};  // allocate first, as above
    std::optional<ShapeNodes>& present = ShapeHistory.present;
    if (present && !(SamePoints(present->inside, now.inside) && SamePoints(present->outside, now.outside))) {
        ShapeHistory.undo.push_back(std::move(*present));
        ShapeHistory.redo.clear();
        if (ShapeHistory.undo.size() > kMaxUndoSteps) ShapeHistory.undo.pop_front();
    }
    present = std::move(now);
}

bool UndoShapeStep() { return Restore(ShapeHistory.undo, ShapeHistory.redo); }

bool RedoShapeStep() { return Restore(ShapeHistory.redo, ShapeHistory.undo); }

}  // namespace boreforge
