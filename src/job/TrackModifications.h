// The changes that a tunnel job makes to the track in memory.
#pragma once

#include <optional>
#include <string>

namespace boreforge {

// Gives every tunnel segment own colours: those that it shows now, each channel times `dimFactor` (0 to 1),
// rounded to nearest with ties to even.
void DimTunnelSegments(float dimFactor);

// Clears the tunnel flag of every segment.
void ClearTunnelFlags();

// The name under which the track lists the object at `outputPath`, which is UTF-8: what follows the last "/"
// or
// "\", one byte of Windows-1252 for each character, as all texts of a track. Nothing when a character has no
// such byte.
std::optional<std::string> ObjectNameInTrack(const std::string& outputPath);

// Appends the object to the track's scenery, unmoved and unturned, since its vertices are in track space:
// class "dummy", file ObjectNameInTrack, which must exist. An earlier entry of the same name stays.
void PlaceObjectInTrack(const std::string& outputPath);

}  // namespace boreforge
