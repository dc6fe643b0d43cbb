#include "view/CameraControl.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace boreforge {

namespace {

// Tangents of half the angle of view across the shorter side of the picture, by kind of view.
constexpr double kAboveTangent = 0.15, kSideTangent = 0.3, kInsideTangent = 0.62;

// How far points stick out of the field of view of an eye at the origin, along one axis of the picture.
struct AxisFit {
    double slope;                                             // tangent of half its angle
    double above = -std::numeric_limits<double>::infinity();  // how far they stick out on the positive side
    double below = -std::numeric_limits<double>::infinity();  // and on the negative side

    void Add(double across, double ahead) {
        above = std::max(above, across - slope * ahead);
        below = std::max(below, -across - slope * ahead);
    }
    // How far ahead of the origin the eye must be for the points just to fit in.
    double EyeAhead() const { return -(above + below) / (2 * slope); }
    // How far across it must be for equal margins on both sides.
    double EyeAcross() const { return (above - below) / 2; }
};

// Moves the eye so that the points fill the picture up to a margin, with equal margins at opposite sides.
Aim FitPoints(CameraPose pose, CameraLens lens, double halfTangent, const std::vector<Vec>& points) {
    constexpr double kFilled = 0.9;
    lens.halfTangent = halfTangent;
    const double shorter = std::min(lens.width, lens.height);
    AxisFit across{kFilled * lens.halfTangent * lens.width / shorter};
    AxisFit along{kFilled * lens.halfTangent * lens.height / shorter};
    double near = std::numeric_limits<double>::infinity(), far = -near;
    pose.eye = {};
    for (const Vec& point : points) {
        const Vec seen = pose.Seen(point);
        across.Add(seen.x, seen.z);
        along.Add(seen.y, seen.z);
        near = std::min(near, seen.z);
        far = std::max(far, seen.z);
    }
    const double ahead = std::min(across.EyeAhead(), along.EyeAhead()) - 1e-3;
    pose.eye = pose.right * across.EyeAcross() + pose.up * along.EyeAcross() + pose.forward * ahead;
    return {pose, lens, std::max((near + far) / 2 - ahead, 0.1)};
}

// The horizontal direction of the greatest spread: the principal axis of the points seen from above.
Vec LongestDirection(const Object3DS& object) {
    Vec mean;
    for (const Vector3D& point : object.points)
        mean = mean + ToVec(point) * (1.0 / static_cast<double>(object.points.size()));
    double xx = 0, xz = 0, zz = 0;
    for (const Vector3D& point : object.points) {
        const Vec from = ToVec(point) - mean;
        xx += from.x * from.x;
        xz += from.x * from.z;
        zz += from.z * from.z;
    }
    const double angle = 0.5 * std::atan2(2 * xz, xx - zz);
    return {std::cos(angle), 0, std::sin(angle)};
}

Aim AimAtAll(const Object3DS& object, const TrackPath& path, const CameraLens& lens, double halfTangent,
             double descent) {
    const Vec across = LongestDirection(object);
    // Nearly the whole extent lies across the picture; a little turn shows the depth.
    const Vec level = Normalized(Cross(kUp, across) + across * 0.6);
    std::vector<Vec> points;
    for (const Vector3D& point : object.points)
        points.push_back(ToVec(point));
    for (const PathPoint& point : path)
        points.push_back(point.position);
    return FitPoints(LookAlong({}, level - kUp * descent, kUp), lens, halfTangent, points);
}

// The longest part of a tunnel in a picture: points of the path for each unit of the roof's height.
constexpr double kMaxShown = 24;

// `points`, limited to 1 ... count - 1.
std::size_t ClampPoints(const CoveredStretch& stretch, double points) {
    return static_cast<std::size_t>(std::clamp(points, 1.0, static_cast<double>(stretch.count - 1)));
}

// The tunnel whose entry is the lowest.
const CoveredStretch& LowestOf(const std::vector<CoveredStretch>& stretches, const TrackPath& path) {
    const auto height = [&](const CoveredStretch& stretch) {
        return PointOf(path, stretch.first).position.y;
    };
    return *std::ranges::min_element(stretches, {}, height);
}

// The greatest distance of the path from the straight line between two of its points.
double BulgeOf(const TrackPath& path, std::size_t from, std::size_t to) {
    const Vec start = PointOf(path, from).position;
    const Vec line = Normalized(PointOf(path, to).position - start);
    double bulge = 0;
    for (std::size_t i = from; i < to; ++i)
        bulge = std::max(bulge, Length(Cross(line, PointOf(path, i).position - start)));
    return bulge;
}

// The point in the longest tunnel from which the exit is just visible around the bend.
Aim AimThrough(CameraLens lens, const TrackPath& path, const std::vector<CoveredStretch>& stretches) {
    const CoveredStretch stretch = *std::ranges::max_element(stretches, {}, &CoveredStretch::count);
    const std::size_t out = stretch.first + stretch.count;
    const double roof = stretch.roof;
    // Limited for very high roofs, since the search takes quadratic time.
    const std::size_t most = ClampPoints(stretch, std::min(kMaxShown * roof, 4000.0));
    std::size_t points = ClampPoints(stretch, 8 * roof);  // from the eye to the exit
    while (points < most && BulgeOf(path, out - points - 1, out) < 0.45 * roof)
        ++points;
    const PathPoint& here = PointOf(path, out - points);
    const PathPoint& there = PointOf(path, out - points / 2);
    const double height = 0.36 * roof;
    const Vec eye = here.position + here.up * height;
    const Vec forward = there.position + there.up * height - eye;
    lens.halfTangent = kInsideTangent;
    return {LookAlong(eye, forward, here.up), lens, Length(forward)};
}

// The view of the whole object, with which the window starts.
Aim AimAtWhole(const Object3DS& object, const CameraLens& lens) {
    constexpr double kDescent = 0.5;
    return AimAtAll(object, {}, lens, kSideTangent, kDescent);
}

// The entry of a tunnel, obliquely from outside, so that both the opening and the tunnel are visible.
Aim AimAtEntry(const CoveredStretch& tunnel, const TrackPath& path, const CameraLens& lens) {
    constexpr double kAhead = 0.76, kAside = 0.65, kDown = 0.2;  // of the direction of view
    const PathPoint& portal = PointOf(path, tunnel.first);
    const double roof = tunnel.roof;
    const std::size_t shown = ClampPoints(tunnel, kMaxShown * roof);
    const Vec ahead = Normalized(portal.forward - kUp * portal.forward.y);
    const Vec right = Cross(ahead, kUp);
    // From the outside of the bend: from the other side, the portal would hide the tunnel.
    const double turn = Dot(PointOf(path, tunnel.first + shown).position - portal.position, right);
    const Vec aside = right * (turn > 0 ? 1 : -1);
    std::vector<Vec> points;
    for (std::size_t i = 0; i < shown; i += 4) {
        const PathPoint& point = PointOf(path, tunnel.first + i);
        for (const double side : {-roof, roof})
            for (const double height : {-0.5 * roof, roof})
                points.push_back(point.position + point.right * side + point.up * height);
    }
    return FitPoints(LookAlong({}, ahead * kAhead + aside * kAside - kUp * kDown, kUp), lens, kSideTangent,
                     points);
}

}  // namespace

void CameraControl::Apply(const Aim& aim) {
    aimed_ = aim.pose;
    lens_ = aim.lens;
    orbit_ = OrbitCamera::From(aim.pose, aim.distance);
}

void CameraControl::Fit(const Object3DS& object) {
    state_ = Free();
    tunnel_.reset();
    if (object.faces.empty()) return;
    Apply(AimAtWhole(object, lens_));
    state_ = Fitted();
}

Outcome CameraControl::LookFrom(ViewFrom view, const Object3DS& object, const TrackPath& path) {
    constexpr double kSteep = 1.2, kShallow = 0.2;
    const std::vector<CoveredStretch> stretches = CoveredStretches(path);
    if (view == ViewFrom::Inside && stretches.empty())
        return Failure{.reason = path.empty() ? "The view from inside needs the track (--track)."
                                              : "The track doesn't run through the object."};
    if (view == ViewFrom::Inside)
        Apply(AimThrough(lens_, path, stretches));
    else if (view == ViewFrom::Above)
        Apply(AimAtAll(object, path, lens_, kAboveTangent, kSteep));
    else if (stretches.empty())
        Apply(AimAtAll(object, {}, lens_, kSideTangent, kShallow));
    else
        Apply(AimAtEntry(LowestOf(stretches, path), path, lens_));
    state_ = view;
    return {};
}

void CameraControl::Resize(int width, int height, const Object3DS& object) {
    lens_.width = std::max(width, 1);
    lens_.height = std::max(height, 1);
    if (std::holds_alternative<Fitted>(state_)) Fit(object);
}

void CameraControl::Drag(double right, double down, bool pan) {
    if (Ride* const ride = std::get_if<Ride>(&state_)) return ride->TurnHead(right, down);
    state_ = Free();
    if (pan)
        orbit_.Pan(right, down, lens_);
    else
        orbit_.Turn(right, down);
}

void CameraControl::Scroll(double steps, double right, double down, const Object3DS& object) {
    constexpr double kNearest = 0.01, kFarthest = 4;  // times the distance that shows the whole object
    if (Ride* const ride = std::get_if<Ride>(&state_)) return ride->ChangeSpeed(steps);
    OrbitCamera zoomed = orbit_;
    zoomed.Zoom(steps, right, down, lens_);
    const CameraPose pose = zoomed.Pose();
    const auto isShown = [&](const Vector3D& point) { return lens_.Shows(pose, ToVec(point)); };
    const double whole = AimAtWhole(object, lens_).distance;
    const bool fits = steps > 0
                          ? zoomed.distance > kNearest * whole && std::ranges::any_of(object.points, isShown)
                          : zoomed.distance < kFarthest * whole;
    if (!fits) return;
    state_ = Free();
    orbit_ = zoomed;
}

bool CameraControl::LookAtTunnel(int step, const TrackPath& path) {
    const std::vector<CoveredStretch> tunnels = CoveredStretches(path);
    if (tunnels.empty()) return false;
    const std::size_t count = tunnels.size();
    if (tunnel_)
        tunnel_ = (*tunnel_ + count + static_cast<std::size_t>(step)) % count;
    else
        tunnel_ = step > 0 ? 0 : count - 1;
    Apply(AimAtEntry(tunnels[*tunnel_], path, lens_));
    state_ = Free();
    return true;
}

void CameraControl::StartOrStopRide(const TrackPath& path) {
    constexpr double kSeconds = 4, kPointsPerUnit = 2;
    if (path.empty()) return;
    if (!CurrentRide()) {
        Ride ride;
        const std::vector<CoveredStretch> tunnels = CoveredStretches(path);
        const auto before = static_cast<std::size_t>(kSeconds * ride.speed * kPointsPerUnit) % path.size();
        if (!tunnels.empty())
            ride.position = static_cast<double>((tunnels[0].first + path.size() - before) % path.size());
        state_ = ride;
    }
    Ride& ride = std::get<Ride>(state_);
    ride.isMoving = !ride.isMoving;
}

void CameraControl::LeaveRide() {
    if (CurrentRide()) state_ = Free();
}

void CameraControl::Advance(double seconds, const TrackPath& path) {
    if (Ride* const ride = std::get_if<Ride>(&state_)) ride->Advance(seconds, path);
}

CameraPose CameraControl::Pose(const TrackPath& path) const {
    if (const Ride* const ride = CurrentRide()) return ride->Pose(path);
    return std::holds_alternative<ViewFrom>(state_) ? aimed_ : orbit_.Pose();
}

CameraLens CameraControl::Lens() const {
    CameraLens lens = lens_;
    if (CurrentRide()) lens.halfTangent = kInsideTangent;
    return lens;
}

bool CameraControl::IsInTunnel(const TrackPath& path) const {
    if (const Ride* const ride = CurrentRide())
        return PointOf(path, static_cast<std::size_t>(ride->position)).isCovered;
    const ViewFrom* const view = std::get_if<ViewFrom>(&state_);
    return view && *view == ViewFrom::Inside;
}

std::optional<ScaleBar> CameraControl::Scale() const {
    constexpr double kMaxShareOfWidth = 0.2;
    const ViewFrom* const view = std::get_if<ViewFrom>(&state_);
    if (CurrentRide() || (view && *view != ViewFrom::Above)) return std::nullopt;
    const double unit = lens_.PixelsPerUnit(orbit_.distance);
    const double length = RoundedDown(kMaxShareOfWidth * lens_.width / unit);
    return ScaleBar{length, length * unit};
}

}  // namespace boreforge
