// The surfaces of an object: what hangs together, whether it is closed, and which way it faces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "export3ds/Read3DSObject.h"

namespace boreforge {

enum class Facing {
    NotJudged,  // not closed, double-sided, or without volume
    Outwards,
    Inwards,
    Mixed,  // faces with a common edge face opposite ways
};

// A box, in the track's axes.
struct ObjectBounds {
    Vector3D Low, High;
};

// Faces that share points, whichever meshes they are in. Points are shared when their coordinates are equal.
// An edge has its faces counted without those that have two equal corners, which no edge needs.
struct ObjectSurface {
    std::size_t FaceCount = 0;
    std::size_t FacesWithoutArea = 0;  // with two equal corners
    std::size_t EdgeCount = 0;
    std::size_t OpenEdges = 0;      // of one face
    std::size_t CrowdedEdges = 0;   // of more than two faces
    std::size_t OpposedEdges = 0;   // of two faces that face opposite ways
    std::size_t DoubledEdges = 0;   // of four or more faces, half of them facing each way
    std::size_t InnerCapFaces = 0;  // faces of a cap inside the wall, see FindSurfaces
    double Volume = 0;              // in cubic units, negative when it faces inwards; only if that is judged
    Facing Faces = Facing::NotJudged;
    ObjectBounds Bounds;
    std::vector<std::uint32_t> Materials;  // indices, ascending

    bool IsClosed() const { return EdgeCount > 0 && OpenEdges == 0; }
    // Walls that can be seen from both sides have four faces at each edge, except along the diagonals, where
    // the quads of the two sides are divided differently, and at open ends.
    bool IsDoubleSided() const { return DoubledEdges > 0 && 3 * DoubledEdges >= EdgeCount; }
    bool FacesWrongly() const { return Faces == Facing::Inwards || Faces == Facing::Mixed; }
};

// The surfaces of an object, in the order of their first faces. A tunnel over the start of the track has a
// cap in its wall there, which closes nothing: faces without which every edge has two faces. Facing and
// volume are those of the surface without it.
std::vector<ObjectSurface> FindSurfaces(const Object3DS& object);

// The box around all points, of which there must be one.
ObjectBounds BoundsOf(const Object3DS& object);

}  // namespace boreforge
