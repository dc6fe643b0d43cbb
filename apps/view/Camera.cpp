#include "view/Camera.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numbers>

namespace boreforge {

namespace {

// Tangents of half the angle of view across the shorter side of the picture, by kind of view.
constexpr double kAboveAngle = 0.15, kSideAngle = 0.3, kInsideAngle = 0.62;

constexpr double kRadiansPerPixel = 0.006;
constexpr double kSteepest = std::numbers::pi / 2 - 0.001;

// A point in the camera's axes: to the right, up and ahead.
Vec Seen(const CameraPose& pose, const Vec& point) {
    const Vec way = point - pose.Eye;
    return {Dot(way, pose.Right), Dot(way, pose.Up), Dot(way, pose.Forward)};
}

// The field of view along one axis, of an eye at the origin. Its two sides open by `slope` for each unit
// ahead; `high` and `low` are how far the points extend beyond them.
struct Reach {
    double slope, high = -std::numeric_limits<double>::infinity(), low = high;
    void Add(double across, double ahead) {
        high = std::max(high, across - slope * ahead);
        low = std::max(low, -across - slope * ahead);
    }
    // How far ahead of the origin the eye is when both sides just touch the points, and how far across when
    // the margins are equal.
    double Ahead() const { return -(high + low) / (2 * slope); }
    double Across() const { return (high - low) / 2; }
};

// Moves the eye so that the points fill the picture up to a margin, with equal margins at opposite sides.
template <class Points, class ToPoint>
Aim Frame(CameraPose pose, const CameraLens& lens, const Points& points, ToPoint toPoint) {
    constexpr double kFilled = 0.9;
    const double shorter = std::min(lens.Width, lens.Height);
    Reach across{kFilled * lens.HalfAngle * lens.Width / shorter};
    Reach along{kFilled * lens.HalfAngle * lens.Height / shorter};
    double near = std::numeric_limits<double>::infinity(), far = -near;
    pose.Eye = {};
    for (const auto& point : points) {
        const Vec seen = Seen(pose, toPoint(point));
        across.Add(seen.x, seen.z);
        along.Add(seen.y, seen.z);
        near = std::min(near, seen.z);
        far = std::max(far, seen.z);
    }
    const double ahead = std::min(across.Ahead(), along.Ahead()) - 1e-3;
    pose.Eye = pose.Right * across.Across() + pose.Up * along.Across() + pose.Forward * ahead;
    return {pose, lens, std::max((near + far) / 2 - ahead, 0.1)};
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

Aim AimAtAll(const Object3DS& object, const TrackPath& path, const CameraLens& lens, double descent) {
    const Vec across = LongestExtent(object);
    // Nearly the whole extent lies across the picture; a little turn shows the depth.
    const Vec level = Normalized(Cross(kUp, across) + across * 0.6);
    std::vector<Vec> points;
    for (const Vector3D& point : object.Points)
        points.push_back(ToVec(point));
    for (const PathPoint& point : path)
        points.push_back(point.Position);
    return Frame(LookAlong({}, level - kUp * descent, kUp), lens, points, [](const Vec& p) { return p; });
}

const PathPoint& PointOf(const TrackPath& path, std::size_t index) { return path[index % path.size()]; }

// `points`, limited to 1 ... count - 1.
std::size_t PointsWithin(const CoveredStretch& stretch, double points) {
    return static_cast<std::size_t>(std::clamp(points, 1.0, static_cast<double>(stretch.count - 1)));
}

// The lowest portal, obliquely from outside, so that both the opening and the tunnel behind it are visible.
Aim AimAtPortal(const CameraLens& lens, const TrackPath& path, const std::vector<CoveredStretch>& stretches) {
    const auto lower = [&](const CoveredStretch& one, const CoveredStretch& other) {
        return PointOf(path, one.first).Position.y < PointOf(path, other.first).Position.y;
    };
    const CoveredStretch stretch = *std::min_element(stretches.begin(), stretches.end(), lower);
    const PathPoint& portal = PointOf(path, stretch.first);
    const double roof = stretch.roof;
    const std::size_t shown = PointsWithin(stretch, 24 * roof);
    const Vec ahead = Normalized(portal.Forward - kUp * portal.Forward.y);
    const Vec right = Cross(ahead, kUp);
    // From the outside of the bend: from the other side, the portal would hide the tunnel.
    const double turn = Dot(PointOf(path, stretch.first + shown).Position - portal.Position, right);
    const Vec aside = right * (turn > 0 ? 1 : -1);
    std::vector<Vec> points;
    for (std::size_t i = 0; i < shown; i += 4) {
        const PathPoint& point = PointOf(path, stretch.first + i);
        for (const double side : {-roof, roof})
            for (const double height : {-0.5 * roof, roof})
                points.push_back(point.Position + point.Right * side + point.Up * height);
    }
    return Frame(LookAlong({}, ahead * 0.76 + aside * 0.65 - kUp * 0.2, kUp), lens, points,
                 [](const Vec& point) { return point; });
}

// The greatest distance of the path from the straight line between two of its points.
double BulgeOf(const TrackPath& path, std::size_t from, std::size_t to) {
    const Vec start = PointOf(path, from).Position;
    const Vec line = Normalized(PointOf(path, to).Position - start);
    double bulge = 0;
    for (std::size_t i = from; i < to; ++i)
        bulge = std::max(bulge, Length(Cross(line, PointOf(path, i).Position - start)));
    return bulge;
}

// The point in the longest tunnel from which the exit is just visible around the bend.
Aim AimThrough(const CameraLens& lens, const TrackPath& path, const std::vector<CoveredStretch>& stretches) {
    const auto shorter = [](const CoveredStretch& one, const CoveredStretch& other) {
        return one.count < other.count;
    };
    const CoveredStretch stretch = *std::max_element(stretches.begin(), stretches.end(), shorter);
    const std::size_t out = stretch.first + stretch.count;
    const double roof = stretch.roof;
    // Not farther than that below any roof: the search takes the square of it.
    const std::size_t most = PointsWithin(stretch, std::min(24 * roof, 4000.0));
    std::size_t way = PointsWithin(stretch, 8 * roof);
    while (way < most && BulgeOf(path, out - way - 1, out) < 0.45 * roof)
        ++way;
    const PathPoint& here = PointOf(path, out - way);
    const PathPoint& there = PointOf(path, out - way / 2);
    const double height = 0.36 * roof;
    const Vec eye = here.Position + here.Up * height;
    const Vec forward = there.Position + there.Up * height - eye;
    return {LookAlong(eye, forward, here.Up), lens, Length(forward)};
}

}  // namespace

CameraPose LookAlong(const Vec& eye, const Vec& forward, const Vec& up) {
    CameraPose pose;
    pose.Eye = eye;
    pose.Forward = Normalized(forward);
    pose.Right = Normalized(Cross(pose.Forward, up), {1, 0, 0});
    pose.Up = Cross(pose.Right, pose.Forward);
    return pose;
}

double CameraLens::PixelsPerUnit(double distance) const {
    return 0.5 * std::min(Width, Height) / (HalfAngle * distance);
}

double CameraLens::VerticalDegrees() const {
    return 360 / std::numbers::pi * std::atan(HalfAngle * Height / std::min(Width, Height));
}

CameraPose OrbitCamera::Pose() const {
    const Vec forward{std::sin(Yaw) * std::cos(Pitch), std::sin(Pitch), -std::cos(Yaw) * std::cos(Pitch)};
    return LookAlong(Target - forward * Distance, forward, kUp);
}

OrbitCamera OrbitCamera::From(const CameraPose& pose, double distance) {
    OrbitCamera orbit;
    orbit.Target = pose.Eye + pose.Forward * distance;
    orbit.Distance = distance;
    orbit.Yaw = std::atan2(pose.Forward.x, -pose.Forward.z);
    orbit.Pitch = std::clamp(std::asin(std::clamp(pose.Forward.y, -1.0, 1.0)), -kSteepest, kSteepest);
    return orbit;
}

void OrbitCamera::Turn(double right, double down) {
    Yaw += right * kRadiansPerPixel;
    Pitch = std::clamp(Pitch - down * kRadiansPerPixel, -kSteepest, kSteepest);
}

void OrbitCamera::Pan(double right, double down, const CameraLens& lens) {
    const CameraPose pose = Pose();
    Target = Target + (pose.Up * down - pose.Right * right) * (1 / lens.PixelsPerUnit(Distance));
}

void OrbitCamera::Zoom(double steps) { Distance = std::clamp(Distance * std::pow(0.85, steps), 0.05, 1e7); }

Aim AimAtWhole(const Object3DS& object, CameraLens lens) {
    constexpr double kDescent = 0.5;
    lens.HalfAngle = kSideAngle;
    return AimAtAll(object, {}, lens, kDescent);
}

Outcome AimFrom(ViewFrom view, const Object3DS& object, const TrackPath& path, CameraLens lens, Aim& aim) {
    constexpr double kSteep = 1.2, kShallow = 0.2;
    const std::vector<CoveredStretch> stretches = CoveredStretches(path);
    if (view == ViewFrom::Inside && stretches.empty())
        return Failure{.reason = path.empty() ? "The view from inside needs the track (--track)."
                                              : "The track doesn't run through the object."};
    lens.HalfAngle = view == ViewFrom::Inside ? kInsideAngle
                     : view == ViewFrom::Side ? kSideAngle
                                              : kAboveAngle;
    if (view == ViewFrom::Inside)
        aim = AimThrough(lens, path, stretches);
    else if (view == ViewFrom::Above)
        aim = AimAtAll(object, path, lens, kSteep);
    else
        aim = stretches.empty() ? AimAtAll(object, {}, lens, kShallow) : AimAtPortal(lens, path, stretches);
    return {};
}

void Ride::Advance(double seconds, const TrackPath& path) {
    double left = Moving ? Speed * seconds : 0;
    const auto count = static_cast<double>(path.size());
    // The points are unevenly spaced, so each step goes no further than the next one.
    while (left > 0 && count > 0) {
        const auto index = static_cast<std::size_t>(Position);
        const double share = Position - std::floor(Position);
        const double length =
            Length(PointOf(path, index + 1).Position - PointOf(path, index).Position) + 1e-6;
        const double step = std::min(left, length * (1 - share));
        Position = step < left ? std::floor(Position) + 1 : Position + step / length;
        left -= step + 1e-9;
        if (Position >= count) Position -= count;
    }
}

void Ride::TurnHead(double right, double down) {
    Yaw += right * kRadiansPerPixel;
    Pitch = std::clamp(Pitch - down * kRadiansPerPixel, -kSteepest, kSteepest);
}

void Ride::ChangeSpeed(double steps) { Speed = std::clamp(Speed * std::pow(1.15, steps), 0.5, 200.0); }

CameraPose Ride::Pose(const TrackPath& path) const {
    constexpr double kEyeHeight = 1.1;
    const auto index = static_cast<std::size_t>(Position);
    const double share = Position - std::floor(Position);
    const PathPoint &here = PointOf(path, index), &next = PointOf(path, index + 1);
    const Vec up = Normalized(Mix(here.Up, next.Up, share)),
              right = Normalized(Mix(here.Right, next.Right, share));
    const Vec ahead = Normalized(Mix(here.Forward, next.Forward, share));
    const Vec level = ahead * std::cos(Yaw) + right * std::sin(Yaw);
    return LookAlong(Mix(here.Position, next.Position, share) + up * kEyeHeight,
                     level * std::cos(Pitch) + up * std::sin(Pitch), up);
}

double RoundLength(double longest) {
    const double power = std::pow(10, std::floor(std::log10(longest)));
    return power * (longest >= 5 * power ? 5 : longest >= 2 * power ? 2 : 1);
}

}  // namespace boreforge
