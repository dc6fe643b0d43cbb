// The canvas's picture: an image in device pixels that is drawn on in logical ones.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>

#include "base/Values.h"
#include "editor/ShapeDrawing.h"

namespace boreforge {

// A surface for DrawTunnelShape. The painter is at work as long as the surface lives; positions are logical
// pixels and may lie anywhere, far outside or at no number at all.
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
    QSize size_;
    int penWidth_ = 1;
    QPainter painter_;
};

}  // namespace boreforge
