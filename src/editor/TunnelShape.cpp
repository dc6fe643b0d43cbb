#include "editor/TunnelShape.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "editor/TunnelShapeFile.h"

namespace boreforge {

TunnelShapeState TunnelShape;

namespace {

float AwayFromAxis(float value) { return value < 0 ? value - 0.5f : value + 0.5f; }

Vector3D DefaultOutsidePoint(const Vector3D& node) {
    return {AwayFromAxis(node.x), AwayFromAxis(node.y), node.z};
}

bool IsNode(std::int32_t index) { return index >= 0 && index < TunnelShape.NodeCount(); }

// Allocates before anything changes: the two contours must stay equally long even if memory runs out.
void MakeRoomForNode() {
    const std::size_t count = TunnelShape.InsideNodes.size();
    if (count < TunnelShape.InsideNodes.capacity() && count < TunnelShape.OutsideNodes.capacity()) return;
    TunnelShape.InsideNodes.reserve(2 * count + 1);
    TunnelShape.OutsideNodes.reserve(2 * count + 1);
}

// In the plane of the shape.
struct Direction {
    double x = 0, y = 0;
};

// The unit vector from a node to the next one at another position; `step` is 1 forward and the number of
// nodes less 1 backward. There must be such a node.
Direction DirectionFrom(const std::vector<Vector3D>& contour, std::size_t node, std::size_t step) {
    double x = 0, y = 0;
    for (std::size_t next = node; x == 0 && y == 0;) {
        next = (next + step) % contour.size();
        x = double(contour[next].x) - contour[node].x;
        y = double(contour[next].y) - contour[node].y;
    }
    const double length = std::hypot(x, y);
    return {x / length, y / length};
}

// From a node to its partner in a wall of thickness 1, away from the enclosed side.
Direction MitreAt(const std::vector<Vector3D>& contour, std::size_t node, bool counterClockwise) {
    constexpr double kMaxLength = 3, kSpikeTolerance = 1e-9;
    const Direction back = DirectionFrom(contour, node, contour.size() - 1);
    const Direction ahead = DirectionFrom(contour, node, 1);
    // The sum of the unit normals of both edges, to the right of the direction of travel.
    const double side = counterClockwise ? 1 : -1;
    const double x = side * (ahead.y - back.y), y = side * (back.x - ahead.x);
    const double sum = std::hypot(x, y);
    if (sum < kSpikeTolerance) return {-kMaxLength * back.x, -kMaxLength * back.y};  // the tip of a spike
    const double length = std::min(2 / sum, kMaxLength);
    return {x / sum * length, y / sum * length};
}

template <class Change>
void ForEachPoint(Change change) {
    for (Vector3D& point : TunnelShape.InsideNodes)
        change(point);
    for (Vector3D& point : TunnelShape.OutsideNodes)
        change(point);
}

}  // namespace

bool IsFinite(const std::vector<Vector3D>& contour) {
    return std::ranges::all_of(contour, [](const Vector3D& point) { return IsFinite(point); });
}

double TwiceAreaOf(const std::vector<Vector3D>& contour) {
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vector3D &origin = contour[0], &a = contour[i], &b = contour[(i + 1) % contour.size()];
        area += (double(a.x) - origin.x) * (double(b.y) - origin.y) -
                (double(b.x) - origin.x) * (double(a.y) - origin.y);
    }
    return area;
}

void ResetTunnelShape() {
    TunnelShapeState fresh;
    fresh.SelectedIsOutside = TunnelShape.SelectedIsOutside;
    TunnelShape = fresh;
}

void AddShapeNode(Vector3D node) {
    MakeRoomForNode();
    TunnelShape.InsideNodes.push_back(node);
    TunnelShape.OutsideNodes.push_back(DefaultOutsidePoint(node));
}

void DeleteShapeNode(std::int32_t index) {
    if (!IsNode(index)) return;
    TunnelShape.InsideNodes.erase(TunnelShape.InsideNodes.begin() + index);
    TunnelShape.OutsideNodes.erase(TunnelShape.OutsideNodes.begin() + index);
}

void InsertShapeNode(std::int32_t index, Vector3D node) {
    if (!IsNode(index)) return;
    MakeRoomForNode();
    TunnelShape.InsideNodes.insert(TunnelShape.InsideNodes.begin() + index + 1, node);
    TunnelShape.OutsideNodes.insert(TunnelShape.OutsideNodes.begin() + index + 1, DefaultOutsidePoint(node));
}

void MirrorTunnelShape() {
    ForEachPoint([](Vector3D& point) { point.x = -point.x; });
}

void FlipTunnelShape() {
    ForEachPoint([](Vector3D& point) { point.y = -point.y; });
}

void ReverseTunnelShape() {
    if (TunnelShape.NodeCount() == 0) return;
    std::reverse(TunnelShape.InsideNodes.begin() + 1, TunnelShape.InsideNodes.end());
    std::reverse(TunnelShape.OutsideNodes.begin() + 1, TunnelShape.OutsideNodes.end());
    if (TunnelShape.SelectedNode > 0)
        TunnelShape.SelectedNode = TunnelShape.NodeCount() - TunnelShape.SelectedNode;
}

bool MakeWallEven(double thickness) {
    const std::vector<Vector3D>& inside = TunnelShape.InsideNodes;
    const double area = TwiceAreaOf(inside);
    if (inside.size() < 3 || area == 0 || !std::isfinite(area)) return false;
    std::vector<Vector3D> outside;
    outside.reserve(inside.size());
    for (std::size_t node = 0; node < inside.size(); ++node) {
        const Direction mitre = MitreAt(inside, node, area > 0);
        outside.push_back({static_cast<float>(inside[node].x + thickness * mitre.x),
                           static_cast<float>(inside[node].y + thickness * mitre.y), inside[node].z});
    }
    if (!IsFinite(outside)) return false;
    TunnelShape.OutsideNodes = std::move(outside);
    return true;
}

void MakePresetShape(std::int16_t preset) {
    LoadSampleShape(preset == kPresetBox ? "box" : preset == kPresetRounded ? "rounded" : "");
}

}  // namespace boreforge
