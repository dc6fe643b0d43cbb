// The walk along the track's path: a chain of coordinate frames, one about every 0.5 units.
//
// A frame's columns are its local right, up and back in track space; the direction of travel is its local
// negative z. A shape point (x, y, 0) is therefore x to the right of the path and y above it.
#pragma once

#include <cstdint>
#include <vector>

#include "tracing/mMatrix3D.h"

namespace boreforge {

struct TraceSample {
    Matrix3D Orientation;  // the frame with its roll, a pure rotation
    Matrix3D WorldMatrix;  // shape space to track space: the translation to the point times Orientation
    float PathParam = 0;   // the Bezier parameter of the sample
    float Bank = 0;        // radians; 0 if the piece was not rolled
    float PathLength = 0;  // length of path from the start of the piece
};

struct TracedSegment {
    float Length = 0;  // of the piece, by MeasureBezierLength
    // at least one after a trace; the first is at the start of the piece
    std::vector<TraceSample> Samples;
    std::int32_t SampleCount() const { return static_cast<std::int32_t>(Samples.size()); }
};

// The trace, with the same indices as the track's Segments, and its highest index.
extern std::vector<TracedSegment> TracedSegments;
extern std::int32_t TraceUpperIndex;

// The result of the last TraceTrack, and false while another track is being opened. If true, TracedSegments
// belongs to the track in memory.
extern bool TrackTraced;

// Traces the open track. False if it has fewer than two segments or fewer nodes than segments: TracedSegments
// is then left as it was. False also if a coordinate or roll that the walk uses isn't finite or the path is
// longer than kMaxPathLength: TracedSegments is then empty. Throws std::bad_alloc if memory runs out;
// TracedSegments is then empty, too.
[[nodiscard]] bool TraceTrack();

// Traces the piece of one segment and replaces its samples. TracedSegments must have an element for each of
// the track's segments; positions and rolls must be finite. Trace segments in ascending order: a piece starts
// with the last frame of the one before it.
void TraceSegment(std::int32_t index);

// The length of a Bezier curve as the sum of 200 chords, arguments as for BezierPoint.
float MeasureBezierLength(const Vector3D& p0, const Vector3D& c0, const Vector3D& p1, const Vector3D& c1);

// The longest path that is traced, in units: a thousand times that of a real track. On a far longer piece the
// step would vanish when it is added to a 32-bit parameter, and the walk would never end.
inline constexpr double kMaxPathLength = 1'000'000;

}  // namespace boreforge
