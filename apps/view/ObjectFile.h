// Reads what the viewer shows, and says what it is.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/Outcome.h"
#include "shared/ObjectSurfaces.h"
#include "view/TrackPath.h"

namespace boreforge {

// More would need too much of the graphics card's memory.
inline constexpr std::size_t kMaxFaces = 2'000'000;

struct ShownObject {
    Object3DS object;
    std::vector<ObjectSurface> surfaces;
};

// Fails, with the path and the reason, if the file can't be read or is damaged, or has no faces or too many.
// `shown` is then unchanged.
Outcome ReadObject(const std::string& path, ShownObject& shown);

// The path of a track. Fails, with the path and the reason, if the track can't be read or followed.
Outcome ReadPath(const std::string& track, TrackPath& path);

// What the object consists of, in a line.
std::string Summary(const ShownObject& shown);

// The sphere around an object, which has points, and the path, and the height of the ground: under both,
// since a ride follows the path far away from the object.
struct Surroundings {
    Vec center;
    double radius, ground;
};
Surroundings SurroundingsOf(const Object3DS& object, const TrackPath& path);

// From the eye to the nearest point of object and path; 1 if there is none.
double DistanceToNearest(const Vec& eye, const Object3DS& object, const TrackPath& path);

}  // namespace boreforge
