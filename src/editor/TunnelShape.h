// The tunnel's cross-section: two closed contours of nodes, an inside and an outside one. x points to the
// right, y up; one unit is one unit of the track, and the origin is on the track's path.
#pragma once

#include <cstdint>
#include <vector>

#include "base/Values.h"
#include "tracing/mMath3D.h"

namespace boreforge {

inline constexpr float kDefaultZoom = 50;

// A node is the pair of points of the same index; the last node connects to the first. Any number of nodes is
// valid, even 0. Contours aren't tested for crossings or winding.
struct TunnelShapeState {
    std::vector<Vector3D> InsideNodes;
    std::vector<Vector3D> OutsideNodes;  // as many as InsideNodes
    float ZoomScale = kDefaultZoom;      // canvas pixels for each shape unit
    std::int32_t SelectedNode = -1;      // -1: nothing is selected
    Truth SelectedIsOutside = kFalse;    // false: the selected node's inside point is meant
    std::int32_t NodeCount() const { return static_cast<std::int32_t>(InsideNodes.size()); }
};

// The one shape.
extern TunnelShapeState TunnelShape;

// Empties the shape, sets the zoom to its default and selects nothing. SelectedIsOutside stays.
void ResetTunnelShape();

// Appends a node. Its outside point is 0.5 farther from each axis; a coordinate of 0 counts as positive.
// `node` is taken by value, here and below, so that a point of the shape itself may be passed.
void AddShapeNode(Vector3D node);

// Removes a node. An index outside the shape is ignored.
void DeleteShapeNode(std::int32_t index);

// Inserts a node after node `index`, with the outside point that AddShapeNode would give it. An index outside
// the shape is ignored.
void InsertShapeNode(std::int32_t index, Vector3D node);

// Negates x (mirror) or y (flip) of every point; the order of the nodes stays, so the winding reverses.
void MirrorTunnelShape();
void FlipTunnelShape();

// Reverses the order of the nodes, and with it the winding. Node 0 stays node 0, and the selected point stays
// selected.
void ReverseTunnelShape();

// Whether all coordinates are finite.
bool IsFinite(const std::vector<Vector3D>& contour);

// Twice the area that a contour encloses, positive if it winds counter-clockwise. Relative to the first
// point, which keeps the rounding small.
double TwiceAreaOf(const std::vector<Vector3D>& contour);

// Sets the outside contour to the inside contour offset by `thickness`, with mitred corners, away from the
// enclosed side, whichever way the contour winds. A mitre is at most 3 times as long as the thickness.
// Returns false and changes nothing for a contour of fewer than three nodes, without an area, or with a
// coordinate that isn't finite.
bool MakeWallEven(double thickness);

// The ready-made shapes, which are sample shapes, too.
enum PresetShape : std::int16_t { kPresetBox = 0, kPresetRounded = 1 };

// Replaces the shape with a preset, or empties it if the number is unknown.
void MakePresetShape(std::int16_t preset);

}  // namespace boreforge
