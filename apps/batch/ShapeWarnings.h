// What is probably wrong with a shape, though a tunnel can be made of it.
#pragma once

#include <string>
#include <vector>

#include "editor/TunnelShape.h"

namespace boreforge {

// A sentence for each finding: no or fewer than three nodes, coordinates that aren't finite, contours that
// are drawn clockwise (which is fine for double-sided walls), that cross themselves or each other. Crossings
// are looked for in shapes of up to 2,000 nodes. Each contour is seen from the front: z is ignored.
std::vector<std::string> ShapeWarnings(const TunnelShapeState& shape, bool doubleSided);

}  // namespace boreforge
