// From triangles to samples: which samples a triangle covers, and the nearest surface along one direction.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "export3ds/Read3DSObject.h"
#include "picture_vector.h"

namespace boreforge {

// A place in a raster, in samples from its top left corner. `w` is the larger the nearer the point is, and
// linear over a triangle: the height along a direction of view, or 1 / distance in perspective.
struct RasterPoint {
    double x = 0, y = 0, w = 0;
};

// The window of a raster that is drawn: all columns of the rows from `top` on.
struct RasterWindow {
    int columns = 0;
    int top = 0, rows = 0;
};

// Calls `span(row, first, last, w, slope)` for each row of the window in which the triangle covers the
// centres of the columns from `first` to `last`; w holds at `first` and grows by `slope` from column to
// column. Centres on an edge belong to the triangles on both of its sides, which leaves no gap between them:
// the crossing of a row with an edge is the same number from either side.
template <class Span>
void ForEachSpan(const RasterPoint& a, const RasterPoint& b, const RasterPoint& c, const RasterWindow& window,
                 Span span) {
    const double low = std::min({a.y, b.y, c.y}) - 0.5, high = std::max({a.y, b.y, c.y}) - 0.5;
    const double left = std::min({a.x, b.x, c.x}) - 0.5, right = std::max({a.x, b.x, c.x}) - 0.5;
    const double firstRow = std::max(std::ceil(low), double(window.top));
    const double lastRow = std::min(std::floor(high), double(window.top + window.rows - 1));
    const double leftmost = std::max(std::ceil(left), 0.0);
    const double rightmost = std::min(std::floor(right), double(window.columns - 1));
    if (!(firstRow <= lastRow && leftmost <= rightmost)) return;
    const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (area == 0) return;
    const double slope = ((b.w - a.w) * (c.y - a.y) - (c.w - a.w) * (b.y - a.y)) / area;
    const double fall = ((c.w - a.w) * (b.x - a.x) - (b.w - a.w) * (c.x - a.x)) / area;
    const std::array<std::array<const RasterPoint*, 2>, 3> edges{{{&a, &b}, {&b, &c}, {&c, &a}}};
    for (int row = static_cast<int>(firstRow); row <= static_cast<int>(lastRow); ++row) {
        const double y = row + 0.5;
        double from = rightmost + 1, to = leftmost - 1;  // the hull of the crossings with the edges
        for (const auto& [p, q] : edges) {
            const RasterPoint& upper = p->y < q->y ? *p : *q;
            const RasterPoint& lower = p->y < q->y ? *q : *p;
            if (upper.y > y || lower.y < y || upper.y == lower.y) continue;
            const double x = upper.x + (lower.x - upper.x) * ((y - upper.y) / (lower.y - upper.y)) - 0.5;
            from = std::min(from, std::ceil(x));
            to = std::max(to, std::floor(x));
        }
        from = std::max(from, leftmost);
        to = std::min(to, rightmost);
        if (from > to) continue;
        span(row, static_cast<int>(from), static_cast<int>(to),
             a.w + slope * (from + 0.5 - a.x) + fall * (y - a.y), slope);
    }
}

// How far the object reaches towards a direction, seen along it and without perspective. From the sun's
// direction it tells light from shadow; from above and below, what has the object over and under it.
class ReachMap {
  public:
    // `direction` has the length 1. The map has kSize samples along the longer side of the object.
    ReachMap(const Object3DS& object, const Vec& direction);

    // How far the point itself is along the direction.
    double Of(const Vec& point) const { return Dot(point, direction_); }
    // How far the object is in the column of the point; kNothing where it isn't in it.
    double At(const Vec& point) const;
    // The share, 0 to 1, of the columns around the point that don't reach beyond it by more than `slack`.
    double Free(const Vec& point, double slack) const;
    // The width of a column in units.
    double ColumnWidth() const { return 1 / scale_; }

    static constexpr float kNothing = -std::numeric_limits<float>::infinity();

  private:
    static constexpr int kSize = 4096;

    RasterPoint Place(const Vec& point) const;
    float Column(int x, int y) const;

    Vec direction_, right_, down_;
    double left_ = 0, top_ = 0, scale_ = 1;
    int columns_ = 0, rows_ = 0;
    std::vector<float> reach_;
};

}  // namespace boreforge
