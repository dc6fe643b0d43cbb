#include "export3ds/Save3DSFile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>

#include "export3ds/ChunkIds.h"
#include "export3ds/mSave3DSObject.h"

namespace boreforge {

namespace {

constexpr std::int32_t kHeaderLength = 6;  // of every chunk: id and length
constexpr std::int32_t kVersionLength = kHeaderLength + 4;
constexpr std::int32_t kScaleLength = kHeaderLength + 4;
constexpr std::int32_t kColorLength = kHeaderLength + 3;
constexpr std::int32_t kPercentLength = kHeaderLength + 2;
constexpr std::int32_t kMatrixLength = kHeaderLength + 12 * 4;

constexpr std::uint32_t kFormatVersion = 3;
constexpr std::uint32_t kMasterScaleBits = 0x421D7AF6;   // 39.37008, inches to the metre
constexpr std::uint32_t kMatrixOriginBits = 0x3A83126F;  // 0.001
constexpr std::int16_t kAllEdgesVisible = 7;

std::int64_t MaterialNameLength(const Material3DS& material) {
    return kHeaderLength + std::ssize(material.Name) + 1;
}

std::int64_t MaterialLength(const Material3DS& material) {
    return kHeaderLength + MaterialNameLength(material) + 3 * (kHeaderLength + kColorLength) +
           6 * (kHeaderLength + kPercentLength) + (kHeaderLength + 2) + (kHeaderLength + 4);
}

const Material3DS& MaterialOf(const Mesh3DS& mesh) { return Model3DS.Materials[mesh.MaterialIndex]; }

// The lengths of one mesh's chunks, each stated once.
struct MeshLengths {
    std::int64_t points, texCoords, materialGroup, smoothGroups, faces, triObject, object;

    explicit MeshLengths(const Mesh3DS& mesh)
        : points(kHeaderLength + 2 + kPointBytes * std::ssize(mesh.Points)),
          texCoords(mesh.HasTexCoords ? kHeaderLength + 2 + 8 * std::ssize(mesh.TexCoords) : 0),
          materialGroup(MaterialNameLength(MaterialOf(mesh)) + 2 + 2 * std::ssize(mesh.Faces)),
          smoothGroups(kHeaderLength + 4 * std::ssize(mesh.Faces)),
          faces(kHeaderLength + 2 + 8 * std::ssize(mesh.Faces) + materialGroup + smoothGroups),
          triObject(kHeaderLength + points + texCoords + kMatrixLength + faces),
          object(kHeaderLength + std::ssize(mesh.Name) + 1 + triObject) {}
};

std::int64_t MeshDataLength() {
    std::int64_t length = kHeaderLength + kVersionLength + kScaleLength;
    for (const Material3DS& material : Model3DS.Materials)
        length += MaterialLength(material);
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        length += MeshLengths(mesh).object;
    return length;
}

std::int64_t FileLength() { return kHeaderLength + kVersionLength + MeshDataLength(); }

// Stores a number little-endian and returns the position after it.
template <class Number>
std::uint8_t* Store(std::uint8_t* at, Number value) {
    std::memcpy(at, &value, sizeof value);
    if constexpr (std::endian::native == std::endian::big) std::reverse(at, at + sizeof value);
    return at + sizeof value;
}

// Rounds to six decimal places, ties to even, and never to -0. From 16 on, neighbouring floats are more than
// 1e-6 apart. Below that, adding and subtracting 1.5 * 2^52 rounds the 64-bit product to a whole number just
// as nearbyint does, without a call of the C library for each coordinate.
float RoundToSixPlaces(float value) {
    constexpr double kRoundingShift = 6755399441055744.0;
    if (!(std::fabs(value) < 16)) return value;  // or NaN
    return static_cast<float>(((value * 1e6 + kRoundingShift) - kRoundingShift) / 1e6);
}

void PutFloat(float value, OutputFile& file) { Store(file.Claim(4), value); }

void PutNestedColor(ChunkId id, const ColorRGB& color, OutputFile& file) {
    PutChunkHeader(id, kHeaderLength + kColorLength, file);
    PutColorChunk(color.red, color.green, color.blue, file);
}

void PutNestedPercent(ChunkId id, std::int16_t value, OutputFile& file) {
    PutChunkHeader(id, kHeaderLength + kPercentLength, file);
    PutPercentChunk(value, file);
}

void PutMaterial(const Material3DS& material, OutputFile& file) {
    PutChunkHeader(MAT_ENTRY, MaterialLength(material), file);
    PutChunkHeader(MAT_NAME, MaterialNameLength(material), file);
    PutZString(material.Name, file);
    PutNestedColor(MAT_AMBIENT, material.Ambient, file);
    PutNestedColor(MAT_DIFFUSE, material.Diffuse, file);
    PutNestedColor(MAT_SPECULAR, material.Specular, file);
    PutNestedPercent(MAT_SHININESS, material.Shininess, file);
    PutNestedPercent(MAT_SHIN2PCT, material.ShininessStrength, file);
    PutNestedPercent(MAT_TRANSPARENCY, material.Transparency, file);
    PutNestedPercent(MAT_XPFALL, material.TransparencyFalloff, file);
    PutNestedPercent(MAT_REFBLUR, material.ReflectionBlur, file);
    PutChunkHeader(MAT_SHADING, kHeaderLength + 2, file);
    PutWord(static_cast<std::uint16_t>(material.Shading), file);
    PutNestedPercent(MAT_SELF_ILPCT, material.SelfIllumination, file);
    PutChunkHeader(MAT_WIRESIZE, kHeaderLength + 4, file);
    PutFloat(material.WireSize, file);
}

// The file's axes are x to the right, y forward and z up: the track's axes rotated, so the winding of the
// faces stays the same.
void PutPoints(const Mesh3DS& mesh, std::int64_t length, OutputFile& file) {
    PutChunkHeader(POINT_ARRAY, length, file);
    PutWord(static_cast<std::uint16_t>(mesh.PointCount()), file);
    for (const Vector3D& point : mesh.Points)
        PutPoint3(RoundToSixPlaces(point.x), RoundToSixPlaces(-point.z), RoundToSixPlaces(point.y), file);
}

void PutTexCoords(const Mesh3DS& mesh, std::int64_t length, OutputFile& file) {
    PutChunkHeader(TEX_VERTS, length, file);
    PutWord(static_cast<std::uint16_t>(mesh.TexCoordCount()), file);
    for (const TexCoord& coord : mesh.TexCoords) {
        PutFloat(coord.u, file);
        PutFloat(coord.v, file);
    }
}

// The same for every mesh; the points are not adjusted for it.
void PutMatrix(OutputFile& file) {
    PutChunkHeader(MESH_MATRIX, kMatrixLength, file);
    for (int row = 0; row < 3; ++row)
        PutPoint3(row == 0 ? 1 : 0, row == 1 ? 1 : 0, row == 2 ? 1 : 0, file);
    for (int column = 0; column < 3; ++column)
        PutDword(kMatrixOriginBits, file);
}

void PutFaces(const Mesh3DS& mesh, const MeshLengths& lengths, OutputFile& file) {
    const auto count = static_cast<std::uint16_t>(mesh.FaceCount());
    PutChunkHeader(FACE_ARRAY, lengths.faces, file);
    PutWord(count, file);
    for (const MeshFace& face : mesh.Faces) {
        std::uint8_t* const bytes = file.Claim(8);
        Store(Store(Store(Store(bytes, face.a), face.b), face.c), kAllEdgesVisible);
    }

    PutChunkHeader(MSH_MAT_GROUP, lengths.materialGroup, file);
    PutZString(MaterialOf(mesh).Name, file);
    PutWord(count, file);
    for (std::size_t i = 0; i < mesh.Faces.size(); ++i)
        PutWord(static_cast<std::uint16_t>(i), file);

    PutChunkHeader(SMOOTH_GROUP, lengths.smoothGroups, file);
    for (std::size_t i = 0; i < mesh.Faces.size(); ++i)
        PutDword(mesh.SmoothGroups.empty() ? 0 : static_cast<std::uint32_t>(mesh.SmoothGroups[i]), file);
}

void PutMesh(const Mesh3DS& mesh, OutputFile& file) {
    const MeshLengths lengths(mesh);
    PutChunkHeader(NAMED_OBJECT, lengths.object, file);
    PutZString(mesh.Name, file);
    PutChunkHeader(N_TRI_OBJECT, lengths.triObject, file);
    PutPoints(mesh, lengths.points, file);
    if (mesh.HasTexCoords) PutTexCoords(mesh, lengths.texCoords, file);
    PutMatrix(file);
    PutFaces(mesh, lengths, file);
}

void PutVersion(ChunkId id, OutputFile& file) {
    PutChunkHeader(id, kVersionLength, file);
    PutDword(kFormatVersion, file);
}

}  // namespace

void PutChunkHeader(std::uint16_t id, std::int64_t length, OutputFile& file) {
    Store(Store(file.Claim(kHeaderLength), id), static_cast<std::int32_t>(length));
}

void PutWord(std::uint16_t value, OutputFile& file) { Store(file.Claim(2), value); }

void PutDword(std::uint32_t value, OutputFile& file) { Store(file.Claim(4), value); }

void PutPoint3(float x, float y, float z, OutputFile& file) { Store(Store(Store(file.Claim(12), x), y), z); }

void PutZString(const std::string& text, OutputFile& file) {
    file.Write({reinterpret_cast<const std::uint8_t*>(text.c_str()), text.size() + 1});
}

void PutColorChunk(std::uint8_t red, std::uint8_t green, std::uint8_t blue, OutputFile& file) {
    PutChunkHeader(COLOR_24, kColorLength, file);
    std::uint8_t* const bytes = file.Claim(3);
    bytes[0] = red;
    bytes[1] = green;
    bytes[2] = blue;
}

void PutPercentChunk(std::int16_t value, OutputFile& file) {
    PutChunkHeader(INT_PERCENTAGE, kPercentLength, file);
    PutWord(static_cast<std::uint16_t>(value), file);
}

std::int32_t Compute3DSLength() {
    const std::int64_t length = FileLength();
    if (Model3DS.MeshCount() > kMaxMeshes) return -1;
    return length <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(length) : -1;
}

Outcome Write3DSFile(OutputFile& file) {
    const std::int32_t length = Compute3DSLength();
    if (length < 0) return Failure{.reason = "It would be too large."};
    PutChunkHeader(MAIN3DS, length, file);
    PutVersion(M3D_VERSION, file);
    PutChunkHeader(MDATA, MeshDataLength(), file);
    PutVersion(MESH_VERSION, file);
    for (const Material3DS& material : Model3DS.Materials)
        PutMaterial(material, file);
    PutChunkHeader(MASTER_SCALE, kScaleLength, file);
    PutDword(kMasterScaleBits, file);
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        PutMesh(mesh, file);
    return {};
}

Outcome Save3DSFile(const std::string& fileName, const SaveRules& rules) {
    return SaveFile(fileName, rules, Write3DSFile);
}

}  // namespace boreforge
