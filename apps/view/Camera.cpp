#include "view/Camera.h"

#include <algorithm>
#include <cstddef>
#include <numbers>

namespace boreforge {

namespace {

constexpr double kRadiansPerPixel = 0.006;
constexpr double kSteepest = std::numbers::pi / 2 - 0.001;

// Turns by the distance that the mouse moved, in pixels.
void TurnBy(double right, double down, double& yaw, double& pitch) {
    yaw += right * kRadiansPerPixel;
    pitch = std::clamp(pitch - down * kRadiansPerPixel, -kSteepest, kSteepest);
}

}  // namespace

CameraPose LookAlong(const Vec& eye, const Vec& forward, const Vec& up) {
    CameraPose pose;
    pose.eye = eye;
    pose.forward = Normalized(forward);
    pose.right = Normalized(Cross(pose.forward, up), {1, 0, 0});
    pose.up = Cross(pose.right, pose.forward);
    return pose;
}

Vec CameraPose::Seen(const Vec& point) const {
    const Vec offset = point - eye;
    return {Dot(offset, right), Dot(offset, up), Dot(offset, forward)};
}

double CameraLens::PixelsPerUnit(double distance) const {
    return 0.5 * std::min(width, height) / (halfTangent * distance);
}

double CameraLens::VerticalDegrees() const {
    return 360 / std::numbers::pi * std::atan(halfTangent * height / std::min(width, height));
}

bool CameraLens::Shows(const CameraPose& pose, const Vec& point) const {
    const Vec seen = pose.Seen(point);
    const double unit = PixelsPerUnit(seen.z);
    return seen.z > 0 && std::fabs(seen.x) * unit < width / 2.0 && std::fabs(seen.y) * unit < height / 2.0;
}

CameraPose OrbitCamera::Pose() const {
    const Vec forward{std::sin(yaw) * std::cos(pitch), std::sin(pitch), -std::cos(yaw) * std::cos(pitch)};
    return LookAlong(target - forward * distance, forward, kUp);
}

OrbitCamera OrbitCamera::From(const CameraPose& pose, double distance) {
    OrbitCamera orbit;
    orbit.target = pose.eye + pose.forward * distance;
    orbit.distance = distance;
    orbit.yaw = std::atan2(pose.forward.x, -pose.forward.z);
    orbit.pitch = std::clamp(std::asin(std::clamp(pose.forward.y, -1.0, 1.0)), -kSteepest, kSteepest);
    return orbit;
}

void OrbitCamera::Turn(double right, double down) { TurnBy(right, down, yaw, pitch); }

void OrbitCamera::Pan(double right, double down, const CameraLens& lens) {
    const CameraPose pose = Pose();
    target = target + (pose.up * down - pose.right * right) * (1 / lens.PixelsPerUnit(distance));
}

void OrbitCamera::Zoom(double steps, double right, double down, const CameraLens& lens) {
    constexpr double kStep = 0.85;
    const CameraPose pose = Pose();
    const double factor = std::pow(kStep, steps);
    const Vec offset = (pose.right * right - pose.up * down) * (1 / lens.PixelsPerUnit(distance));
    target = target + offset * (1 - factor);
    distance *= factor;
}

void Ride::Advance(double seconds, const TrackPath& path) {
    double left = isMoving ? speed * seconds : 0;
    const auto count = static_cast<double>(path.size());
    // The points are unevenly spaced, so each step goes no further than the next one.
    while (left > 0 && count > 0) {
        const auto index = static_cast<std::size_t>(position);
        const double share = position - std::floor(position);
        const double length =
            Length(PointOf(path, index + 1).position - PointOf(path, index).position) + 1e-6;
        const double step = std::min(left, length * (1 - share));
        position = step < left ? std::floor(position) + 1 : position + step / length;
        left -= step + 1e-9;
        if (position >= count) position -= count;
    }
}

void Ride::TurnHead(double right, double down) { TurnBy(right, down, yaw, pitch); }

void Ride::ChangeSpeed(double steps) {
    constexpr double kStep = 1.15, kSlowest = 0.5, kFastest = 200;
    speed = std::clamp(speed * std::pow(kStep, steps), kSlowest, kFastest);
}

CameraPose Ride::Pose(const TrackPath& path) const {
    constexpr double kEyeHeight = 1.1;
    const auto index = static_cast<std::size_t>(position);
    const double share = position - std::floor(position);
    const PathPoint &here = PointOf(path, index), &next = PointOf(path, index + 1);
    const Vec up = Normalized(Mix(here.up, next.up, share));
    const Vec right = Normalized(Mix(here.right, next.right, share));
    const Vec ahead = Normalized(Mix(here.forward, next.forward, share));
    const Vec level = ahead * std::cos(yaw) + right * std::sin(yaw);
    return LookAlong(Mix(here.position, next.position, share) + up * kEyeHeight,
                     level * std::cos(pitch) + up * std::sin(pitch), up);
}

double RoundedDown(double longest) {
    const double power = std::pow(10, std::floor(std::log10(longest)));
    return power * (longest >= 5 * power ? 5 : longest >= 2 * power ? 2 : 1);
}

}  // namespace boreforge
