#include "editor/ImageSurface.h"

#include <QPen>
#include <QPointF>

#include <cmath>

#include "dialogs/QtColor.h"

namespace boreforge {

namespace {

// Cuts the part of a line outside low..high in one coordinate off, by moving the ends of the interval t0..t1
// along it. False when nothing is left.
bool CutInterval(double from, double delta, double low, double high, double& t0, double& t1) {
    if (delta == 0) return from >= low && from <= high;
    double enter = (low - from) / delta, leave = (high - from) / delta;
    if (enter > leave) std::swap(enter, leave);
    t0 = std::fmax(t0, enter);
    t1 = std::fmin(t1, leave);
    return t0 <= t1;
}

}  // namespace

ImageSurface::ImageSurface(QImage& image, QSize logicalSize, double devicePixelRatio)
    : size_(logicalSize), density_(devicePixelRatio) {
    const QSize device(static_cast<int>(std::ceil(logicalSize.width() * devicePixelRatio)),
                       static_cast<int>(std::ceil(logicalSize.height() * devicePixelRatio)));
    if (image.size() != device) image = device.isEmpty() ? QImage() : QImage(device, QImage::Format_RGB32);
    if (image.isNull()) return;
    image.setDevicePixelRatio(devicePixelRatio);
    painter_.begin(&image);
}

void ImageSurface::Clear() {
    if (painter_.isActive()) painter_.fillRect(QRect(QPoint(0, 0), size_ + QSize(1, 1)), Qt::black);
}

const QImage& ImageSurface::StampOf(const ColorRGB& color) {
    for (const DotStamp& stamp : stamps_)
        if (stamp.width == penWidth_ && stamp.color == color) return stamp.image;
    const double width = penWidth_ * density_;
    const int side = 2 * static_cast<int>(std::ceil(width / 2)) + 1;  // odd, so that its middle is a pixel
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ToQColor(color));
    painter.drawEllipse(QPointF(side / 2.0, side / 2.0), width / 2, width / 2);
    painter.end();
    image.setDevicePixelRatio(density_);
    stamps_.push_back({penWidth_, color, image});
    return stamps_.back().image;
}

void ImageSurface::Dot(CanvasPoint center, const ColorRGB& color) {
    const double reach = penWidth_;
    const bool visible =
        center.x > -reach && center.x < Width() + reach && center.y > -reach && center.y < Height() + reach;
    if (!painter_.isActive() || !visible) return;
    const QImage& stamp = StampOf(color);
    const int half = stamp.width() / 2;
    const auto onPixel = [&](float at) { return (std::round(at * density_) - half) / density_; };
    painter_.drawImage(QPointF(onPixel(center.x), onPixel(center.y)), stamp);
}

void ImageSurface::Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color) {
    if (!painter_.isActive()) return;
    const double dx = double(to.x) - from.x, dy = double(to.y) - from.y;
    if (!std::isfinite(dx) || !std::isfinite(dy)) return;
    // Cut to the canvas and a margin: the painter's own arithmetic is not made for far-off ends.
    constexpr double kMargin = 2;
    double t0 = 0, t1 = 1;
    if (!CutInterval(from.x, dx, -kMargin, Width() + kMargin, t0, t1) ||
        !CutInterval(from.y, dy, -kMargin, Height() + kMargin, t0, t1))
        return;
    painter_.setPen(QPen(ToQColor(color), penWidth_, Qt::SolidLine, Qt::SquareCap));
    painter_.drawLine(QPointF(from.x + t0 * dx, from.y + t0 * dy),
                      QPointF(from.x + t1 * dx, from.y + t1 * dy));
}

}  // namespace boreforge
