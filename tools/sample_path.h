// The way from a few waypoints to a smooth closed track: path, roll, tunnels and the ground around them.
#pragma once

#include <span>
#include <vector>

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
    double cover = 0;  // the ground's height above the path; above 0 the track is a tunnel
    RollStyle roll = RollStyle::Target;
    double turn = 0;  // radians at each node, to take back the twist of a loop that leaves beside its entry
};

struct PathPoint {
    double x = 0, y = 0, z = 0;
    double dx = 0, dy = 0, dz = 0;  // the direction of travel, of length 1
    double cover = 0;
    RollStyle roll = RollStyle::Target;
    double turn = 0;
};

// Rounded to a multiple of 1/1024. So the last bit of a sum or a sine never reaches a file, and a point and
// its two handles are exactly in line.
float OnGrid(double value);

// A value in -1 to 1 that looks like chance and is the same everywhere.
double Scatter(int x, int z);

// The same for every place, smooth, with a hill or a valley about every `size` units.
double Relief(double x, double z, double size);

// `count` points at equal distances along the closed curve of continuous curvature through the waypoints;
// the first stands at the first waypoint. `length` is set to the curve's length.
std::vector<PathPoint> FollowWaypoints(std::span<const Waypoint> waypoints, int count, double& length);

// Sets the nodes and the segments of TrackFile: `count` of each, tunnels where the ground covers the path.
void LayTrack(std::span<const Waypoint> waypoints, int count);

// The ground around a path: at the path its cover says how high, further away hills of their own rise.
class Ground {
  public:
    explicit Ground(std::span<const Waypoint> waypoints);
    double HeightAt(double x, double z) const;

  private:
    std::vector<PathPoint> samples_;
};

}  // namespace boreforge
