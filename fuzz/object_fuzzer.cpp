// Reads objects of any content. Each is refused, or every face belongs to exactly one surface.
#include <cstddef>
#include <cstdint>

#include "scratch_files.h"
#include "shared/ObjectSurfaces.h"

using namespace boreforge;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Object3DS object;
    ObjectDamage damage;
    if (!Read3DSObject(Bytes(data, data + size), object, damage)) {
        Require(damage.byte <= size);
        return 0;
    }
    std::size_t faces = 0;
    for (const ObjectSurface& surface : FindSurfaces(object)) {
        Require(surface.facesWithoutArea <= surface.faceCount);
        Require(surface.innerCapFaces < surface.faceCount);
        faces += surface.faceCount;
    }
    Require(faces == object.faces.size());
    return 0;
}
