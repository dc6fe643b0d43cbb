// Caps: flat rings of triangles that close the gap between the two walls at the ends of a tunnel. The opening
// stays.
#pragma once

#include <cstdint>

namespace boreforge {

// Adds the cap at the first sample of a segment to the model store, as an object of its own. The entry cap
// belongs to the first segment of a run and faces against the direction of travel; the exit cap belongs to
// the first segment after the run and faces along it. If doubleSided, each faces both ways.
void CapTunnelEntry(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);
void CapTunnelExit(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);

}  // namespace boreforge
