// The track's path through an object, where the object covers it, and the space that both take.
#pragma once

#include <cstddef>
#include <vector>

#include "shared/Read3DSObject.h"
#include "shared/Vec.h"

namespace boreforge {

struct PathPoint {
    Vec position, right, up, forward;
    bool isCovered = false;  // some face is above the point and another below it
    double roof = 0;         // from the point up to the object's highest surface above it, where covered
};

// A closed chain of points about half a unit apart; empty without a track.
using TrackPath = std::vector<PathPoint>;

// The point at an index, which may run past the end: the path is closed.
inline const PathPoint& PointOf(const TrackPath& path, std::size_t index) {
    return path[index % path.size()];
}

// A covered part of the path, along the direction of travel. The path is closed: indices beyond the last
// point wrap around.
struct CoveredStretch {
    std::size_t first = 0, count = 0;
    double roof = 0;  // the lowest roof of its points, so that a second tunnel above doesn't count
};

// The path of the track that was traced last.
TrackPath PathOfTrace();

// Sets what the object covers.
void FindCover(TrackPath& path, const Object3DS& object);

// The covered stretches in the order of the path.
std::vector<CoveredStretch> CoveredStretches(const TrackPath& path);

// A sphere around the object, which must have points, and the path, since a ride leads far away from the
// object; and the height of the ground below both.
struct Surroundings {
    Vec center;
    double radius, ground;
};
Surroundings SurroundingsOf(const Object3DS& object, const TrackPath& path);

// From the eye to the nearest point of object and path; 1 if there is none.
double DistanceToNearest(const Vec& eye, const Object3DS& object, const TrackPath& path);

}  // namespace boreforge
