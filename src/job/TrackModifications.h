// The changes that a tunnel job makes to the track in memory.
#pragma once

#include <optional>
#include <string>

namespace boreforge {

// Gives every tunnel segment its own colours: those that it has now, each channel times `dimFactor` (0 to 1),
// rounded to nearest with ties to even.
void DimTunnelSegments(float dimFactor);

// Clears the tunnel flag of every segment.
void ClearTunnelFlags();

// The name under which the track lists the object at `outputPath` (UTF-8): the part after the last "/" or
// "\", in Windows-1252 like all text in a track. Returns nullopt if a character isn't in Windows-1252.
std::optional<std::string> ObjectNameInTrack(const std::string& outputPath);

// Appends the object to the track's scenery with the identity matrix, since its vertices are in track space.
// The class is "dummy", the file ObjectNameInTrack, or the name in UTF-8 if that has no value. Keeps an
// earlier entry of the same name.
void PlaceObjectInTrack(const std::string& outputPath);

}  // namespace boreforge
