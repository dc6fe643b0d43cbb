// The scene that a tunnel job builds in memory, and the buffer that gathers the triangles of one object,
// shares equal vertices and makes a mesh of every 10,000 faces. Positions are in track space and its axes.
#pragma once

#include <cstdint>
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

// The triangles of a mesh, in memory that several meshes may share: the walls of one contour have the same
// faces but for their number. An array that is added to becomes one of its own.
class FaceArray {
  public:
    FaceArray() = default;
    // Faces in the memory of the model, which stay as they are.
    explicit FaceArray(std::span<const MeshFace> faces) : shared_(faces) {}

    std::size_t size() const { return view().size(); }
    const MeshFace* begin() const { return view().data(); }
    const MeshFace* end() const { return begin() + size(); }
    const MeshFace& operator[](std::size_t i) const { return view()[i]; }
    void push_back(const MeshFace& face) {
        if (own_.empty()) own_.assign(begin(), end());
        own_.push_back(face);
    }

  private:
    std::span<const MeshFace> view() const {
        return own_.empty() ? shared_ : std::span<const MeshFace>(own_);
    }
    std::span<const MeshFace> shared_;
    std::vector<MeshFace> own_;
};

struct Mesh3DS {
    std::string Name;
    std::int32_t MaterialIndex = -1;  // the material of the whole mesh
    std::pmr::vector<Vector3D> Points{ModelMemory()};
    std::pmr::vector<TexCoord> TexCoords{ModelMemory()};  // none, or one for each point
    FaceArray Faces;
    std::pmr::vector<std::int32_t> SmoothGroups{ModelMemory()};  // see SmoothGroupOf
    bool HasTexCoords = false;
    // The smoothing group mask of each face. No masks at all stand for a mask of 0 on every face, as every
    // sweep makes them; kept, they were a fifth of a job's peak memory.
    std::int32_t SmoothGroupOf(std::size_t face) const {
        return SmoothGroups.empty() ? 0 : SmoothGroups[face];
    }
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

// A point that a caller gives to several faces, and the vertex that it turned out to be. The point may not
// change while it is in use.
struct BufferPoint {
    Vector3D Point;
    std::int32_t Vertex = -1;
    std::uint32_t Stamp = 0;  // of the buffer when Vertex was found; it holds as long as the buffer has it

    BufferPoint() = default;
    explicit BufferPoint(const Vector3D& point) : Point(point) {}
};

struct ObjectBufferState {
    std::vector<Vector3D> Points;     // in the order of their first use
    std::vector<TexCoord> TexCoords;  // what came with each point when it was stored
    std::vector<BufferFace> Faces;
    std::string NamePrefix;
    std::int16_t MaterialIndex = 0;
    bool HasTexCoords = false;
    // Changes whenever a point that was found before could now be another vertex: with each new buffer, and
    // with each vertex that is stored beside an equal one.
    std::uint32_t Stamp = 1;
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
// vertex whose coordinates equal those of a stored one, to the last bit but for 0 and -0, is that one, the
// last stored of several; it keeps the texture coordinate that it came with. Vertices of one face are
// compared with those of earlier faces only. The 10,000th face flushes the buffer.
void AddFace(const Vector3D& p1, const Vector3D& p2, const Vector3D& p3, const TexCoord& t1,
             const TexCoord& t2, const TexCoord& t3);

// Makes a mesh of the buffer, named by the prefix and ObjectPartNumber in at least four digits, and opens the
// buffer again for the same object. An empty buffer makes no mesh and uses up no number.
void FlushObject();

// AddFace without texture coordinates, for points that come again: each is looked up once, not in every face
// (6.5 ns a face instead of 14.5). Its common case stands here, where a sweep's loop takes it in.
void AddNewFace(BufferPoint& p1, BufferPoint& p2, BufferPoint& p3);  // of which a vertex isn't known
inline void AddBufferFace(const BufferFace& face) {
    ObjectBuffer.Faces.push_back(face);
    if (ObjectBuffer.FaceCount() == kMostFacesOfMesh) FlushObject();
}
inline void AddFace(BufferPoint& p1, BufferPoint& p2, BufferPoint& p3) {
    const std::uint32_t stamp = ObjectBuffer.Stamp;
    if (p1.Stamp == stamp && p2.Stamp == stamp && p3.Stamp == stamp)
        AddBufferFace({p1.Vertex, p2.Vertex, p3.Vertex});
    else
        AddNewFace(p1, p2, p3);
}

// A mesh built step by step, as FlushObject builds one from whole arrays. Each call gives the index of what
// it appended; meshIndex must come from AddMesh.
std::int32_t AddMesh(const std::string& name, std::int16_t materialIndex);
std::int16_t AddMeshPoint(const Vector3D& point, std::int32_t meshIndex);
std::int16_t AddMeshTexCoord(const TexCoord& coord, std::int32_t meshIndex);
std::int16_t AddMeshFace(std::int16_t a, std::int16_t b, std::int16_t c, std::int32_t smoothGroups,
                         std::int32_t meshIndex);

}  // namespace boreforge
