#include "picture_camera.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace boreforge {

namespace {

// Tangents of half the angle of view across the shorter side of the picture, by kind of view.
constexpr double kBirdsAngle = 0.27, kSideAngle = 0.3, kInsideAngle = 0.62;

PictureCamera LookAlong(const Vec& forward, const Vec& up, double angle, PictureSize size) {
    PictureCamera camera;
    camera.Size = size;
    camera.Forward = Normalized(forward);
    camera.Right = Normalized(Cross(camera.Forward, up), {1, 0, 0});
    camera.Up = Cross(camera.Right, camera.Forward);
    camera.Focal = 0.5 * std::min(size.Width, size.Height) / angle;
    return camera;
}

// The two sides of a frustum along one axis: how far the points reach over each, with sides that open by
// `slope` for a unit ahead.
struct Reach {
    double slope, high = -std::numeric_limits<double>::infinity(), low = high;
    void Add(double across, double ahead) {
        high = std::max(high, across - slope * ahead);
        low = std::max(low, -across - slope * ahead);
    }
    double Back() const { return -(high + low) / (2 * slope); }  // where both sides are just touched
    double Middle() const { return (high - low) / 2; }           // the margins at both sides are equal
};

// Moves the eye so that the points fill the picture up to a margin, with equal margins at opposite sides.
template <class Points, class ToPoint>
void Frame(PictureCamera& camera, const Points& points, ToPoint toPoint) {
    constexpr double kFilled = 0.9;
    Reach across{kFilled * 0.5 * camera.Size.Width / camera.Focal};
    Reach along{kFilled * 0.5 * camera.Size.Height / camera.Focal};
    camera.Eye = {};
    for (const auto& point : points) {
        const Vec seen = camera.Seen(toPoint(point));
        across.Add(seen.x, seen.z);
        along.Add(seen.y, seen.z);
    }
    const double back = std::min(across.Back(), along.Back()) - 1e-3;
    camera.Eye = camera.Right * across.Middle() + camera.Up * along.Middle() + camera.Forward * back;
}

// The level direction in which the points are spread most, from the moments of their distribution.
Vec LongestExtent(const Object3DS& object) {
    Vec mean;
    for (const Vector3D& point : object.Points)
        mean = mean + ToVec(point) * (1.0 / static_cast<double>(object.Points.size()));
    double xx = 0, xz = 0, zz = 0;
    for (const Vector3D& point : object.Points) {
        const Vec from = ToVec(point) - mean;
        xx += from.x * from.x;
        xz += from.x * from.z;
        zz += from.z * from.z;
    }
    const double angle = 0.5 * std::atan2(2 * xz, xx - zz);
    return {std::cos(angle), 0, std::sin(angle)};
}

PictureCamera AimAtWhole(PictureSize size, const Object3DS& object, double descent, double angle) {
    const Vec across = LongestExtent(object);
    // Nearly the whole extent lies across the picture; a little turn shows the depth.
    const Vec level = Normalized(Cross(kUp, across) + across * 0.6);
    PictureCamera camera = LookAlong(level - kUp * descent, kUp, angle, size);
    Frame(camera, object.Points, ToVec);
    return camera;
}

const PathPoint& PointOf(const TrackPath& path, std::size_t index) { return path[index % path.size()]; }

// As many points of a stretch as these, but one at least, and not the whole of it.
std::size_t PointsWithin(const CoveredStretch& stretch, double points) {
    return static_cast<std::size_t>(std::clamp(points, 1.0, static_cast<double>(stretch.count - 1)));
}

// At the lowest portal, from outside and obliquely, so that the opening and the run behind it are seen.
PictureCamera AimAtPortal(PictureSize size, const TrackPath& path,
                          const std::vector<CoveredStretch>& stretches) {
    const auto lower = [&](const CoveredStretch& one, const CoveredStretch& other) {
        return PointOf(path, one.first).Position.y < PointOf(path, other.first).Position.y;
    };
    const CoveredStretch stretch = *std::min_element(stretches.begin(), stretches.end(), lower);
    const PathPoint& portal = PointOf(path, stretch.first);
    const double roof = stretch.roof;
    const std::size_t shown = PointsWithin(stretch, 24 * roof);
    const Vec ahead = Normalized(portal.Forward - kUp * portal.Forward.y);
    const Vec right = Cross(ahead, kUp);
    // From the side to which the tunnel doesn't turn, it comes out from behind its portal.
    const double turn = Dot(PointOf(path, stretch.first + shown).Position - portal.Position, right);
    const Vec aside = right * (turn > 0 ? 1 : -1);
    PictureCamera camera = LookAlong(ahead * 0.76 + aside * 0.65 - kUp * 0.2, kUp, kSideAngle, size);
    std::vector<Vec> points;
    for (std::size_t i = 0; i < shown; i += 4) {
        const PathPoint& point = PointOf(path, stretch.first + i);
        for (const double side : {-roof, roof})
            for (const double height : {-0.5 * roof, roof})
                points.push_back(point.Position + point.Right * side + point.Up * height);
    }
    Frame(camera, points, [](const Vec& point) { return point; });
    return camera;
}

// How far the path leaves the straight line between two of its points.
double BulgeOf(const TrackPath& path, std::size_t from, std::size_t to) {
    const Vec start = PointOf(path, from).Position;
    const Vec line = Normalized(PointOf(path, to).Position - start);
    double bulge = 0;
    for (std::size_t i = from; i < to; ++i)
        bulge = std::max(bulge, Length(Cross(line, PointOf(path, i).Position - start)));
    return bulge;
}

// From where, in the longest tunnel, one just sees the way out around the bend.
PictureCamera AimThrough(PictureSize size, const TrackPath& path,
                         const std::vector<CoveredStretch>& stretches) {
    const auto shorter = [](const CoveredStretch& one, const CoveredStretch& other) {
        return one.count < other.count;
    };
    const CoveredStretch stretch = *std::max_element(stretches.begin(), stretches.end(), shorter);
    const std::size_t out = stretch.first + stretch.count;
    const double roof = stretch.roof;
    const std::size_t most = PointsWithin(stretch, 24 * roof);
    std::size_t way = PointsWithin(stretch, 8 * roof);
    while (way < most && BulgeOf(path, out - way - 1, out) < 0.45 * roof)
        ++way;
    const PathPoint& here = PointOf(path, out - way);
    const PathPoint& there = PointOf(path, out - way / 2);
    const double height = 0.36 * roof;
    const Vec eye = here.Position + here.Up * height;
    PictureCamera camera = LookAlong(there.Position + there.Up * height - eye, here.Up, kInsideAngle, size);
    camera.Eye = eye;
    return camera;
}

}  // namespace

bool AimCamera(PictureView view, PictureSize size, const Object3DS& object, const TrackPath& path,
               PictureCamera& camera, std::string& reason) {
    constexpr double kSteep = 0.75, kShallow = 0.2;
    const std::vector<CoveredStretch> stretches = CoveredStretches(path);
    if (view == PictureView::Inside && stretches.empty()) {
        reason = path.empty() ? "The view from inside needs the track (--track)."
                              : "The track doesn't run through the object.";
        return false;
    }
    if (view == PictureView::Inside)
        camera = AimThrough(size, path, stretches);
    else if (view == PictureView::Side && !stretches.empty())
        camera = AimAtPortal(size, path, stretches);
    else if (view == PictureView::Side)
        camera = AimAtWhole(size, object, kShallow, kSideAngle);
    else
        camera = AimAtWhole(size, object, kSteep, kBirdsAngle);
    return true;
}

}  // namespace boreforge
