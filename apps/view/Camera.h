// Where the viewer looks from: the mouse's orbit around the object, the ride along the track, and the places
// from which pictures are taken.
#pragma once

#include "base/Outcome.h"
#include "view/TrackPath.h"

namespace boreforge {

// An eye and its axes: unit vectors at right angles to each other.
struct CameraPose {
    Vec Eye, Right{1, 0, 0}, Up = kUp, Forward{0, 0, -1};
};
CameraPose LookAlong(const Vec& eye, const Vec& forward, const Vec& up);

// What the picture shows: `HalfAngle` is the tangent of half the angle of view across the shorter side.
struct CameraLens {
    double HalfAngle = 0.3;
    int Width = 1280, Height = 720;

    double PixelsPerUnit(double distance) const;  // straight ahead
    double VerticalDegrees() const;
};

// The eye on a sphere around a target. Angles in radians: a yaw of zero looks along negative z, a negative
// pitch looks down.
struct OrbitCamera {
    Vec Target;
    double Distance = 10, Yaw = 0, Pitch = -0.5;

    CameraPose Pose() const;
    // Starts from a pose, without its roll.
    static OrbitCamera From(const CameraPose& pose, double distance);

    // By the distance that the mouse moved, in pixels.
    void Turn(double right, double down);
    void Pan(double right, double down, const CameraLens& lens);
    void Zoom(double steps);
};

enum class ViewFrom { Above, Side, Inside };

struct Aim {
    CameraPose Pose;
    CameraLens Lens;
    double Distance = 10;  // to the point that is looked at
};

// The view of the whole object, with which the window starts.
Aim AimAtWhole(const Object3DS& object, CameraLens lens);

// A view for a picture. Fails if it needs a track that runs through the object and there is none.
Outcome AimFrom(ViewFrom view, const Object3DS& object, const TrackPath& path, CameraLens lens, Aim& aim);

// A passenger on the track.
struct Ride {
    double Position = 0;        // in points of the path
    double Speed = 15;          // units a second
    double Yaw = 0, Pitch = 0;  // of the head, in radians
    bool Moving = false;

    void Advance(double seconds, const TrackPath& path);
    void TurnHead(double right, double down);  // by the distance that the mouse moved, in pixels
    void ChangeSpeed(double steps);
    CameraPose Pose(const TrackPath& path) const;
};

// A round length, 1, 2 or 5 times a power of ten, that is at most `longest`.
double RoundLength(double longest);

}  // namespace boreforge
