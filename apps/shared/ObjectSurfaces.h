// The surfaces of an object: which faces are connected, whether they are closed, and which way they face.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "shared/Read3DSObject.h"

namespace boreforge {

enum class Facing {
    NotJudged,  // not closed, double-sided, or without volume
    Outwards,
    Inwards,
    Mixed,  // faces with a common edge face opposite ways
};

// A box, in the track's axes.
struct ObjectBounds {
    Vector3D low, high;
};

// Faces connected by shared points, across all meshes. Points with equal coordinates are shared. Faces
// without area don't count as faces of an edge.
struct ObjectSurface {
    std::size_t faceCount = 0;
    std::size_t facesWithoutArea = 0;  // with two equal corners
    std::size_t edgeCount = 0;
    std::size_t openEdges = 0;      // with one face
    std::size_t crowdedEdges = 0;   // with more than two faces
    std::size_t opposedEdges = 0;   // with two faces that face opposite ways
    std::size_t doubledEdges = 0;   // with four or more faces, half of them facing each way
    std::size_t innerCapFaces = 0;  // faces of a cap inside the wall, see FindSurfaces
    double volume =
        0;  // in cubic units, negative if facing inwards; meaningful only if facing is Outwards or Inwards
    Facing facing = Facing::NotJudged;
    ObjectBounds bounds;
    std::vector<std::uint32_t> materials;  // indices, ascending

    bool IsClosed() const { return edgeCount > 0 && openEdges == 0; }
    // Double-sided walls have four faces at each edge. The exceptions are open ends and the diagonals of the
    // quads, which the two sides split differently.
    bool IsDoubleSided() const { return doubledEdges > 0 && 3 * doubledEdges >= edgeCount; }
    bool FacesWrongly() const { return facing == Facing::Inwards || facing == Facing::Mixed; }
};

// The surfaces of an object, in the order of their first faces. A tunnel across the start of the track has a
// cap inside its wall there, which gives the edges around it a third face. Facing and volume are those of the
// surface without the cap.
std::vector<ObjectSurface> FindSurfaces(const Object3DS& object);

// The box around all points. There must be at least one.
ObjectBounds BoundsOf(const Object3DS& object);

}  // namespace boreforge
