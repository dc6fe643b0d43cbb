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
    Object3DS Object;
    std::vector<ObjectSurface> Surfaces;
};

// Fails, with the path and the reason, if the file can't be read or is damaged, or has no faces or too many.
// `shown` is then unchanged.
Outcome ReadObject(const std::string& path, ShownObject& shown);

// The path of a track. Fails, with the path and the reason, if the track can't be read or followed.
Outcome ReadPath(const std::string& track, TrackPath& path);

// What the object consists of, in a line.
std::string Summary(const ShownObject& shown);

}  // namespace boreforge
