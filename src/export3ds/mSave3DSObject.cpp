#include "export3ds/mSave3DSObject.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "export3ds/VertexIndex.h"

namespace boreforge {

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

// Returns `found`, or stores the point if that is -1.
std::int32_t FoundOrStored(std::int32_t found, const Vector3D& point, const TexCoord& coord) {
    if (found >= 0) return found;
    ObjectBuffer.Points.push_back(point);
    ObjectBuffer.TexCoords.push_back(coord);
    (void)vertexIndex.Store(ObjectBuffer.Points, ObjectBuffer.Points.size() - 1);
    return ObjectBuffer.PointCount() - 1;
}

MeshFace Narrow(const BufferFace& face) {
    return {static_cast<std::int16_t>(face.a), static_cast<std::int16_t>(face.b),
            static_cast<std::int16_t>(face.c)};
}

Mesh3DS& MeshAt(std::int32_t index) { return Model3DS.Meshes[index]; }

}  // namespace

void ResetModel() { Model3DS = Model3DSState(); }

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
    ObjectBuffer.NamePrefix = namePrefix;
    ObjectBuffer.MaterialIndex = materialIndex;
    ObjectBuffer.HasTexCoords = hasTexCoords;
    if (!keepPartNumber) ObjectPartNumber = 0;
}

void AddFace(const Vector3D& p1, const Vector3D& p2, const Vector3D& p3, const TexCoord& t1,
             const TexCoord& t2, const TexCoord& t3) {
    // Find all three before storing any: equal corners of one face stay apart.
    const std::int32_t found1 = vertexIndex.Find(ObjectBuffer.Points, p1);
    const std::int32_t found2 = vertexIndex.Find(ObjectBuffer.Points, p2);
    const std::int32_t found3 = vertexIndex.Find(ObjectBuffer.Points, p3);
    const std::int32_t a = FoundOrStored(found1, p1, t1);
    const std::int32_t b = FoundOrStored(found2, p2, t2);
    const std::int32_t c = FoundOrStored(found3, p3, t3);
    ObjectBuffer.Faces.push_back({a, b, c});
    if (ObjectBuffer.FaceCount() == kMaxFacesOfMesh) FlushObject();
}

void FlushObject() {
    if (ObjectBuffer.PointCount() < 1 && ObjectBuffer.FaceCount() < 1) return;
    std::vector<MeshFace> faces(ObjectBuffer.Faces.size());
    std::transform(ObjectBuffer.Faces.begin(), ObjectBuffer.Faces.end(), faces.begin(), Narrow);
    AddFinishedMesh(ObjectBuffer.Points, std::move(faces));
    Mesh3DS& mesh = Model3DS.Meshes.back();
    mesh.HasTexCoords = ObjectBuffer.HasTexCoords && !ObjectBuffer.TexCoords.empty();
    if (mesh.HasTexCoords) mesh.TexCoords = ObjectBuffer.TexCoords;
    BeginObject(ObjectBuffer.NamePrefix, ObjectBuffer.MaterialIndex, ObjectBuffer.HasTexCoords, true);
}

void AddFinishedMesh(std::vector<Vector3D> points, std::vector<MeshFace> faces) {
    const std::string name = Numbered(ObjectBuffer.NamePrefix, ObjectPartNumber, 4);
    ++ObjectPartNumber;
    Mesh3DS& mesh = MeshAt(AddMesh(name, ObjectBuffer.MaterialIndex));
    mesh.Points = std::move(points);
    mesh.Faces = std::move(faces);
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
