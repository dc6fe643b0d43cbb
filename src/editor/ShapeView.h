// Where the shape is drawn on the canvas. Canvas positions are in pixels, y downward.
#pragma once

#include "tracing/mMath3D.h"

namespace boreforge {

struct ShapeViewState {
    float PanX = 0, PanY = 0;                // the origin's offset from the canvas's centre
    float ViewOriginX = 0, ViewOriginY = 0;  // where the shape position (0, 0) is drawn
};

// The one view. Its scale is the shape's ZoomScale.
extern ShapeViewState ShapeView;

inline constexpr float kMinZoom = 10;
inline constexpr float kMaxZoom = 200;
inline constexpr float kZoomStep = 10;

// Recomputes the view origin from the canvas's size in pixels and the pan.
void UpdateViewOrigin(int canvasWidth, int canvasHeight);

// Limits the pan to 20 shape units each way, at the current zoom. A reset of the shape doesn't call it: the
// view then stays until the next pan, zoom or resize.
void ClampPan();

// The shape position at a canvas position, with z 0 and without snapping.
Vector3D ShapePositionAt(float canvasX, float canvasY);

// The diameter of a node's dot, at least 3 pixels.
int NodeDotSize();

}  // namespace boreforge
