// Draws the canvas, laid out in logical pixels, into an image of device pixels.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QSize>

#include "base/Values.h"
#include "editor/ShapeDrawing.h"

namespace boreforge {

// A surface for DrawTunnelShape. It paints on the image for as long as it exists. Positions are in logical
// pixels and may be far outside the image or NaN.
//
// Dots are centred on lines: positions are rounded to device pixels, and where a line is an odd number of
// pixels wide, dots are centred on a pixel. At one device pixel per logical pixel only dots are rounded;
// QPainter places the ends of lines.
class ImageSurface {
  public:
    // Draws into `image`, which is resized to this size and density. With an empty size it becomes a null
    // image, and drawing does nothing.
    ImageSurface(QImage& image, QSize logicalSize, double devicePixelRatio);

    void Clear();
    int Width() const { return size_.width(); }
    int Height() const { return size_.height(); }
    void SetPenWidth(int pixels) { penWidth_ = pixels; }
    void Dot(CanvasPoint center, const ColorRGB& color);
    void Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color);

  private:
    void DrawParallelLines(QPointF from, QPointF to, const ColorRGB& color);

    QPointF ToDevicePixel(CanvasPoint position) const;
    // The end of a line, in device pixels.
    QPointF LineEndOnDevice(CanvasPoint position) const;
    // A pen's width in device pixels, at least 1.
    int LineThickness(int penWidth) const;

    QSize size_;
    double density_;
    int penWidth_ = 1;
    QPainter painter_;
};

}  // namespace boreforge
