// Reads our objects with a reader that isn't ours. This is a program of its own, so that the tests of the
// core link nothing but the core.
#include <assimp/material.h>
#include <assimp/scene.h>

#include <assimp/Importer.hpp>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

using IndependentReaderTest = CoreTest;

void ExpectMaterial(const aiMaterial& read, const std::string& name, const aiColor3D& diffuse) {
    EXPECT_EQ(read.GetName().C_Str(), name);
    aiColor3D color;
    read.Get(AI_MATKEY_COLOR_DIFFUSE, color);
    EXPECT_TRUE((color * 255.0f - diffuse).IsBlack()) << color.r << ' ' << color.g << ' ' << color.b;
    float opacity = -1;
    read.Get(AI_MATKEY_OPACITY, opacity);
    EXPECT_NEAR(opacity, 0.65, 1e-6);
}

// The reader gives each face vertices of its own and leaves out the names of objects without a hierarchy, but
// keeps the order of both. Its vertices are the file's: y forward, z up, in six decimal places.
void ExpectMesh(const aiMesh& read, const Mesh3DS& made) {
    EXPECT_EQ(static_cast<int>(read.mMaterialIndex), made.MaterialIndex);
    ASSERT_EQ(read.mNumFaces, made.Faces.size());
    for (std::size_t f = 0; f < made.Faces.size(); ++f) {
        ASSERT_EQ(read.mFaces[f].mNumIndices, 3u);
        const std::int16_t corners[] = {made.Faces[f].a, made.Faces[f].b, made.Faces[f].c};
        for (unsigned c = 0; c < 3; ++c) {
            const aiVector3D& point = read.mVertices[read.mFaces[f].mIndices[c]];
            const Vector3D& ours = made.Points[static_cast<std::size_t>(corners[c])];
            ASSERT_LE(VecDistance({point.x, point.z, -point.y}, ours), 2e-6) << "face " << f;
        }
    }
}

TEST_F(IndependentReaderTest, FindsTheSameMaterialsObjectsAndFaces) {
    MakeTrack(WindingCircuit(), "T-TTTT");
    TrackFile.BezierNodes[3].Position = {-900, 7, 2};  // so long a piece has more than one mesh
    ASSERT_TRUE(WriteTrackFile(In("t.zrtrack")));
    ASSERT_TRUE(OpenTrack(In("t.zrtrack")));
    MakePresetShape(kPresetRounded);
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings({PackColor(255, 127, 101), 35, 0, true}, In("o.3ds"))));
    ASSERT_EQ(Model3DS.Meshes[2].FaceCount(), kMaxFacesOfMesh);
    Assimp::Importer importer;
    const aiScene* const scene = importer.ReadFile(In("o.3ds"), 0);
    ASSERT_NE(scene, nullptr) << importer.GetErrorString();
    EXPECT_NEAR(scene->mRootNode->mTransformation.a1, 1 / 39.37008, 1e-8) << "the master scale";
    ASSERT_EQ(scene->mNumMaterials, 2u);
    ExpectMaterial(*scene->mMaterials[0], "MATER000", {255, 127, 101});
    ExpectMaterial(*scene->mMaterials[1], "MATER001", {128, 64, 50});
    ASSERT_EQ(scene->mNumMeshes, Model3DS.Meshes.size());
    for (unsigned i = 0; i < scene->mNumMeshes; ++i)
        ExpectMesh(*scene->mMeshes[i], Model3DS.Meshes[i]);
}

}  // namespace boreforge
