#include "picture_path.h"

#include <algorithm>

#include "picture_raster.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

namespace {

constexpr std::size_t kShortest = 8;  // points; a covered stretch or a gap in one that is shorter is none

Vec ColumnOf(const Matrix3D& matrix, int column) {
    return {matrix[column], matrix[4 + column], matrix[8 + column]};
}

// The first point of a path that is not covered while the one before it is, or 0.
std::size_t EndOfCover(const TrackPath& path) {
    for (std::size_t i = 0; i < path.size(); ++i)
        if (!path[i].Covered && path[i == 0 ? path.size() - 1 : i - 1].Covered) return i;
    return 0;
}

// Something else may be above a few of the points: the median is the roof of the tunnel itself.
double MedianRoof(const TrackPath& path, const CoveredStretch& stretch) {
    std::vector<double> roofs;
    for (std::size_t i = stretch.first; i < stretch.first + stretch.count; ++i)
        if (path[i % path.size()].Covered) roofs.push_back(path[i % path.size()].Roof);
    const auto middle = roofs.begin() + static_cast<std::ptrdiff_t>(roofs.size() / 2);
    std::nth_element(roofs.begin(), middle, roofs.end());
    return *middle;
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
    const ReachMap above(object, kUp), below(object, kUp * -1);
    for (PathPoint& point : path) {
        point.Roof = above.At(point.Position) - above.Of(point.Position);
        point.Covered = point.Roof > 0 && below.At(point.Position) > below.Of(point.Position);
    }
}

std::vector<CoveredStretch> CoveredStretches(const TrackPath& path) {
    std::vector<CoveredStretch> stretches;
    const std::size_t start = EndOfCover(path);
    std::size_t gap = kShortest;  // points since the last covered one
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (!path[(start + i) % path.size()].Covered) {
            ++gap;
            continue;
        }
        if (gap >= kShortest) stretches.push_back({start + i});
        stretches.back().count = start + i + 1 - stretches.back().first;
        gap = 0;
    }
    std::erase_if(stretches, [](const CoveredStretch& stretch) { return stretch.count < kShortest; });
    for (CoveredStretch& stretch : stretches)
        stretch.roof = MedianRoof(path, stretch);
    return stretches;
}

std::vector<Vec> PortalsOf(const TrackPath& path) {
    std::vector<Vec> portals;
    for (const CoveredStretch& stretch : CoveredStretches(path))
        for (const std::size_t end : {stretch.first, stretch.first + stretch.count - 1})
            portals.push_back(path[end % path.size()].Position);
    return portals;
}

std::vector<RailPiece> RailsOf(const TrackPath& path) {
    // Half measures, and how deep the middles lie under the path.
    constexpr double kGauge = 0.5, kRailWidth = 0.06, kRailHeight = 0.06;
    constexpr double kTie = 0.75, kTieWidth = 0.13, kTieHeight = 0.06,
                     kTieDepth = 2 * kRailHeight + kTieHeight;
    constexpr std::size_t kPointsOfTie = 3;
    std::vector<RailPiece> pieces;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathPoint& here = path[i];
        const PathPoint& next = path[i + 1 < path.size() ? i + 1 : 0];
        const auto railAt = [&](const PathPoint& point, double side) {
            return point.Position + point.Right * side - point.Up * kRailHeight;
        };
        for (const double side : {-kGauge, kGauge})
            pieces.push_back(
                {railAt(here, side), railAt(next, side), here.Right * kRailWidth, here.Up * kRailHeight});
        if (i % kPointsOfTie != 0) continue;
        const Vec middle = here.Position - here.Up * kTieDepth;
        pieces.push_back({middle - here.Right * kTie, middle + here.Right * kTie, here.Forward * kTieWidth,
                          here.Up * kTieHeight, true});
    }
    return pieces;
}

}  // namespace boreforge
