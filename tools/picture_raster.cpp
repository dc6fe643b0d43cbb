#include "picture_raster.h"

#include <cstddef>
#include <limits>

namespace boreforge {

ReachMap::ReachMap(const Object3DS& object, const Vec& direction) : direction_(direction) {
    const bool upright = std::fabs(direction.y) > 0.99;
    right_ = Normalized(Cross(upright ? Vec{0, 0, -1} : kUp, direction));
    down_ = Cross(right_, direction);
    constexpr double kFar = std::numeric_limits<double>::infinity();
    double right = -kFar, bottom = -kFar;
    left_ = top_ = kFar;
    for (const Vector3D& point : object.Points) {
        const double x = Dot(ToVec(point), right_), y = Dot(ToVec(point), down_);
        left_ = std::min(left_, x);
        right = std::max(right, x);
        top_ = std::min(top_, y);
        bottom = std::max(bottom, y);
    }
    scale_ = kSize / std::max({right - left_, bottom - top_, 1e-3});
    columns_ = std::min(kSize, static_cast<int>((right - left_) * scale_) + 1);
    rows_ = std::min(kSize, static_cast<int>((bottom - top_) * scale_) + 1);
    reach_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_), kNothing);

    const auto place = [&](std::uint32_t index) { return Place(ToVec(object.Points[index])); };
    const RasterWindow all{columns_, 0, rows_};
    for (const ObjectFace& face : object.Faces)
        ForEachSpan(place(face.a), place(face.b), place(face.c), all,
                    [&](int row, int first, int last, double w, double slope) {
                        float* const line = &reach_[static_cast<std::size_t>(row) * columns_];
                        for (int x = first; x <= last; ++x, w += slope)
                            line[x] = std::max(line[x], static_cast<float>(w));
                    });
}

RasterPoint ReachMap::Place(const Vec& point) const {
    return {(Dot(point, right_) - left_) * scale_, (Dot(point, down_) - top_) * scale_, Of(point)};
}

float ReachMap::Column(int x, int y) const {
    if (x < 0 || y < 0 || x >= columns_ || y >= rows_) return kNothing;
    return reach_[static_cast<std::size_t>(y) * columns_ + static_cast<std::size_t>(x)];
}

double ReachMap::At(const Vec& point) const {
    const RasterPoint place = Place(point);
    if (!(std::fabs(place.x) < 1e6 && std::fabs(place.y) < 1e6)) return kNothing;
    return Column(static_cast<int>(std::floor(place.x)), static_cast<int>(std::floor(place.y)));
}

double ReachMap::Free(const Vec& point, double slack) const {
    const RasterPoint place = Place(point);
    if (!(std::fabs(place.x) < 1e6 && std::fabs(place.y) < 1e6)) return 1;
    // The columns that a square of three by three covers around the place, by how much of each it covers.
    constexpr int kWidth = 4;
    const double x = std::floor(place.x - 0.5), y = std::floor(place.y - 0.5);
    const double partX = place.x - 0.5 - x, partY = place.y - 0.5 - y;
    double free = 0;
    for (int down = 0; down < kWidth; ++down) {
        double line = 0;
        for (int right = 0; right < kWidth; ++right) {
            const double weight = right == 0 ? 1 - partX : right == kWidth - 1 ? partX : 1;
            const float reach = Column(static_cast<int>(x) + right - 1, static_cast<int>(y) + down - 1);
            if (reach <= place.w + slack) line += weight;
        }
        free += line * (down == 0 ? 1 - partY : down == kWidth - 1 ? partY : 1);
    }
    return free / ((kWidth - 1) * (kWidth - 1));
}

}  // namespace boreforge
