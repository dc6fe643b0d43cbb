// The scene that a tunnel job builds in memory, and the buffer that gathers the triangles of one object,
// shares equal vertices and makes a mesh of every 10,000 faces. Positions are in track space and its axes.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <memory_resource>
#include <span>
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

// Where the arrays of the meshes live; ResetModel gives it all back at once.
std::pmr::memory_resource* ModelMemory();

struct Mesh3DS {
    std::string Name;
    std::int32_t MaterialIndex = -1;  // the material of the whole mesh
    std::pmr::vector<Vector3D> Points{ModelMemory()};
    std::pmr::vector<TexCoord> TexCoords{ModelMemory()};  // none, or one for each point
    std::span<const MeshFace> Faces;                      // in the model's memory; meshes may show the same
    std::pmr::vector<MeshFace> OwnFaces{ModelMemory()};   // of a mesh that shows no faces of others
    // The smoothing group mask of each face. Empty means all 0, as every sweep makes them; kept, they were a
    // fifth of a job's peak memory.
    std::pmr::vector<std::int32_t> SmoothGroups{ModelMemory()};
    bool HasTexCoords = false;
    std::int16_t PointCount() const { return static_cast<std::int16_t>(Points.size()); }
    std::int16_t TexCoordCount() const { return static_cast<std::int16_t>(TexCoords.size()); }
    std::int16_t FaceCount() const { return static_cast<std::int16_t>(Faces.size()); }
};

// Up to 10,000 faces of a wall between rings of points, from its face `first` on.
struct WallPart {
    std::size_t nodes = 0;  // points of a ring
    bool outward = false, inward = false;
    std::size_t first = 0;
    friend auto operator<=>(const WallPart&, const WallPart&) = default;
};

// The faces of a part in which no two points are equal, for all walls that have it. Its vertex i is point
// Points[i] of the rings. The faces up to each one use VertexCounts vertices: a shorter part begins like a
// longer one.
struct FaceTable {
    std::span<const MeshFace> Faces;  // in the model's memory
    std::vector<std::uint16_t> Points;
    std::vector<std::uint16_t> VertexCounts;
};

struct Model3DSState {
    std::vector<Material3DS> Materials;
    std::vector<Mesh3DS> Meshes;
    std::map<WallPart, FaceTable> FaceTables;
    std::int32_t MaterialCount() const { return static_cast<std::int32_t>(Materials.size()); }
    std::int32_t MeshCount() const { return static_cast<std::int32_t>(Meshes.size()); }
};

struct ObjectBufferState {
    std::vector<Vector3D> Points;     // in the order of their first use
    std::vector<TexCoord> TexCoords;  // what came with each point when it was stored
    std::vector<BufferFace> Faces;
    std::string NamePrefix;
    std::int16_t MaterialIndex = 0;
    bool HasTexCoords = false;
    std::int32_t PointCount() const { return static_cast<std::int32_t>(Points.size()); }
    std::int32_t FaceCount() const { return static_cast<std::int32_t>(Faces.size()); }
};

extern Model3DSState Model3DS;
extern ObjectBufferState ObjectBuffer;

// The number that the next mesh will carry in its name. It runs on through all objects of a job.
extern std::int32_t ObjectPartNumber;

// A mesh takes at most this many faces, so that each of its vertices has a 16-bit index.
inline constexpr std::int32_t kMostFacesOfMesh = 10000;

// Empties the materials and the meshes; buffer and ObjectPartNumber stay.
void ResetModel();

// Appends a material named "MATER000", "MATER001" and so on; gives its index. Percentages from 0 to 100.
std::int16_t AddMaterial(const ColorRGB& ambient, const ColorRGB& diffuse, const ColorRGB& specular,
                         std::int16_t shininess, std::int16_t shininessStrength, std::int16_t transparency);

// Opens an empty buffer. With hasTexCoords false the texture coordinates of its faces go no further than the
// buffer. With keepPartNumber false the mesh names count from 0 again.
void BeginObject(const std::string& namePrefix, std::int16_t materialIndex, bool hasTexCoords,
                 bool keepPartNumber);

// Adds a triangle to the buffer, with its vertices in the order given and without any test of its shape. A
// vertex whose coordinates are the same numbers as those of stored ones reuses the one stored last, with the
// texture coordinate that it came with. Vertices of one face are compared with those of earlier faces only.
// The 10,000th face flushes the buffer.
void AddFace(const Vector3D& p1, const Vector3D& p2, const Vector3D& p3, const TexCoord& t1,
             const TexCoord& t2, const TexCoord& t3);

// Makes a mesh of the open object, whose buffer must be empty, as AddFace and FlushObject would of these
// faces without texture coordinates. Vertex i is points[order[i]]. The faces must stay in the model's memory.
void AddSharedFaces(std::span<const Vector3D> points, std::span<const std::uint16_t> order,
                    std::span<const MeshFace> faces);

// Makes a mesh of the buffer, named by the prefix and ObjectPartNumber in at least four digits, and opens the
// buffer again for the same object. An empty buffer makes no mesh and uses up no number.
void FlushObject();

// A mesh built step by step, as FlushObject builds one from whole arrays. Each call gives the index of what
// it appended; meshIndex must come from AddMesh.
std::int32_t AddMesh(const std::string& name, std::int16_t materialIndex);
std::int16_t AddMeshPoint(const Vector3D& point, std::int32_t meshIndex);
std::int16_t AddMeshTexCoord(const TexCoord& coord, std::int32_t meshIndex);
std::int16_t AddMeshFace(std::int16_t a, std::int16_t b, std::int16_t c, std::int32_t smoothGroups,
                         std::int32_t meshIndex);

}  // namespace boreforge
