#include "export3ds/mSave3DSObject.h"

#include <algorithm>
#include <cstddef>

#include "export3ds/VertexIndex.h"
#include "platform/HugePages.h"

namespace boreforge {

namespace {
// Before the model, which must not outlive it. Of a block, only what is touched takes memory.
std::pmr::monotonic_buffer_resource modelMemory(std::size_t{1} << 25, HugePages());
}  // namespace

Model3DSState Model3DS;
ObjectBufferState ObjectBuffer;
std::int32_t ObjectPartNumber = 0;

namespace {

// The vertices of ObjectBuffer by their coordinates.
VertexIndex vertexIndex;

std::string Numbered(const std::string& prefix, std::int32_t number, std::size_t digits) {
    std::string text = std::to_string(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), '0');
    return prefix + text;
}

// A point on its way into a face: its place in the index, where it had to be looked up.
struct Corner {
    BufferPoint& point;
    VertexIndex::Place place = 0;
    std::int32_t vertex;  // -1: the buffer has none yet

    explicit Corner(BufferPoint& from) : point(from), vertex(from.Vertex) {
        if (point.Stamp == ObjectBuffer.Stamp) return;
        place = vertexIndex.PlaceOf(ObjectBuffer.Points, point.Point);
        vertex = vertexIndex.VertexAt(place);
        if (vertex < 0) return;
        point.Vertex = vertex;
        point.Stamp = ObjectBuffer.Stamp;
    }

    void Store(const TexCoord& coord) {
        if (vertex >= 0) return;
        vertex = ObjectBuffer.PointCount();
        ObjectBuffer.Points.push_back(point.Point);
        ObjectBuffer.TexCoords.push_back(coord);
        const VertexIndex::Entry entry = vertexIndex.Enter(ObjectBuffer.Points, vertex, place);
        if (entry == VertexIndex::Entry::Unfindable) return;
        if (entry == VertexIndex::Entry::Successor) ++ObjectBuffer.Stamp;
        point.Vertex = vertex;
        point.Stamp = ObjectBuffer.Stamp;
    }
};

MeshFace MeshFaceOf(const BufferFace& face) {
    return {static_cast<std::int16_t>(face.a), static_cast<std::int16_t>(face.b),
            static_cast<std::int16_t>(face.c)};
}

void AddFaceOf(BufferPoint& p1, BufferPoint& p2, BufferPoint& p3, const TexCoord& t1, const TexCoord& t2,
               const TexCoord& t3) {
    // All three are looked up before any of them is stored: equal vertices of one face stay apart.
    Corner a(p1), b(p2), c(p3);
    a.Store(t1);
    b.Store(t2);
    c.Store(t3);
    AddBufferFace({a.vertex, b.vertex, c.vertex});
}

// The faces that the last meshes share, as many as the longest of them has.
std::span<const MeshFace> sharedFaces;

// The faces in the memory of the model: those that stand there already, where they are the same.
std::span<const MeshFace> FacesOfModel(const std::vector<BufferFace>& faces) {
    const auto same = [](const BufferFace& one, const MeshFace& other) { return MeshFaceOf(one) == other; };
    if (faces.size() <= sharedFaces.size() &&
        std::equal(faces.begin(), faces.end(), sharedFaces.begin(), same))
        return sharedFaces.first(faces.size());
    auto* const place =
        static_cast<MeshFace*>(modelMemory.allocate(faces.size() * sizeof(MeshFace), alignof(MeshFace)));
    std::transform(faces.begin(), faces.end(), place, MeshFaceOf);
    return sharedFaces = {place, faces.size()};
}

Mesh3DS& MeshAt(std::int32_t index) { return Model3DS.Meshes[static_cast<std::size_t>(index)]; }

}  // namespace

std::pmr::memory_resource* ModelMemory() { return &modelMemory; }

void ResetModel() {
    Model3DS = Model3DSState();
    sharedFaces = {};
    modelMemory.release();
}

std::int16_t AddMaterial(const ColorRGB& ambient, const ColorRGB& diffuse, const ColorRGB& specular,
                         std::int16_t shininess, std::int16_t shininessStrength, std::int16_t transparency) {
    const std::int32_t index = Model3DS.MaterialCount();
    Material3DS material;
    material.Name = Numbered("MATER", index, 3);
    material.Ambient = ambient;
    material.Diffuse = diffuse;
    material.Specular = specular;
    material.Shininess = shininess;
    material.ShininessStrength = shininessStrength;
    material.Transparency = transparency;
    Model3DS.Materials.push_back(material);
    return static_cast<std::int16_t>(index);
}

void BeginObject(const std::string& namePrefix, std::int16_t materialIndex, bool hasTexCoords,
                 bool keepPartNumber) {
    ObjectBuffer.Points.clear();
    ObjectBuffer.TexCoords.clear();
    ObjectBuffer.Faces.clear();
    vertexIndex.Clear();
    ++ObjectBuffer.Stamp;
    ObjectBuffer.NamePrefix = namePrefix;
    ObjectBuffer.MaterialIndex = materialIndex;
    ObjectBuffer.HasTexCoords = hasTexCoords;
    if (!keepPartNumber) ObjectPartNumber = 0;
}

void AddFace(const Vector3D& p1, const Vector3D& p2, const Vector3D& p3, const TexCoord& t1,
             const TexCoord& t2, const TexCoord& t3) {
    BufferPoint b1(p1), b2(p2), b3(p3);
    AddFaceOf(b1, b2, b3, t1, t2, t3);
}

void AddNewFace(BufferPoint& p1, BufferPoint& p2, BufferPoint& p3) {
    const TexCoord none;
    AddFaceOf(p1, p2, p3, none, none, none);
}

void FlushObject() {
    if (ObjectBuffer.PointCount() < 1 && ObjectBuffer.FaceCount() < 1) return;
    const std::int32_t index =
        AddMesh(Numbered(ObjectBuffer.NamePrefix, ObjectPartNumber, 4), ObjectBuffer.MaterialIndex);
    Mesh3DS& mesh = MeshAt(index);
    // Whole arrays at once, each in memory of exactly its size; the buffer keeps its own for the next object.
    mesh.Points.assign(ObjectBuffer.Points.begin(), ObjectBuffer.Points.end());
    mesh.HasTexCoords = ObjectBuffer.HasTexCoords && !ObjectBuffer.TexCoords.empty();
    if (mesh.HasTexCoords)
        mesh.TexCoords.assign(ObjectBuffer.TexCoords.begin(), ObjectBuffer.TexCoords.end());
    mesh.Faces = FaceArray(FacesOfModel(ObjectBuffer.Faces));
    ++ObjectPartNumber;
    BeginObject(ObjectBuffer.NamePrefix, ObjectBuffer.MaterialIndex, ObjectBuffer.HasTexCoords, true);
}

std::int32_t AddMesh(const std::string& name, std::int16_t materialIndex) {
    Mesh3DS& mesh = Model3DS.Meshes.emplace_back();
    mesh.Name = name;
    mesh.MaterialIndex = materialIndex;
    return Model3DS.MeshCount() - 1;
}

std::int16_t AddMeshPoint(const Vector3D& point, std::int32_t meshIndex) {
    Mesh3DS& mesh = MeshAt(meshIndex);
    mesh.Points.push_back(point);
    return static_cast<std::int16_t>(mesh.PointCount() - 1);
}

std::int16_t AddMeshTexCoord(const TexCoord& coord, std::int32_t meshIndex) {
    Mesh3DS& mesh = MeshAt(meshIndex);
    mesh.TexCoords.push_back(coord);
    mesh.HasTexCoords = true;
    return static_cast<std::int16_t>(mesh.TexCoordCount() - 1);
}

std::int16_t AddMeshFace(std::int16_t a, std::int16_t b, std::int16_t c, std::int32_t smoothGroups,
                         std::int32_t meshIndex) {
    Mesh3DS& mesh = MeshAt(meshIndex);
    mesh.Faces.push_back({a, b, c});
    if (smoothGroups != 0 || !mesh.SmoothGroups.empty()) {
        mesh.SmoothGroups.resize(mesh.Faces.size());
        mesh.SmoothGroups.back() = smoothGroups;
    }
    return static_cast<std::int16_t>(mesh.FaceCount() - 1);
}

}  // namespace boreforge
