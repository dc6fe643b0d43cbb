// The ends of a tunnel: the gap between its two walls closed by a flat ring of triangles; the opening stays.
#pragma once

#include <cstdint>

namespace boreforge {

// Makes the cap at the first sample of a segment, an object of its own in the model store. The entry cap
// stands at the first segment of a run and faces against the direction of travel; the exit cap stands at the
// first segment behind the run and faces along it. With doubleSided each has both faces.
void CapTunnelEntry(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);
void CapTunnelExit(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided);

}  // namespace boreforge
