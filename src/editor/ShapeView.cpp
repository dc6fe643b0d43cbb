#include "editor/ShapeView.h"

#include <algorithm>
#include <cmath>

#include "editor/TunnelShape.h"

namespace boreforge {

ShapeViewState ShapeView;

namespace {
constexpr float kPanUnits = 20;
}

void UpdateViewOrigin(int canvasWidth, int canvasHeight) {
    ShapeView.ViewOriginX = static_cast<float>(std::floor(canvasWidth * 0.5) + ShapeView.PanX);
    ShapeView.ViewOriginY = static_cast<float>(std::floor(canvasHeight * 0.5) + ShapeView.PanY);
}

void ClampPan() {
    const float limit = TunnelShape.ZoomScale * kPanUnits;
    ShapeView.PanX = std::clamp(ShapeView.PanX, -limit, limit);
    ShapeView.PanY = std::clamp(ShapeView.PanY, -limit, limit);
}

Vector3D ShapePositionAt(float canvasX, float canvasY) {
    const double zoom = TunnelShape.ZoomScale;
    return {static_cast<float>((double(canvasX) - ShapeView.ViewOriginX) / zoom),
            static_cast<float>(-(double(canvasY) - ShapeView.ViewOriginY) / zoom), 0};
}

int NodeDotSize() { return std::max(3, static_cast<int>(std::floor(TunnelShape.ZoomScale / 3)) - 1); }

}  // namespace boreforge
