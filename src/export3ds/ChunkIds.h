// The chunks of a .3ds file.
#pragma once

#include <cstdint>

namespace boreforge {

// Their ids, with the names of the published format.
enum ChunkId : std::uint16_t {
    MAIN3DS = 0x4D4D,
    M3D_VERSION = 0x0002,
    MDATA = 0x3D3D,
    MESH_VERSION = 0x3D3E,
    MASTER_SCALE = 0x0100,
    COLOR_24 = 0x0011,
    INT_PERCENTAGE = 0x0030,
    MAT_ENTRY = 0xAFFF,
    MAT_NAME = 0xA000,
    MAT_AMBIENT = 0xA010,
    MAT_DIFFUSE = 0xA020,
    MAT_SPECULAR = 0xA030,
    MAT_SHININESS = 0xA040,
    MAT_SHIN2PCT = 0xA041,
    MAT_TRANSPARENCY = 0xA050,
    MAT_XPFALL = 0xA052,
    MAT_REFBLUR = 0xA053,
    MAT_SELF_ILPCT = 0xA084,
    MAT_WIRESIZE = 0xA087,
    MAT_SHADING = 0xA100,
    NAMED_OBJECT = 0x4000,
    N_TRI_OBJECT = 0x4100,
    POINT_ARRAY = 0x4110,
    FACE_ARRAY = 0x4120,
    MSH_MAT_GROUP = 0x4130,
    TEX_VERTS = 0x4140,
    SMOOTH_GROUP = 0x4150,
    MESH_MATRIX = 0x4160,
};

}  // namespace boreforge
