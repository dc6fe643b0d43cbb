// Paints the whole canvas from scratch: grid, origin and the two contours of the shape.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Values.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"

namespace boreforge {

// A position on the canvas in pixels; it may be far outside.
struct CanvasPoint {
    float x = 0, y = 0;
};

// Which of the two contours show their nodes as dots. The lines are always drawn.
struct ShownNodes {
    bool inside = true;
    bool outside = true;
};

namespace drawing {

inline constexpr ColorRGB kOrigin{192, 192, 192};
inline constexpr ColorRGB kGrid{32, 32, 32}, kGridTenth{64, 64, 64};
inline constexpr ColorRGB kInsideNode{128, 128, 255}, kOutsideNode{128, 255, 255}, kSelectedNode{255, 255, 0};
inline constexpr ColorRGB kInsideEdge{0, 0, 255}, kOutsideEdge{0, 255, 255}, kSelectedEdge{255, 128, 0};
inline constexpr ColorRGB kSpoke{128, 128, 128}, kDimSpoke{64, 64, 64};

inline CanvasPoint OnCanvas(const Vector3D& point) {
    const double zoom = TunnelShape.ZoomScale;
    return {static_cast<float>(ShapeView.ViewOriginX + zoom * point.x),
            static_cast<float>(ShapeView.ViewOriginY - zoom * point.y)};
}

struct ContourColors {
    ColorRGB inside, outside;
};

// The colours of a node's two points, or of the two edges that start at it; the selected one gets `selected`.
inline ContourColors ColorsOf(std::int32_t node, ColorRGB inside, ColorRGB outside, ColorRGB selected) {
    if (node == TunnelShape.SelectedNode) (TunnelShape.SelectedIsOutside ? outside : inside) = selected;
    return {inside, outside};
}

// One line for each shape unit, up to 100 units each way; every tenth is brighter. The axes are drawn twice.
template <class Surface>
void DrawGrid(Surface& surface) {
    const auto width = static_cast<float>(surface.Width());
    const auto height = static_cast<float>(surface.Height());
    surface.SetPenWidth(1);
    for (int i = 0; i <= 100; ++i) {
        const ColorRGB color = i % 10 == 0 ? kGridTenth : kGrid;
        const auto unit = static_cast<float>(i);
        const CanvasPoint low = OnCanvas({-unit, unit, 0});
        const CanvasPoint high = OnCanvas({unit, -unit, 0});
        surface.Line({low.x, 0}, {low.x, height}, color);
        surface.Line({high.x, 0}, {high.x, height}, color);
        surface.Line({0, low.y}, {width, low.y}, color);
        surface.Line({0, high.y}, {width, high.y}, color);
    }
}

// The dots of a node and the spoke between them.
template <class Surface>
void DrawNode(Surface& surface, std::int32_t node, ShownNodes shown) {
    const CanvasPoint inside = OnCanvas(TunnelShape.InsideNodes[node]);
    const CanvasPoint outside = OnCanvas(TunnelShape.OutsideNodes[node]);
    const ContourColors colors = ColorsOf(node, kInsideNode, kOutsideNode, kSelectedNode);
    surface.SetPenWidth(NodeDotSize());
    if (shown.outside) surface.Dot(outside, colors.outside);
    if (shown.inside) surface.Dot(inside, colors.inside);
    surface.SetPenWidth(1);
    surface.Line(inside, outside, shown.inside && shown.outside ? kSpoke : kDimSpoke);
}

// The edges of both contours from one node to another, in the colours of node `from`.
template <class Surface>
void DrawEdges(Surface& surface, std::int32_t from, std::int32_t to) {
    const ContourColors colors = ColorsOf(from, kInsideEdge, kOutsideEdge, kSelectedEdge);
    surface.SetPenWidth(1);
    surface.Line(OnCanvas(TunnelShape.InsideNodes[from]), OnCanvas(TunnelShape.InsideNodes[to]),
                 colors.inside);
    surface.Line(OnCanvas(TunnelShape.OutsideNodes[from]), OnCanvas(TunnelShape.OutsideNodes[to]),
                 colors.outside);
}

}  // namespace drawing

// Repaints a canvas. A surface has Clear(), Width() and Height() in pixels, SetPenWidth(pixels), Line(from,
// to, colour) and Dot(position, colour), which is as wide as the pen. It clips, and later calls paint over
// earlier ones.
template <class Surface>
void DrawTunnelShape(Surface& surface, ShownNodes shown) {
    surface.Clear();
    surface.SetPenWidth(NodeDotSize());
    surface.Dot({ShapeView.ViewOriginX, ShapeView.ViewOriginY}, drawing::kOrigin);
    drawing::DrawGrid(surface);
    const std::int32_t count = TunnelShape.NodeCount();
    for (std::int32_t i = 0; i < count; ++i) {
        drawing::DrawNode(surface, i, shown);
        if (i > 0) drawing::DrawEdges(surface, i - 1, i);
    }
    if (count >= 2) drawing::DrawEdges(surface, count - 1, 0);
}

}  // namespace boreforge
