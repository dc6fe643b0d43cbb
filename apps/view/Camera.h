// The camera: in orbit around the object, or riding along the track.
#pragma once

#include "view/TrackPath.h"

namespace boreforge {

// An eye and its axes: unit vectors at right angles to each other.
struct CameraPose {
    Vec eye, right{1, 0, 0}, up = kUp, forward{0, 0, -1};

    // A point as it is seen: to the right, up and ahead.
    Vec Seen(const Vec& point) const;
};
CameraPose LookAlong(const Vec& eye, const Vec& forward, const Vec& up);

// What the picture shows: `halfTangent` is the tangent of half the angle of view across the shorter side.
struct CameraLens {
    double halfTangent = 0.3;
    int width = 1280, height = 720;  // pixels

    double PixelsPerUnit(double distance) const;  // straight ahead
    double VerticalDegrees() const;
    // Whether a point is in the picture.
    bool Shows(const CameraPose& pose, const Vec& point) const;
};

// The eye on a sphere around a target. Angles in radians: a yaw of zero looks along negative z, a negative
// pitch looks down.
struct OrbitCamera {
    Vec target;
    double distance = 10, yaw = 0, pitch = -0.5;

    CameraPose Pose() const;
    // Starts from a pose, without its roll.
    static OrbitCamera From(const CameraPose& pose, double distance);

    // By the distance that the mouse moved, in pixels.
    void Turn(double right, double down);
    void Pan(double right, double down, const CameraLens& lens);
    // `right` and `down` are the distance of the pointer from the picture's middle, in pixels: what is there
    // stays there.
    void Zoom(double steps, double right, double down, const CameraLens& lens);
};

// A passenger on the track.
struct Ride {
    double position = 0;        // in points of the path
    double speed = 15;          // units a second
    double yaw = 0, pitch = 0;  // of the head, in radians
    bool isMoving = false;

    void Advance(double seconds, const TrackPath& path);
    void TurnHead(double right, double down);  // by the distance that the mouse moved, in pixels
    void ChangeSpeed(double steps);
    CameraPose Pose(const TrackPath& path) const;
};

// A round length, 1, 2 or 5 times a power of ten, that is at most `longest`.
double RoundedDown(double longest);

}  // namespace boreforge
