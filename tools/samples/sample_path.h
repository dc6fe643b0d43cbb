// Makes a smooth closed track from a few waypoints: path, roll, tunnels and the ground around them.
#pragma once

#include <span>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// How the roll of the nodes after a waypoint is set.
enum class RollStyle {
    Target,  // Roll is the bank to reach
    Added,   // Roll is a turn on top of the frame
    Loop,    // Roll is the waypoint's own turn on top of the frame: loops can't bank
};

// A place that the path goes through. Heights and lengths are in track units.
struct Waypoint {
    double x = 0, y = 0, z = 0;
    double cover = 0;  // height of the ground above the path; the path is a tunnel where it is covered
    RollStyle roll = RollStyle::Target;
    double turn = 0;  // radians at each node; undoes the twist of a loop whose exit is beside its entry
};

// Rounds to a multiple of 1/1024, so that the last bit of a sum or a sine never reaches a file and a node and
// its two handles are exactly in line.
float OnGrid(double value);

// A pseudo-random value from -1 to 1, the same on every machine.
double Scatter(int x, int z);

// Smooth hills and valleys, from -1 to 1, about `size` units wide.
double Relief(double x, double z, double size);

// Sets the nodes and the segments of TrackFile: `count` of each, equally far apart on a closed curve of
// continuous curvature, the first node at the first waypoint.
void LayTrack(std::span<const Waypoint> waypoints, int count);

// The ground around a path. Near the path its height follows the waypoints' cover; further away there are
// hills.
class Ground {
  public:
    explicit Ground(std::span<const Waypoint> waypoints);
    double HeightAt(double x, double z) const;

  private:
    std::vector<Vector3D> samples_;
};

}  // namespace boreforge
