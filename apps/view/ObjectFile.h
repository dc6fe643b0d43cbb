// Reads what the viewer shows, and says what it is.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "shared/ObjectSurfaces.h"
#include "view/TrackPath.h"

namespace boreforge {

// More would need too much of the graphics card's memory.
inline constexpr std::size_t kMaxFaces = 2'000'000;

struct ShownObject {
    Object3DS Object;
    std::vector<ObjectSurface> Surfaces;
};

// False, with the reason, if the file can't be read or is damaged, or has no faces or too many.
[[nodiscard]] bool ReadObject(const std::string& path, ShownObject& shown, std::string& reason);

// The path of a track. False, with the reason, if the track can't be read or its path can't be followed.
[[nodiscard]] bool ReadPath(const std::string& track, TrackPath& path, std::string& reason);

// What the object consists of, in a line.
std::string Summary(const ShownObject& shown);

}  // namespace boreforge
