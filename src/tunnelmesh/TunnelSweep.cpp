#include "tunnelmesh/TunnelSweep.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "editor/TunnelShape.h"
#include "export3ds/VertexIndex.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

// The faces of each quad between two rings: two for each side.
std::size_t FacesOfQuad(const WallPart& part) { return part.outward && part.inward ? 4 : 2; }
std::size_t FacesOfBand(const WallPart& part) { return part.nodes * FacesOfQuad(part); }

// The rings that the first `count` faces of a part join.
struct RingRange {
    std::size_t first, last;
    friend bool operator==(const RingRange&, const RingRange&) = default;
};
RingRange RingsOf(const WallPart& part, std::size_t count) {
    return {part.first / FacesOfBand(part), (part.first + count - 1) / FacesOfBand(part) + 1};
}

// The three corners of face `index` of a part. Points are numbered from the part's first ring on.
std::array<std::size_t, 3> CornersOf(const WallPart& part, std::size_t index) {
    const std::size_t face = part.first % FacesOfBand(part) + index;
    const std::size_t quad = face / FacesOfQuad(part);
    const std::size_t k = quad % part.nodes, k2 = k + 1 < part.nodes ? k + 1 : 0;
    const std::size_t previous = quad - k, current = previous + part.nodes;
    switch (face % FacesOfQuad(part) + (part.outward ? 0 : 2)) {
        case 0:
            return {previous + k, current + k, current + k2};
        case 1:
            return {current + k2, previous + k2, previous + k};
        case 2:
            return {previous + k2, current + k2, current + k};
        default:
            return {current + k, previous + k, previous + k2};
    }
}

// Numbers the points in the order in which the faces first use them, as AddFace does.
FaceTable MakeFaceTable(const WallPart& part, std::size_t count) {
    FaceTable table;
    auto* const faces = std::pmr::polymorphic_allocator<MeshFace>(ModelMemory()).allocate(count);
    table.Faces = {faces, count};
    const RingRange rings = RingsOf(part, count);
    std::vector<std::int16_t> vertices((rings.last - rings.first + 1) * part.nodes, -1);
    const auto vertexOf = [&](std::size_t point) {
        if (vertices[point] < 0) {
            vertices[point] = static_cast<std::int16_t>(table.Points.size());
            table.Points.push_back(static_cast<std::uint16_t>(point));
        }
        return vertices[point];
    };
    for (std::size_t i = 0; i < count; ++i) {
        const auto [a, b, c] = CornersOf(part, i);
        const std::int16_t first = vertexOf(a), second = vertexOf(b);
        faces[i] = {first, second, vertexOf(c)};
        table.VertexCounts.push_back(static_cast<std::uint16_t>(table.Points.size()));
    }
    return table;
}

// A part's table of at least `count` faces, which is made if the model has none.
const FaceTable& FaceTableOf(const WallPart& part, std::size_t count) {
    FaceTable& table = Model3DS.FaceTables[part];
    // Rounded up to a power of two, since each replaced table stays in the model's memory.
    if (table.Faces.size() < count)
        table = MakeFaceTable(part, std::min<std::size_t>(kMaxFacesOfMesh, std::bit_ceil(count)));
    return table;
}

// Whether no two points are equal and none has a NaN: the faces then follow from the counts alone. False also
// for more points than a mesh can have.
bool AreAllDifferent(std::span<const Vector3D> points) {
    static VertexIndex index;
    if (points.size() > VertexIndex::kMaxVertices) return false;
    index.Clear();
    for (std::size_t i = 0; i < points.size(); ++i)
        if (HasNaN(points[i]) || !index.Store(points, i)) return false;
    return true;
}

// The frames of a wall's rings.
std::vector<const Matrix3D*> FramesOf(std::int32_t segmentIndex, std::int32_t detailStep) {
    const auto& samples = TracedSegments[segmentIndex].Samples;
    std::vector<const Matrix3D*> frames;
    frames.reserve(samples.size() / static_cast<std::size_t>(detailStep) + 2);
    for (std::size_t s = 0; s < samples.size(); s += static_cast<std::size_t>(detailStep))
        frames.push_back(&samples[s].WorldMatrix);
    // The bridge: the next segment's wall starts with the very same ring, so the two meet without a gap.
    const std::int32_t following = segmentIndex + 1 < TrackFile.SegmentCount() ? segmentIndex + 1 : 0;
    frames.push_back(&TracedSegments[following].Samples.front().WorldMatrix);
    return frames;
}

void AddPart(const WallPart& part, std::size_t count, const std::vector<Vector3D>& points,
             bool allDifferent) {
    if (allDifferent) {
        const FaceTable& table = FaceTableOf(part, count);
        const std::size_t vertices = table.VertexCounts[count - 1];
        AddSharedFaces(points, std::span(table.Points).first(vertices), table.Faces.first(count));
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto [a, b, c] = CornersOf(part, i);
        AddFace(points[a], points[b], points[c], {}, {}, {});
    }
}

void SweepWall(const std::vector<Vector3D>& contour, std::int32_t segmentIndex, std::int16_t materialIndex,
               std::int32_t detailStep, bool outward, bool inward) {
    BeginObject(kObjectPrefix, materialIndex, false, true);
    const std::vector<const Matrix3D*> frames = FramesOf(segmentIndex, detailStep);
    WallPart part{contour.size(), outward, inward};
    const std::size_t faces = (frames.size() - 1) * FacesOfBand(part);
    std::vector<Vector3D> points;
    bool allDifferent = false;
    for (RingRange carried{}; part.first < faces; part.first += kMaxFacesOfMesh) {
        const std::size_t count = std::min<std::size_t>(kMaxFacesOfMesh, faces - part.first);
        const RingRange rings = RingsOf(part, count);
        if (rings != carried) {
            points.clear();
            points.reserve((rings.last - rings.first + 1) * part.nodes);
            for (std::size_t r = rings.first; r <= rings.last; ++r)
                CarryContour(contour, *frames[r], points);
            // With one node, all faces have equal corners.
            allDifferent = part.nodes > 1 && AreAllDifferent(points);
            carried = rings;
        }
        AddPart(part, count, points, allDifferent);
    }
    FlushObject();
}

}  // namespace

void SweepOutsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                      bool doubleSided) {
    SweepWall(TunnelShape.OutsideNodes, segmentIndex, materialIndex, detailStep, true, doubleSided);
}

void SweepInsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                     bool doubleSided) {
    SweepWall(TunnelShape.InsideNodes, segmentIndex, materialIndex, detailStep, doubleSided, true);
}

void CarryContour(const std::vector<Vector3D>& contour, const Matrix3D& world,
                  std::vector<Vector3D>& points) {
    const Matrix3D frame = world;  // a copy, which writing the points can't change
    const std::size_t before = points.size();
    points.resize(before + contour.size());
    for (std::size_t k = 0; k < contour.size(); ++k)
        points[before + k] = MatTransformPoint(frame, contour[k]);
}

}  // namespace boreforge
