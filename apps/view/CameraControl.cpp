#include "view/CameraControl.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace boreforge {

void CameraControl::Take(const Aim& aim) {
    aimed_ = aim.pose;
    lens_ = aim.lens;
    orbit_ = OrbitCamera::From(aim.pose, aim.distance);
}

void CameraControl::Fit(const Object3DS& object) {
    state_ = Free();
    if (object.faces.empty()) return;
    Take(AimAtWhole(object, lens_));
    state_ = Fitted();
}

Outcome CameraControl::LookFrom(ViewFrom view, const Object3DS& object, const TrackPath& path) {
    Aim aim;
    const Outcome found = AimFrom(view, object, path, lens_, aim);
    if (!found) return found;
    Take(aim);
    state_ = Fixed{view, aim.pose};
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
    state_ = Free();
    OrbitCamera zoomed = orbit_;
    zoomed.Zoom(steps, right, down, lens_);
    const CameraPose pose = zoomed.Pose();
    const auto isShown = [&](const Vector3D& point) { return lens_.Shows(pose, ToVec(point)); };
    const double whole = AimAtWhole(object, lens_).distance;
    const bool fits = steps > 0
                          ? zoomed.distance > kNearest * whole && std::ranges::any_of(object.points, isShown)
                          : zoomed.distance < kFarthest * whole;
    if (fits) orbit_ = zoomed;
}

bool CameraControl::LookAtTunnel(int step, const TrackPath& path) {
    const std::vector<CoveredStretch> tunnels = CoveredStretches(path);
    if (tunnels.empty()) return false;
    const std::size_t count = tunnels.size();
    if (tunnel_)
        tunnel_ = (*tunnel_ + count + static_cast<std::size_t>(step)) % count;
    else
        tunnel_ = step > 0 ? 0 : count - 1;
    Take(AimAtEntry(tunnels[*tunnel_], path, lens_));
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
    const Fixed* const fixed = std::get_if<Fixed>(&state_);
    return fixed ? fixed->pose : orbit_.Pose();
}

CameraLens CameraControl::Lens() const {
    constexpr double kRideAngle = 0.62;
    CameraLens lens = lens_;
    if (CurrentRide()) lens.halfAngle = kRideAngle;
    return lens;
}

bool CameraControl::IsInTunnel(const TrackPath& path) const {
    if (const Ride* const ride = CurrentRide())
        return PointOf(path, static_cast<std::size_t>(ride->position)).isCovered;
    const Fixed* const fixed = std::get_if<Fixed>(&state_);
    return fixed && fixed->view == ViewFrom::Inside;
}

std::optional<ScaleBar> CameraControl::Scale() const {
    constexpr double kMostOfWidth = 0.2;
    const Fixed* const fixed = std::get_if<Fixed>(&state_);
    if (CurrentRide() || (fixed && fixed->view != ViewFrom::Above)) return std::nullopt;
    const double unit = lens_.PixelsPerUnit(orbit_.distance);
    const double length = RoundLength(kMostOfWidth * lens_.width / unit);
    return ScaleBar{length, length * unit};
}

}  // namespace boreforge
