#include "editor/window/ShapeCanvas.h"

#include <QPainter>

#include "editor/ShapeInput.h"
#include "editor/window/ImageSurface.h"

namespace boreforge {

namespace {

// The shape, for screen readers: "4 nodes, nothing selected" or "inside point 3 of 8, x 2.0, y 3.5".
QString DescribeSelection() {
    if (TunnelShape.SelectedNode < 0)
        return QStringLiteral("%1 node%2, nothing selected")
            .arg(TunnelShape.NodeCount())
            .arg(TunnelShape.NodeCount() == 1 ? "" : "s");
    const auto node = static_cast<std::size_t>(TunnelShape.SelectedNode);
    const Vector3D& point =
        (TunnelShape.SelectedIsOutside ? TunnelShape.OutsideNodes : TunnelShape.InsideNodes)[node];
    return QStringLiteral("%1 point %2 of %3, x %4, y %5")
        .arg(TunnelShape.SelectedIsOutside ? "outside" : "inside")
        .arg(node + 1)
        .arg(TunnelShape.NodeCount())
        .arg(FormatPosition(point.x).c_str(), FormatPosition(point.y).c_str());
}

}  // namespace

ShapeCanvas::ShapeCanvas(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName("Tunnel Shape");
}

void ShapeCanvas::Redraw(ShownNodes shown) {
    shown_ = shown;
    ImageSurface surface(picture_, size(), devicePixelRatioF());
    DrawTunnelShape(surface, shown);
    Describe();
    update();
}

void ShapeCanvas::Describe() { setAccessibleDescription(DescribeSelection()); }

void ShapeCanvas::paintEvent(QPaintEvent*) {
    // The window has moved to a screen of another pixel density: draw for that one.
    if (!picture_.isNull() && picture_.devicePixelRatio() != devicePixelRatioF()) Redraw(shown_);
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.drawImage(QPointF(0, 0), picture_);
}

}  // namespace boreforge
