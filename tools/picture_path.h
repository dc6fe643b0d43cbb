// The track's path through an object: where the object covers it, and its rails to be drawn.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "export3ds/Read3DSObject.h"
#include "picture_vector.h"

namespace boreforge {

struct PathPoint {
    Vec Position, Right, Up, Forward;
    bool Covered = false;  // the object is above and below
    double Roof = 0;       // from the point up to the object's highest surface above it, where covered
};

// A closed chain of points about half a unit apart; empty without a track.
using TrackPath = std::vector<PathPoint>;

// A covered part of the path, along the direction of travel. The path is closed: points behind the last one
// are counted on from the first.
struct CoveredStretch {
    std::size_t first = 0, count = 0;
    double roof = 0;  // the median of the points' roofs
};

// The path of the track that was traced last.
TrackPath PathOfTrace();

// Sets what the object covers.
void FindCover(TrackPath& path, const Object3DS& object);

// The covered stretches in the order of the path.
std::vector<CoveredStretch> CoveredStretches(const TrackPath& path);

// Where the path enters and leaves what covers it.
std::vector<Vec> PortalsOf(const TrackPath& path);

// A straight bar with a rectangular cross-section: `aside` and `above` lead from its middle to its sides.
struct RailPiece {
    Vec from, to;
    Vec aside, above;
    bool isTie = false;
};

// From the middle of a bar to one of its four sides: 0 above, 1 to the one side, 2 below, 3 to the other.
inline Vec SideOf(const RailPiece& piece, std::uint32_t side) {
    return (side % 2 == 0 ? piece.above : piece.aside) * (side < 2 ? 1 : -1);
}

// Two rails and the ties that hold them. The rails' tops are at the height of the path.
std::vector<RailPiece> RailsOf(const TrackPath& path);

}  // namespace boreforge
