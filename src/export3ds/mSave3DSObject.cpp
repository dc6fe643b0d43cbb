#include "export3ds/mSave3DSObject.h"

#include <cstddef>

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

std::int32_t StoreVertex(const Vector3D& point, const TexCoord& coord) {
    ObjectBuffer.Points.push_back(point);
    ObjectBuffer.TexCoords.push_back(coord);
    const std::int32_t index = ObjectBuffer.PointCount() - 1;
    vertexIndex.Enter(ObjectBuffer.Points, index);
    return index;
}

Mesh3DS& MeshAt(std::int32_t index) { return Model3DS.Meshes[static_cast<std::size_t>(index)]; }

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
    // All three are looked up before any of them is stored: equal vertices of one face stay apart.
    BufferFace face{vertexIndex.Find(ObjectBuffer.Points, p1), vertexIndex.Find(ObjectBuffer.Points, p2),
                    vertexIndex.Find(ObjectBuffer.Points, p3)};
    if (face.a < 0) face.a = StoreVertex(p1, t1);
    if (face.b < 0) face.b = StoreVertex(p2, t2);
    if (face.c < 0) face.c = StoreVertex(p3, t3);
    ObjectBuffer.Faces.push_back(face);
    if (ObjectBuffer.FaceCount() == kMostFacesOfMesh) FlushObject();
}

void FlushObject() {
    if (ObjectBuffer.PointCount() < 1 && ObjectBuffer.FaceCount() < 1) return;
    const std::int32_t index =
        AddMesh(Numbered(ObjectBuffer.NamePrefix, ObjectPartNumber, 4), ObjectBuffer.MaterialIndex);
    Mesh3DS& mesh = MeshAt(index);
    mesh.Points.reserve(ObjectBuffer.Points.size());
    for (const Vector3D& point : ObjectBuffer.Points)
        AddMeshPoint(point, index);
    if (ObjectBuffer.HasTexCoords) {
        mesh.TexCoords.reserve(ObjectBuffer.TexCoords.size());
        for (const TexCoord& coord : ObjectBuffer.TexCoords)
            AddMeshTexCoord(coord, index);
    }
    mesh.Faces.reserve(ObjectBuffer.Faces.size());
    mesh.SmoothGroups.reserve(ObjectBuffer.Faces.size());
    for (const BufferFace& face : ObjectBuffer.Faces)
        AddMeshFace(static_cast<std::int16_t>(face.a), static_cast<std::int16_t>(face.b),
                    static_cast<std::int16_t>(face.c), 0, index);
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
    mesh.SmoothGroups.push_back(smoothGroups);
    return static_cast<std::int16_t>(mesh.FaceCount() - 1);
}

}  // namespace boreforge
