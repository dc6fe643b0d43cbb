// The canvas's picture: an image in device pixels for a drawing in logical ones.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QSize>

#include <vector>

#include "base/Values.h"
#include "editor/ShapeDrawing.h"

namespace boreforge {

// A surface for DrawTunnelShape. The painter is at work as long as the surface lives; positions are logical
// pixels and may lie anywhere, far outside or at no number at all.
//
// Dots and lines share one raster: a position is rounded to a device pixel, and a line of an even thickness,
// which has no pixel in its middle, meets dots of an even width. At one device pixel per logical one only
// dots are rounded; the ends of lines are left to the painter.
class ImageSurface {
  public:
    // Draws into `image`, which gets the size and the density asked for; an empty size gives a null image on
    // which drawing does nothing.
    ImageSurface(QImage& image, QSize logicalSize, double devicePixelRatio);

    void Clear();
    int Width() const { return size_.width(); }
    int Height() const { return size_.height(); }
    void SetPenWidth(int pixels) { penWidth_ = pixels; }
    void Dot(CanvasPoint center, const ColorRGB& color);
    void Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color);

  private:
    // A finished dot, made once: a shape has hundreds of the same.
    struct DotStamp {
        int width;
        ColorRGB color;
        QImage image;
    };
    // The dot of this colour, as wide as the pen.
    const QImage& StampOf(const ColorRGB& color);
    QPointF OnRaster(CanvasPoint position) const;
    // The end of a line, in device pixels.
    QPointF LineEnd(CanvasPoint position) const;
    // A pen's width in device pixels, the same for all lines.
    int LineThickness(int penWidth) const;

    QSize size_;
    double density_;
    int penWidth_ = 1;
    std::vector<DotStamp> stamps_;
    QPainter painter_;
};

}  // namespace boreforge
