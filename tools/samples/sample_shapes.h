// The sample cross-sections.
#pragma once

namespace boreforge {

// Each replaces TunnelShape. All wind counter-clockwise and have a wall half a unit thick, the floor one unit
// below the track and the first node at the foot of the right wall.
void MakeHorseshoe();        // a flat floor under an arch that is widest above it
void MakeRoundTube();        // a circle
void MakeDoubleTrackArch();  // room for a second track to the left of this one

}  // namespace boreforge
