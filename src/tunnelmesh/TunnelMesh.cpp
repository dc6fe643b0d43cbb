#include "tunnelmesh/TunnelMesh.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include "editor/TunnelShape.h"
#include "export3ds/VertexIndex.h"
#include "export3ds/mSave3DSObject.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

// The name prefix of every object of a tunnel.
constexpr char kObjectPrefix[] = "SEGT";

// Transforms a contour from shape space to track space and appends it to `points`.
void AppendTransformed(const std::vector<Vector3D>& contour, const Matrix3D& world,
                       std::vector<Vector3D>& points) {
    const Matrix3D frame = world;  // a copy: the compiler can't know that `points` doesn't overlap `world`
    const std::size_t before = points.size();
    points.resize(before + contour.size());
    for (std::size_t k = 0; k < contour.size(); ++k)
        points[before + k] = MatTransformPoint(frame, contour[k]);
}

// Adds the triangles (a, b, c) and (c, d, a) to the open object.
void AddQuad(const Vector3D& a, const Vector3D& b, const Vector3D& c, const Vector3D& d) {
    AddFace(a, b, c, {}, {}, {});
    AddFace(c, d, a, {}, {}, {});
}

// Rings of points, each joined to the next by a band of quads, one for each node.
struct Wall {
    std::vector<Vector3D> points;  // ring after ring
    std::size_t nodes;             // points in a ring
    bool outward, inward;          // which way the quads face; each side has two triangles

    std::size_t QuadCount() const { return points.size() - nodes; }
    std::size_t FacesOfQuad() const { return outward && inward ? 4 : 2; }
};

// The quads of one mesh.
struct Part {
    std::size_t firstNode;             // of the first quad
    std::size_t quads;                 // at least one
    std::span<const Vector3D> points;  // of the rings that they join
};

Part PartOf(const Wall& wall, std::size_t firstQuad) {
    const std::size_t node = firstQuad % wall.nodes;
    const std::size_t quads = std::min(kMaxFacesOfMesh / wall.FacesOfQuad(), wall.QuadCount() - firstQuad);
    const std::size_t bands = (node + quads - 1) / wall.nodes + 1;
    return {node, quads, std::span(wall.points).subspan(firstQuad - node, (bands + 1) * wall.nodes)};
}

// Calls `add` with the four corners of each side of each quad, as indices of the part's points.
template <class Add>
void ForEachSide(const Wall& wall, const Part& part, Add add) {
    std::size_t node = part.firstNode;
    for (std::size_t a = node; a < part.firstNode + part.quads; ++a) {
        node = node + 1 < wall.nodes ? node + 1 : 0;
        const std::size_t b = node > 0 ? a + 1 : a + 1 - wall.nodes;
        const std::size_t c = b + wall.nodes, d = a + wall.nodes;
        if (wall.outward) add(a, d, c, b);
        if (wall.inward) add(b, c, d, a);
    }
}

// Whether no two points are equal and none has a NaN. False also for more points than a mesh can have.
bool AreAllDifferent(std::span<const Vector3D> points) {
    static VertexIndex index;
    if (points.size() > VertexIndex::kMaxVertices) return false;
    index.Clear();
    for (std::size_t i = 0; i < points.size(); ++i)
        if (HasNaN(points[i]) || !index.Store(points, i)) return false;
    return true;
}

// For a part whose points are all different: they are numbered in the order of their first use, as AddFace
// does, but without a search.
void AddPart(const Wall& wall, const Part& part) {
    std::vector<std::int16_t> numbers(part.points.size(), -1);
    std::vector<Vector3D> points;
    std::vector<MeshFace> faces;
    points.reserve(part.points.size());
    faces.reserve(part.quads * wall.FacesOfQuad());
    const auto numberOf = [&](std::size_t point) {
        if (numbers[point] < 0) {
            numbers[point] = static_cast<std::int16_t>(points.size());
            points.push_back(part.points[point]);
        }
        return numbers[point];
    };
    ForEachSide(wall, part, [&](std::size_t p, std::size_t q, std::size_t r, std::size_t s) {
        const std::int16_t a = numberOf(p), b = numberOf(q), c = numberOf(r), d = numberOf(s);
        faces.push_back({a, b, c});
        faces.push_back({c, d, a});
    });
    AddFinishedMesh(std::move(points), std::move(faces));
}

void AddPartByFaces(const Wall& wall, const Part& part) {
    ForEachSide(wall, part, [&](std::size_t p, std::size_t q, std::size_t r, std::size_t s) {
        AddQuad(part.points[p], part.points[q], part.points[r], part.points[s]);
    });
}

void AddWall(const Wall& wall, std::int16_t materialIndex) {
    BeginObject(kObjectPrefix, materialIndex, false, true);
    for (std::size_t quad = 0; quad < wall.QuadCount();) {
        const Part part = PartOf(wall, quad);
        // With one node, a quad's corners are only two points.
        if (wall.nodes > 1 && AreAllDifferent(part.points))
            AddPart(wall, part);
        else
            AddPartByFaces(wall, part);
        quad += part.quads;
    }
    FlushObject();
}

std::size_t BandCount(std::int32_t segmentIndex, std::int32_t detailStep) {
    return 1 + (TracedSegments[segmentIndex].Samples.size() - 1) / static_cast<std::size_t>(detailStep);
}

// The points of a wall's rings.
std::vector<Vector3D> PointsOf(const std::vector<Vector3D>& contour, std::int32_t segmentIndex,
                               std::int32_t detailStep) {
    const auto& samples = TracedSegments[segmentIndex].Samples;
    std::vector<Vector3D> points;
    points.reserve(contour.size() * (BandCount(segmentIndex, detailStep) + 1));
    for (std::size_t s = 0; s < samples.size(); s += static_cast<std::size_t>(detailStep))
        AppendTransformed(contour, samples[s].WorldMatrix, points);
    // The bridge: the next segment's wall starts with the very same ring, so the two meet without a gap.
    const std::int32_t following = segmentIndex + 1 < TrackFile.SegmentCount() ? segmentIndex + 1 : 0;
    AppendTransformed(contour, TracedSegments[following].Samples.front().WorldMatrix, points);
    return points;
}

void CapTunnel(std::int32_t segmentIndex, std::int16_t materialIndex, bool facesAlongTravel,
               bool facesAgainstTravel) {
    const Matrix3D& world = TracedSegments[segmentIndex].Samples.front().WorldMatrix;
    BeginObject(kObjectPrefix, materialIndex, false, true);
    std::vector<Vector3D> inner, outer;
    AppendTransformed(TunnelShape.InsideNodes, world, inner);
    AppendTransformed(TunnelShape.OutsideNodes, world, outer);
    for (std::size_t k = 0; k < inner.size(); ++k) {
        const std::size_t k2 = k + 1 < inner.size() ? k + 1 : 0;
        if (facesAlongTravel) AddQuad(inner[k], inner[k2], outer[k2], outer[k]);
        if (facesAgainstTravel) AddQuad(inner[k], outer[k], outer[k2], inner[k2]);
    }
    FlushObject();
}

}  // namespace

void SweepOutsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                      bool doubleSided) {
    const auto& contour = TunnelShape.OutsideNodes;
    AddWall({.points = PointsOf(contour, segmentIndex, detailStep),
             .nodes = contour.size(),
             .outward = true,
             .inward = doubleSided},
            materialIndex);
}

void SweepInsideWall(std::int32_t segmentIndex, std::int16_t materialIndex, std::int32_t detailStep,
                     bool doubleSided) {
    const auto& contour = TunnelShape.InsideNodes;
    AddWall({.points = PointsOf(contour, segmentIndex, detailStep),
             .nodes = contour.size(),
             .outward = doubleSided,
             .inward = true},
            materialIndex);
}

WallSize SizeOfWall(const std::vector<Vector3D>& contour, std::int32_t segmentIndex, std::int32_t detailStep,
                    bool doubleSided) {
    const auto sides = static_cast<std::int64_t>(BandCount(segmentIndex, detailStep)) * (doubleSided ? 2 : 1);
    const auto nodes = std::ssize(contour),
               finite = std::ranges::count_if(contour, [](const Vector3D&v) { return IsFinite(v); });
    // In each band a node belongs to two quads, each of which uses it for three corners of triangles.
    return {.faces = 2 * sides * nodes, .unsharedPoints = 6 * sides * (nodes - finite)};
}

void CapTunnelEntry(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided) {
    CapTunnel(segmentIndex, materialIndex, doubleSided, true);
}

void CapTunnelExit(std::int32_t segmentIndex, std::int16_t materialIndex, bool doubleSided) {
    CapTunnel(segmentIndex, materialIndex, true, doubleSided);
}

}  // namespace boreforge
