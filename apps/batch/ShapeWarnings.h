// Warnings about shapes that a tunnel can be made of but that are probably wrong.
#pragma once

#include <string>
#include <vector>

#include "editor/TunnelShape.h"

namespace boreforge {

// One sentence for each problem: fewer than three nodes, coordinates that aren't finite, contours that are
// drawn clockwise (unless walls are double-sided), cross themselves or cross each other. Crossings are only
// looked for in shapes of up to 2,000 nodes. z is ignored.
std::vector<std::string> ShapeWarnings(const TunnelShapeState& shape, bool doubleSided);

}  // namespace boreforge
