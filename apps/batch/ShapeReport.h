// What can be said about a shape before a tunnel is made of it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/TunnelShape.h"

namespace boreforge {

// One sentence for each problem of a shape that is probably wrong: fewer than three nodes, coordinates that
// aren't finite, contours that are drawn clockwise (unless walls are double-sided), cross themselves or cross
// each other. Crossings are only looked for in shapes of up to 2,000 nodes. z is ignored.
std::vector<std::string> ShapeWarnings(const TunnelShapeState& shape, bool doubleSided);

// The room inside a shape, in units of the track, rounded to thousandths.
struct Clearance {
    double width = 0, height = 0;  // of the inside contour at its widest and highest
    double aroundPath = 0;         // from the path to the nearest wall; 0 if the path isn't inside
};

// Nothing for an empty shape and for coordinates that aren't finite. z is ignored.
std::optional<Clearance> ClearanceOf(const TunnelShapeState& shape);

}  // namespace boreforge
