// The model that a tunnel job builds in memory, and the buffer that gathers the triangles of one object,
// shares equal vertices and makes a mesh of every 10,000 faces. Positions are in track space and its axes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Values.h"
#include "tracing/mMath3D.h"

namespace boreforge {

struct TexCoord {
    float u = 0;
    float v = 0;
};

// Vertex indices in the order given: 16 bits in a finished mesh, 32 in the buffer.
struct MeshFace {
    std::int16_t a = 0, b = 0, c = 0;
    friend bool operator==(const MeshFace&, const MeshFace&) = default;
};
struct BufferFace {
    std::int32_t a = 0, b = 0, c = 0;
};

// Percentages run from 0 to 100.
struct Material3DS {
    std::string Name;
    ColorRGB Ambient, Diffuse, Specular;
    std::int16_t Shininess = 0;
    std::int16_t ShininessStrength = 0;
    std::int16_t Transparency = 0;
    std::int16_t TransparencyFalloff = 0;
    std::int16_t ReflectionBlur = 0;
    std::int16_t Shading = 3;  // Phong
    std::int16_t SelfIllumination = 0;
    float WireSize = 1;
};

struct Mesh3DS {
    std::string Name;
    std::int32_t MaterialIndex = -1;  // the material of the whole mesh
    std::vector<Vector3D> Points;
    std::vector<TexCoord> TexCoords;  // empty, or one for each point
    std::vector<MeshFace> Faces;
    // The smoothing group mask of each face. Empty means all 0, as in every sweep: storing the zeros took a
    // fifth of a job's peak memory.
    std::vector<std::int32_t> SmoothGroups;
    bool HasTexCoords = false;
    std::int16_t PointCount() const { return static_cast<std::int16_t>(Points.size()); }
    std::int16_t TexCoordCount() const { return static_cast<std::int16_t>(TexCoords.size()); }
    std::int16_t FaceCount() const { return static_cast<std::int16_t>(Faces.size()); }
};

struct Model3DSState {
    std::vector<Material3DS> Materials;
    std::vector<Mesh3DS> Meshes;
    std::int32_t MaterialCount() const { return static_cast<std::int32_t>(Materials.size()); }
    std::int32_t MeshCount() const { return static_cast<std::int32_t>(Meshes.size()); }
};

struct ObjectBufferState {
    std::vector<Vector3D> Points;     // in the order of their first use
    std::vector<TexCoord> TexCoords;  // stored along with each point
    std::vector<BufferFace> Faces;
    std::string NamePrefix;
    std::int16_t MaterialIndex = 0;
    bool HasTexCoords = false;
    std::int32_t PointCount() const { return static_cast<std::int32_t>(Points.size()); }
    std::int32_t FaceCount() const { return static_cast<std::int32_t>(Faces.size()); }
};

extern Model3DSState Model3DS;
extern ObjectBufferState ObjectBuffer;

// The number in the name of the next mesh. It isn't reset between the objects of a job.
extern std::int32_t ObjectPartNumber;

// A mesh takes at most this many faces, so that each of its vertices has a 16-bit index.
inline constexpr std::int32_t kMaxFacesOfMesh = 10000;

// Empties the materials and the meshes; buffer and ObjectPartNumber stay.
void ResetModel();

// Appends a material named "MATER000", "MATER001" and so on; returns its index. Percentages from 0 to 100.
std::int16_t AddMaterial(const ColorRGB& ambient, const ColorRGB& diffuse, const ColorRGB& specular,
                         std::int16_t shininess, std::int16_t shininessStrength, std::int16_t transparency);

// Opens an empty buffer. If hasTexCoords is false, texture coordinates stay in the buffer and don't get into
// the mesh. If keepPartNumber is false, the numbers in mesh names start from 0 again.
void BeginObject(const std::string& namePrefix, std::int16_t materialIndex, bool hasTexCoords,
                 bool keepPartNumber);

// Adds a triangle to the buffer, with its vertices in the order given and without any test of its shape.
// Reuses the latest stored vertex with the same coordinates, along with its texture coordinate, but never one
// of the same face. The 10,000th face flushes the buffer.
void AddFace(const Vector3D& p1, const Vector3D& p2, const Vector3D& p3, const TexCoord& t1,
             const TexCoord& t2, const TexCoord& t3);

// Makes a mesh of the buffer, named by the prefix and ObjectPartNumber in at least four digits, and opens the
// buffer again for the same object. An empty buffer makes no mesh and takes no number.
void FlushObject();

// Adds a finished mesh without texture coordinates to the open object, named and numbered like those that
// FlushObject makes. The buffer must be empty.
void AddFinishedMesh(std::vector<Vector3D> points, std::vector<MeshFace> faces);

// Build a mesh one element at a time; FlushObject builds one from whole arrays. Each call returns the index
// of what it appended. meshIndex must come from AddMesh, and materialIndex from AddMaterial.
std::int32_t AddMesh(const std::string& name, std::int16_t materialIndex);
std::int16_t AddMeshPoint(const Vector3D& point, std::int32_t meshIndex);
std::int16_t AddMeshTexCoord(const TexCoord& coord, std::int32_t meshIndex);
std::int16_t AddMeshFace(std::int16_t a, std::int16_t b, std::int16_t c, std::int32_t smoothGroups,
                         std::int32_t meshIndex);

}  // namespace boreforge
