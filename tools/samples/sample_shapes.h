// The sample cross-sections.
#pragma once

namespace boreforge {

// Each replaces TunnelShape with a counter-clockwise shape: a wall half a unit thick, the floor one unit
// below the track, the first node at the foot of the right wall.
void MakeHorseshoe();        // a flat floor under an arch that is widest above it
void MakeRoundTube();        // a circle
void MakeDoubleTrackArch();  // room for a second track to the left of this one

}  // namespace boreforge
