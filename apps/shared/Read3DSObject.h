// Reads a mesh file of the published 3D Studio format (.3ds) and trusts nothing in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Bytes.h"
#include "base/Values.h"
#include "tracing/mMath3D.h"

namespace boreforge {

struct ObjectMaterial {
    std::string name;
    ColorRGB color;        // the diffuse one
    int transparency = 0;  // percent
};

struct ObjectFace {
    std::uint32_t a = 0, b = 0, c = 0;  // indices into points
    std::uint32_t material = 0;         // index into materials
};

// All meshes of a file in one, in the track's axes.
struct Object3DS {
    std::vector<ObjectMaterial> materials;
    std::vector<Vector3D> points;
    std::vector<ObjectFace> faces;
    std::size_t meshCount = 0;
};

// What is wrong with a file, and where.
struct ObjectDamage {
    std::size_t byte = 0;
    std::string reason;
    bool isCoordinate = false;  // only a coordinate is unusable; the rest of the file is sound
};
std::string DamageText(const ObjectDamage& damage);

// Fills `object` from a whole file, which may have no faces. False, with the reason in `damage` and an empty
// object, if the file is damaged or isn't of this format. The lengths of nested chunks must add up and match
// the counts. Coordinates must be finite and at most 1e12, and names of objects and materials unique. Each
// face must have one material, and its vertices and material must exist. Unknown chunks are skipped, as the
// format demands.
[[nodiscard]] bool Read3DSObject(const Bytes& file, Object3DS& object, ObjectDamage& damage);

}  // namespace boreforge
