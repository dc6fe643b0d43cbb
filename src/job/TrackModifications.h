// The changes that a tunnel job makes to the track in memory.
#pragma once

#include <string>

namespace boreforge {

// Gives every tunnel segment own colours: those that it shows now, each channel times `dimFactor` (0 to 1),
// rounded to nearest with ties to even.
void DimTunnelSegments(float dimFactor);

// Clears the tunnel flag of every segment.
void ClearTunnelFlags();

// Appends the object to the track's scenery, unmoved and unturned, since its vertices are in track space:
// class "dummy", file the last element of `outputPath`, behind a "/" or a "\". An earlier entry of it stays.
void PlaceObjectInTrack(const std::string& outputPath);

}  // namespace boreforge
