#include "shared/ObjectSurfaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

#include "shared/Vec.h"

namespace boreforge {

namespace {

// Disjoint sets of numbers that can be joined. The smallest number of a set represents it.
class DisjointSets {
  public:
    explicit DisjointSets(std::size_t count) : parents_(count) {
        std::iota(parents_.begin(), parents_.end(), std::uint32_t{0});
    }
    std::uint32_t Find(std::uint32_t number) {
        while (parents_[number] != number)
            number = parents_[number] = parents_[parents_[number]];
        return number;
    }
    void Join(std::uint32_t one, std::uint32_t other) {
        one = Find(one);
        other = Find(other);
        parents_[std::max(one, other)] = std::min(one, other);
    }

  private:
    std::vector<std::uint32_t> parents_;
};

// Maps each point to the first one that is equal to it.
std::vector<std::uint32_t> MergeEqualPoints(const std::vector<Vector3D>& points) {
    std::vector<std::uint32_t> order(points.size()), merged(points.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    const auto key = [&](std::uint32_t i) { return std::tuple(points[i].x, points[i].y, points[i].z, i); };
    std::sort(order.begin(), order.end(), [&](auto one, auto other) { return key(one) < key(other); });
    for (std::size_t i = 0; i < order.size(); ++i)
        merged[order[i]] =
            i > 0 && points[order[i]] == points[order[i - 1]] ? merged[order[i - 1]] : order[i];
    return merged;
}

// An edge of one face.
struct EdgeUse {
    std::uint64_t points;  // the lower one's number in the upper half
    std::uint32_t face;
    bool ascending;  // the face goes from the lower point to the higher one along it
};

using Edge = std::span<const EdgeUse>;  // the uses by all faces with this edge

void Include(ObjectBounds& bounds, const Vector3D& p) {
    bounds.low = {std::min(bounds.low.x, p.x), std::min(bounds.low.y, p.y), std::min(bounds.low.z, p.z)};
    bounds.high = {std::max(bounds.high.x, p.x), std::max(bounds.high.y, p.y), std::max(bounds.high.z, p.z)};
}

class SurfaceFinder {
  public:
    explicit SurfaceFinder(const Object3DS& object)
        : object_(object),
          merged_(MergeEqualPoints(object.points)),
          surfaceOf_(object.faces.size()),
          patches_(object.faces.size()) {}

    std::vector<ObjectSurface> Find() {
        SortFacesIntoSurfaces();
        ListEdges();
        for (const Edge edge : edges_)
            CountEdge(edge);
        FindInnerCaps();
        MeasureVolumes();
        for (std::size_t i = 0; i < surfaces_.size(); ++i)
            surfaces_[i].facing = Judge(i);
        return std::move(surfaces_);
    }

  private:
    // The corners of a face; equal points count as one.
    std::array<std::uint32_t, 3> Corners(std::size_t face) const {
        const ObjectFace& f = object_.faces[face];
        return {merged_[f.a], merged_[f.b], merged_[f.c]};
    }

    void SortFacesIntoSurfaces() {
        DisjointSets connected(object_.points.size());
        for (std::size_t i = 0; i < object_.faces.size(); ++i) {
            const auto [a, b, c] = Corners(i);
            connected.Join(a, b);
            connected.Join(b, c);
        }
        constexpr std::uint32_t kNone = 0xFFFFFFFF;
        std::vector<std::uint32_t> surfaceOfPoint(object_.points.size(), kNone);
        for (std::size_t i = 0; i < object_.faces.size(); ++i) {
            std::uint32_t& surface = surfaceOfPoint[connected.Find(Corners(i)[0])];
            if (surface == kNone) {
                surface = static_cast<std::uint32_t>(surfaces_.size());
                const Vector3D& first = object_.points[Corners(i)[0]];
                surfaces_.emplace_back().bounds = {first, first};
            }
            surfaceOf_[i] = surface;
            AddFace(i, surfaces_[surface]);
        }
        for (ObjectSurface& surface : surfaces_) {
            std::vector<std::uint32_t>& materials = surface.materials;
            std::ranges::sort(materials);
            materials.erase(std::unique(materials.begin(), materials.end()), materials.end());
        }
        capOf_.resize(surfaces_.size());
    }

    void AddFace(std::size_t face, ObjectSurface& surface) const {
        ++surface.faceCount;
        surface.facesWithoutArea += HasArea(face) ? 0 : 1;
        for (const std::uint32_t corner : Corners(face))
            Include(surface.bounds, object_.points[corner]);
        surface.materials.push_back(object_.faces[face].material);
    }

    bool HasArea(std::size_t face) const {
        const auto [a, b, c] = Corners(face);
        return a != b && b != c && c != a;
    }

    void ListEdges() {
        uses_.reserve(3 * object_.faces.size());
        for (std::size_t i = 0; i < object_.faces.size(); ++i) {
            if (!HasArea(i)) continue;
            const auto [a, b, c] = Corners(i);
            for (const auto& [from, to] : {std::pair(a, b), std::pair(b, c), std::pair(c, a)})
                uses_.push_back({std::uint64_t{std::min(from, to)} << 32 | std::max(from, to),
                                 static_cast<std::uint32_t>(i), from < to});
        }
        std::ranges::stable_sort(uses_, {}, &EdgeUse::points);
        for (auto first = uses_.begin(); first != uses_.end();) {
            const auto isOther = [&](const EdgeUse& use) { return use.points != first->points; };
            const auto last = std::find_if(first, uses_.end(), isOther);
            edges_.emplace_back(first, last);
            first = last;
        }
    }

    ObjectSurface& SurfaceOf(Edge edge) { return surfaces_[surfaceOf_[edge.front().face]]; }

    void CountEdge(Edge edge) {
        ObjectSurface& surface = SurfaceOf(edge);
        const auto ascending = std::ranges::count(edge, true, &EdgeUse::ascending);
        const bool balanced = 2 * static_cast<std::size_t>(ascending) == edge.size();
        ++surface.edgeCount;
        surface.openEdges += edge.size() == 1 ? 1 : 0;
        surface.crowdedEdges += edge.size() > 2 ? 1 : 0;
        surface.opposedEdges += edge.size() == 2 && !balanced ? 1 : 0;
        surface.doubledEdges += edge.size() >= 4 && balanced ? 1 : 0;
        if (edge.size() == 2) patches_.Join(edge[0].face, edge[1].face);
    }

    // A patch is a set of faces connected by edges with exactly two faces. At the edges of a cap inside the
    // wall three patches meet: the cap and the two parts of the wall. The cap is the smallest of them.
    void FindInnerCaps() {
        std::vector<std::vector<Edge>> crowded(surfaces_.size());
        for (const Edge edge : edges_)
            if (edge.size() > 2) crowded[surfaceOf_[edge.front().face]].push_back(edge);
        std::vector<std::uint32_t> facesOf(object_.faces.size());
        for (std::uint32_t i = 0; i < object_.faces.size(); ++i)
            ++facesOf[patches_.Find(i)];
        for (std::size_t i = 0; i < surfaces_.size(); ++i) {
            // At each edge of a cap exactly three faces meet, so more at the first one rule it out.
            if (crowded[i].empty() || crowded[i].front().size() > 3 || !surfaces_[i].IsClosed()) continue;
            for (const EdgeUse& use : crowded[i].front()) {
                const std::uint32_t patch = patches_.Find(use.face);
                const std::size_t faces = facesOf[patch];
                if ((capOf_[i] && faces >= surfaces_[i].innerCapFaces) || !IsInnerCap(patch, crowded[i]))
                    continue;
                capOf_[i] = patch;
                surfaces_[i].innerCapFaces = faces;
            }
        }
    }

    // Whether each of the edges has one face of the patch and two others, which face the same way.
    bool IsInnerCap(std::uint32_t patch, const std::vector<Edge>& edges) {
        return std::ranges::all_of(edges, [&](Edge edge) {
            std::size_t ofPatch = 0, ascending = 0;
            for (const EdgeUse& use : edge) {
                const bool isOfPatch = patches_.Find(use.face) == patch;
                ofPatch += isOfPatch ? 1 : 0;
                ascending += !isOfPatch && use.ascending ? 1 : 0;
            }
            return edge.size() == 3 && ofPatch == 1 && ascending == 1;
        });
    }

    // Sums the signed volumes of the tetrahedra between the faces and a corner of the bounds.
    void MeasureVolumes() {
        volumeSizes_.resize(surfaces_.size());
        for (std::uint32_t i = 0; i < object_.faces.size(); ++i) {
            const std::uint32_t index = surfaceOf_[i];
            if (capOf_[index] == patches_.Find(i)) continue;
            const double volume = VolumeBelow(i, surfaces_[index].bounds.low);
            surfaces_[index].volume += volume;
            volumeSizes_[index] += std::fabs(volume);
        }
    }

    double VolumeBelow(std::size_t face, const Vector3D& apex) const {
        Vec corners[3];
        for (std::size_t i = 0; i < 3; ++i)
            corners[i] = ToVec(object_.points[Corners(face)[i]]) - ToVec(apex);
        return Dot(corners[0], Cross(corners[1], corners[2])) / 6;
    }

    Facing Judge(std::size_t index) const {
        const ObjectSurface& surface = surfaces_[index];
        if (surface.opposedEdges > 0) return Facing::Mixed;
        const bool isPlain = surface.crowdedEdges == 0 || capOf_[index];
        // Far above the sum's rounding error, far below the volume of any wall.
        const bool hasVolume = std::fabs(surface.volume) > 1e-9 * volumeSizes_[index];
        if (!surface.IsClosed() || !isPlain || !hasVolume) return Facing::NotJudged;
        return surface.volume > 0 ? Facing::Outwards : Facing::Inwards;
    }

    const Object3DS& object_;
    const std::vector<std::uint32_t> merged_;
    std::vector<ObjectSurface> surfaces_;
    std::vector<std::uint32_t> surfaceOf_;             // of each face
    std::vector<EdgeUse> uses_;                        // sorted, so that those of an edge are neighbours
    std::vector<Edge> edges_;                          // parts of uses_
    DisjointSets patches_;                             // of faces
    std::vector<std::optional<std::uint32_t>> capOf_;  // the patch that is each surface's inner cap
    std::vector<double> volumeSizes_;                  // sums of the absolute volumes of the tetrahedra
};

}  // namespace

std::vector<ObjectSurface> FindSurfaces(const Object3DS& object) { return SurfaceFinder(object).Find(); }

ObjectBounds BoundsOf(const Object3DS& object) {
    ObjectBounds bounds{object.points.front(), object.points.front()};
    for (const Vector3D& point : object.points)
        Include(bounds, point);
    return bounds;
}

}  // namespace boreforge
