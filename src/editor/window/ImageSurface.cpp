#include "editor/window/ImageSurface.h"

#include <QPen>

#include <algorithm>
#include <cmath>

#include "dialogs/QtColor.h"

namespace boreforge {

namespace {

// Clips a line to low..high in one coordinate by narrowing t0..t1, the visible interval along it. False if
// nothing is left.
bool ClipInterval(double from, double delta, double low, double high, double& t0, double& t1) {
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
    painter_.scale(1 / devicePixelRatio, 1 / devicePixelRatio);  // everything below is in device pixels
}

void ImageSurface::Clear() {
    if (painter_.isActive())
        painter_.fillRect(0, 0, painter_.device()->width(), painter_.device()->height(), Qt::black);
}

QPointF ImageSurface::ToDevicePixel(CanvasPoint position) const {
    return {std::round(position.x * density_), std::round(position.y * density_)};
}

int ImageSurface::LineThickness(int penWidth) const {
    return std::max(1, static_cast<int>(std::lround(penWidth * density_)));
}

QPointF ImageSurface::LineEndOnDevice(CanvasPoint position) const {
    return density_ == 1 ? QPointF(position.x, position.y) : ToDevicePixel(position);
}

void ImageSurface::Dot(CanvasPoint center, const ColorRGB& color) {
    const double reach = penWidth_;
    const bool visible =
        center.x > -reach && center.x < Width() + reach && center.y > -reach && center.y < Height() + reach;
    if (!painter_.isActive() || !visible) return;
    const double radius = penWidth_ * density_ / 2;
    const double middle = LineThickness(1) % 2 / 2.0;  // dots are centred on a pixel if lines are
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ToQColor(color));
    painter_.drawEllipse(ToDevicePixel(center) + QPointF(middle, middle), radius, radius);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void ImageSurface::Line(CanvasPoint from, CanvasPoint to, const ColorRGB& color) {
    if (!painter_.isActive()) return;
    const QPointF start = LineEndOnDevice(from);
    const QPointF delta = LineEndOnDevice(to) - start;
    if (!std::isfinite(delta.x()) || !std::isfinite(delta.y())) return;
    // Clip to the canvas and a margin: QPainter's own arithmetic can't cope with ends far outside.
    constexpr double kMargin = 2;
    double t0 = 0, t1 = 1;
    if (!ClipInterval(start.x(), delta.x(), -kMargin, Width() * density_ + kMargin, t0, t1) ||
        !ClipInterval(start.y(), delta.y(), -kMargin, Height() * density_ + kMargin, t0, t1))
        return;
    DrawParallelLines(start + t0 * delta, start + t1 * delta, color);
}

// A thick line as thin ones side by side: QPainter's own would vary in thickness along a slope. At a density
// of 1 a line is one pixel wide and is drawn as it is.
void ImageSurface::DrawParallelLines(QPointF from, QPointF to, const ColorRGB& color) {
    const int thickness = LineThickness(penWidth_);
    painter_.setPen(QPen(ToQColor(color), density_ == 1 ? thickness : 1, Qt::SolidLine, Qt::SquareCap));
    const QPointF delta = to - from;
    const bool flat = std::fabs(delta.x()) > std::fabs(delta.y());
    const double length = flat ? std::fabs(delta.x()) : std::fabs(delta.y());
    // Strands are side by side along an axis, so a slope needs more of them.
    const double slope = length > 0 ? std::hypot(delta.x(), delta.y()) / length : 1;
    const int strands = density_ == 1 ? 1 : static_cast<int>(std::lround(thickness * slope));
    const double half = (strands - 1) / 2.0;
    // Square ends: longer by half the thickness.
    const QPointF reach = length > 0 ? delta * ((thickness - 1) / 2.0 / length) : QPointF();
    for (int i = 0; i < strands; ++i) {
        const QPointF aside = flat ? QPointF(0, i - half) : QPointF(i - half, 0);
        painter_.drawLine(from - reach + aside, to + reach + aside);
    }
}

}  // namespace boreforge
