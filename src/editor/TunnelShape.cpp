#include "editor/TunnelShape.h"

#include <cstddef>
#include <span>

namespace boreforge {

TunnelShapeState TunnelShape;

namespace {

struct PresetNode {
    Vector3D inside, outside;
};

// Both wind counter-clockwise, with the floor one unit below the track and the roof three above it.
constexpr PresetNode kBox[] = {
    {{2, -1, 0}, {2.5f, -1.5f, 0}},
    {{2, 3, 0}, {2.5f, 3.5f, 0}},
    {{-2, 3, 0}, {-2.5f, 3.5f, 0}},
    {{-2, -1, 0}, {-2.5f, -1.5f, 0}},
};
constexpr PresetNode kRounded[] = {
    {{2, 0, 0}, {2.5f, 0, 0}},     {{2, 2, 0}, {2.5f, 2, 0}},   {{1, 3, 0}, {1, 3.5f, 0}},
    {{-1, 3, 0}, {-1, 3.5f, 0}},   {{-2, 2, 0}, {-2.5f, 2, 0}}, {{-2, 0, 0}, {-2.5f, 0, 0}},
    {{-1, -1, 0}, {-1, -1.5f, 0}}, {{1, -1, 0}, {1, -1.5f, 0}},
};

std::span<const PresetNode> PresetNodes(std::int16_t preset) {
    if (preset == kPresetBox) return kBox;
    if (preset == kPresetRounded) return kRounded;
    return {};
}

float AwayFromAxis(float value) { return value < 0 ? value - 0.5f : value + 0.5f; }

Vector3D OutsideSeed(const Vector3D& node) { return {AwayFromAxis(node.x), AwayFromAxis(node.y), node.z}; }

bool IsNode(std::int32_t index) { return index >= 0 && index < TunnelShape.NodeCount(); }

// Allocates before anything changes: the two contours must stay equally long even if memory runs out.
void MakeRoomForNode() {
    const std::size_t count = TunnelShape.InsideNodes.size();
    if (count < TunnelShape.InsideNodes.capacity() && count < TunnelShape.OutsideNodes.capacity()) return;
    TunnelShape.InsideNodes.reserve(2 * count + 1);
    TunnelShape.OutsideNodes.reserve(2 * count + 1);
}

template <class Change>
void ForEachPoint(Change change) {
    for (Vector3D& point : TunnelShape.InsideNodes)
        change(point);
    for (Vector3D& point : TunnelShape.OutsideNodes)
        change(point);
}

}  // namespace

void ResetTunnelShape() {
    TunnelShapeState fresh;
    fresh.SelectedIsOutside = TunnelShape.SelectedIsOutside;
    TunnelShape = fresh;
}

void AddShapeNode(Vector3D node) {
    MakeRoomForNode();
    TunnelShape.InsideNodes.push_back(node);
    TunnelShape.OutsideNodes.push_back(OutsideSeed(node));
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
    TunnelShape.OutsideNodes.insert(TunnelShape.OutsideNodes.begin() + index + 1, OutsideSeed(node));
}

void MirrorTunnelShape() {
    ForEachPoint([](Vector3D& point) { point.x = -point.x; });
}

void FlipTunnelShape() {
    ForEachPoint([](Vector3D& point) { point.y = -point.y; });
}

void MakePresetShape(std::int16_t preset) {
    ResetTunnelShape();
    for (const PresetNode& node : PresetNodes(preset)) {
        AddShapeNode(node.inside);
        TunnelShape.OutsideNodes.back() = node.outside;
    }
}

}  // namespace boreforge
