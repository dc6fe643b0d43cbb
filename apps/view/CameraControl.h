// Moves the camera: by mouse and keys, along the ride, and to the views for pictures.
#pragma once

#include <cstddef>
#include <optional>
#include <variant>

#include "base/Outcome.h"
#include "view/Camera.h"

namespace boreforge {

enum class ViewFrom { Above, Side, Inside };

// Where the eye must be to show the whole object, or one of the views for pictures.
struct Aim {
    CameraPose pose;
    CameraLens lens;
    double distance;  // to the point that is looked at
};

// A length in units, and in pixels at the distance that is looked at.
struct ScaleBar {
    double units, pixels;
};

class CameraControl {
  public:
    // Shows the whole object, and again whenever the size changes, until the user moves the camera.
    void Fit(const Object3DS& object);
    // Takes the view for a picture. Fails and changes nothing if it needs a track that runs through the
    // object and there is none.
    Outcome LookFrom(ViewFrom view, const Object3DS& object, const TrackPath& path);
    // The size of the picture in pixels; smaller ones count as 1.
    void Resize(int width, int height, const Object3DS& object);

    // By the distance that the mouse moved, in pixels. Looks around on a ride, else turns or pans.
    void Drag(double right, double down, bool pan);
    // Changes the speed of a ride, else zooms towards the pointer, which is `right` and `down` of the
    // picture's middle, in pixels. A zoom ends where nothing of the object is left in the picture, or where
    // the whole object is small in it.
    void Scroll(double steps, double right, double down, const Object3DS& object);

    // Shows the entry of the tunnel that is `step` tunnels further along the track than the last one. False
    // if no tunnel of the track runs through the object.
    bool LookAtTunnel(int step, const TrackPath& path);

    // Starts a ride a few seconds before the first tunnel, or pauses or resumes it. Does nothing without a
    // track.
    void StartOrStopRide(const TrackPath& path);
    void LeaveRide();
    void Advance(double seconds, const TrackPath& path);
    // Null if there is none.
    const Ride* CurrentRide() const { return std::get_if<Ride>(&state_); }

    CameraPose Pose(const TrackPath& path) const;
    CameraLens Lens() const;
    // Whether the eye is within a tunnel, where only a lamp gives light.
    bool IsInTunnel(const TrackPath& path) const;
    // None if the picture has no one scale.
    std::optional<ScaleBar> Scale() const;
    // The pose of the last Fit or LookFrom: the sun follows it.
    const CameraPose& AimedPose() const { return aimed_; }

  private:
    struct Fitted {};
    struct Free {};

    void Apply(const Aim& aim);

    std::variant<Free, Fitted, ViewFrom, Ride> state_;  // ViewFrom: fixed, for a picture
    OrbitCamera orbit_;  // the camera outside a ride; it is kept for afterwards
    CameraLens lens_;
    CameraPose aimed_;
    std::optional<std::size_t> tunnel_;  // shown last
};

}  // namespace boreforge
