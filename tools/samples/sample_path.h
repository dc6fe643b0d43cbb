// From a few waypoints to a smooth closed track: path, roll, tunnels and the ground around them.
#pragma once

#include <span>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// How the roll of the nodes behind a waypoint is given.
enum class RollStyle {
    Target,  // the bank to reach
    Added,   // the turn on top of the frame
    Loop,    // the waypoint's own turn on top of the frame: in a loop a bank has no meaning
};

// A place that the path goes through. Heights and lengths are in track units.
struct Waypoint {
    double x = 0, y = 0, z = 0;
    double cover = 0;  // the ground's height above the path, which is a tunnel where the ground reaches it
    RollStyle roll = RollStyle::Target;
    double turn = 0;  // radians at each node, to take back the twist of a loop that leaves beside its entry
};

// Rounded to a multiple of 1/1024. So the last bit of a sum or a sine never reaches a file, and a node and
// its two handles are exactly in line.
float OnGrid(double value);

// A value from -1 to 1 that looks like chance and is the same everywhere.
double Scatter(int x, int z);

// Smooth hills and valleys, from -1 to 1, about `size` units wide.
double Relief(double x, double z, double size);

// Sets the nodes and the segments of TrackFile: `count` of each, equally far apart on a closed curve of
// continuous curvature, the first node at the first waypoint.
void LayTrack(std::span<const Waypoint> waypoints, int count);

// The ground around a path: at the path its cover says how high, further away hills of their own rise.
class Ground {
  public:
    explicit Ground(std::span<const Waypoint> waypoints);
    double HeightAt(double x, double z) const;

  private:
    std::vector<Vector3D> samples_;
};

}  // namespace boreforge
