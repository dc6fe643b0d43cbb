#include "view/TrackPath.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "shared/ObjectSurfaces.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

namespace {

constexpr std::size_t kShortest = 8;  // points; shorter covered stretches and shorter gaps don't count

Vec ColumnOf(const Matrix3D& matrix, int column) {
    return {matrix[column], matrix[4 + column], matrix[8 + column]};
}

// The faces of an object, sorted into square cells seen from above. The cells are larger if the faces would
// fill too many of them.
class FaceGrid {
  public:
    explicit FaceGrid(const Object3DS& object) : object_(object), bounds_(BoundsOf(object)) {
        const double extent =
            std::max(double(bounds_.high.x) - bounds_.low.x, double(bounds_.high.z) - bounds_.low.z);
        cell_ = std::max(extent / kCells, 1e-3);
        while (!Fill(1'000'000 + 16 * object.faces.size()))
            cell_ *= 2;
    }

    // The lowest and the highest surface straight above or below a point; infinity and minus infinity if
    // there is none.
    std::pair<double, double> SurfacesAt(const Vec& point) const {
        double low = std::numeric_limits<double>::infinity(), high = -low;
        for (const std::uint32_t face : cells_[CellAt(point.x, point.z)]) {
            const std::optional<double> height = HeightOf(object_.faces[face], point);
            low = std::min(low, height.value_or(low));
            high = std::max(high, height.value_or(high));
        }
        return {low, high};
    }

  private:
    static constexpr std::size_t kCells = 512;  // along each side
    static constexpr std::size_t kMaxFacesPerCell =
        10'000;  // faces that a cell keeps; tunnels have hundreds in each

    std::size_t Along(double at, double from) const {
        return static_cast<std::size_t>(std::clamp((at - from) / cell_, 0.0, double(kCells - 1)));
    }

    std::size_t CellAt(double x, double z) const {
        return Along(z, bounds_.low.z) * kCells + Along(x, bounds_.low.x);
    }

    // Enters each face in the cells that it may touch. False if that takes more than `most` entries.
    bool Fill(std::size_t most) {
        cells_.assign(kCells * kCells, {});
        for (std::uint32_t i = 0; i < object_.faces.size(); ++i) {
            const ObjectFace& face = object_.faces[i];
            const Vector3D &a = object_.points[face.a], &b = object_.points[face.b],
                           &c = object_.points[face.c];
            const auto [left, right] = std::minmax({a.x, b.x, c.x});
            const auto [back, front] = std::minmax({a.z, b.z, c.z});
            const std::size_t width = CellAt(right, back) - CellAt(left, back);
            for (std::size_t row = CellAt(left, back); row <= CellAt(left, front); row += kCells)
                for (std::size_t cell = row; cell <= row + width; ++cell) {
                    if (most-- == 0) return false;
                    if (cells_[cell].size() < kMaxFacesPerCell) cells_[cell].push_back(i);
                }
        }
        return true;
    }

    // The height of a face straight above or below a point.
    std::optional<double> HeightOf(const ObjectFace& face, const Vec& point) const {
        const Vec a = ToVec(object_.points[face.a]), b = ToVec(object_.points[face.b]),
                  c = ToVec(object_.points[face.c]);
        const auto area = [](const Vec& p, const Vec& q, const Vec& r) {
            return (q.x - p.x) * (r.z - p.z) - (q.z - p.z) * (r.x - p.x);
        };
        const double whole = area(a, b, c);
        if (whole == 0) return std::nullopt;
        const double ofA = area(point, b, c) / whole, ofB = area(a, point, c) / whole, ofC = 1 - ofA - ofB;
        if (!(std::min({ofA, ofB, ofC}) >= 0)) return std::nullopt;
        return ofA * a.y + ofB * b.y + ofC * c.y;
    }

    const Object3DS& object_;
    ObjectBounds bounds_;
    double cell_ = 1;
    std::vector<std::vector<std::uint32_t>> cells_;  // the faces in each
};

// Where to start looking for stretches: after a gap of at least kShortest points, so that none is split; 0 if
// there is no such gap.
std::size_t EndOfGap(const TrackPath& path) {
    std::size_t gap = 0;
    for (std::size_t i = 0; i < 2 * path.size(); ++i) {
        gap = PointOf(path, i).isCovered ? 0 : gap + 1;
        if (gap == kShortest) return (i + 1) % path.size();
    }
    return 0;
}

}  // namespace

TrackPath PathOfTrace() {
    TrackPath path;
    for (const TracedSegment& segment : TracedSegments)
        for (const TraceSample& sample : segment.Samples) {
            const Matrix3D& frame = sample.WorldMatrix;
            path.push_back(
                {ColumnOf(frame, 3), ColumnOf(frame, 0), ColumnOf(frame, 1), ColumnOf(frame, 2) * -1});
        }
    return path;
}

void FindCover(TrackPath& path, const Object3DS& object) {
    if (object.faces.empty()) return;
    const FaceGrid grid(object);
    for (PathPoint& point : path) {
        const auto [low, high] = grid.SurfacesAt(point.position);
        point.roof = high - point.position.y;
        point.isCovered = point.roof > 0 && low < point.position.y;
    }
}

std::vector<CoveredStretch> CoveredStretches(const TrackPath& path) {
    std::vector<CoveredStretch> stretches;
    const std::size_t start = EndOfGap(path);
    std::size_t gap = kShortest;  // points since the last covered one
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathPoint& point = PointOf(path, start + i);
        if (!point.isCovered) {
            ++gap;
            continue;
        }
        if (gap >= kShortest) stretches.push_back({.first = start + i, .roof = point.roof});
        CoveredStretch& stretch = stretches.back();
        stretch.count = start + i + 1 - stretch.first;
        stretch.roof = std::min(stretch.roof, point.roof);
        gap = 0;
    }
    std::erase_if(stretches, [](const CoveredStretch& stretch) { return stretch.count < kShortest; });
    return stretches;
}

Surroundings SurroundingsOf(const Object3DS& object, const TrackPath& path) {
    constexpr double kUnderTrack = 0.5;
    const ObjectBounds bounds = BoundsOf(object);
    Vec low = ToVec(bounds.low), high = ToVec(bounds.high);
    double ground = low.y;
    for (const PathPoint& point : path) {
        const Vec& p = point.position;
        ground = std::min(ground, p.y - kUnderTrack);
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return {(low + high) * 0.5, std::max(1.0, Length(high - low) / 2), ground};
}

double DistanceToNearest(const Vec& eye, const Object3DS& object, const TrackPath& path) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const Vector3D& point : object.points)
        nearest = std::min(nearest, Length(ToVec(point) - eye));
    for (const PathPoint& point : path)
        nearest = std::min(nearest, Length(point.position - eye));
    return std::isfinite(nearest) ? nearest : 1;
}

}  // namespace boreforge
