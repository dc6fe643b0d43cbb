// Reads a mesh file of the published 3D Studio format (.3ds) and trusts nothing in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Values.h"
#include "platform/Bytes.h"
#include "tracing/mMath3D.h"

namespace boreforge {

struct ObjectFace {
    std::uint32_t a = 0, b = 0, c = 0;  // indices into Points
    std::uint32_t Material = 0;         // index into Colors
};

// All meshes of a file in one, in the track's axes.
struct PictureObject {
    std::vector<ColorRGB> Colors;  // the diffuse colour of each material
    std::vector<Vector3D> Points;
    std::vector<ObjectFace> Faces;
};

// Fills `object` from a whole file. False when the file is damaged, or is none of this format, or has no
// face: `damage` then says what is wrong and where. Lengths of nested chunks must add up, counts must match
// them, coordinates be finite, vertices, faces and materials that are referred to exist, and each face have
// one material. Chunks of other kinds are passed over, as the format asks of its readers.
bool ReadPictureObject(const Bytes& file, PictureObject& object, std::string& damage);

}  // namespace boreforge
