#include <algorithm>
#include <limits>
#include <random>

#include "export3ds/mSave3DSObject.h"
#include "support/CoreTest.h"

namespace boreforge {
namespace {

using ModelStoreTest = CoreTest;

// The sharing rule as it reads: one scan of all stored vertices, the last match wins, and what was not found
// is appended without a further look.
struct Scan {
    std::vector<Vector3D> points;
    std::vector<TexCoord> coords;
    std::vector<MeshFace> faces;

    void Add(const Vector3D (&corner)[3], const TexCoord (&coord)[3]) {
        std::int32_t found[3] = {-1, -1, -1};
        for (std::size_t i = 0; i < points.size(); ++i)
            for (int c = 0; c < 3; ++c)
                if (points[i].x == corner[c].x && points[i].y == corner[c].y && points[i].z == corner[c].z)
                    found[c] = static_cast<std::int32_t>(i);
        for (int c = 0; c < 3; ++c) {
            if (found[c] >= 0) continue;
            found[c] = static_cast<std::int32_t>(points.size());
            points.push_back(corner[c]);
            coords.push_back(coord[c]);
        }
        const auto narrow = [](std::int32_t index) { return static_cast<std::int16_t>(index); };
        faces.push_back({narrow(found[0]), narrow(found[1]), narrow(found[2])});
    }
};

void ExpectMesh(const Mesh3DS& mesh, const Scan& scan, const std::string& name) {
    EXPECT_EQ(mesh.Name, name);
    EXPECT_EQ(mesh.Faces, scan.faces);
    EXPECT_EQ(mesh.SmoothGroups, std::vector<std::int32_t>(scan.faces.size(), 0));
    ASSERT_EQ(mesh.Points.size(), scan.points.size());
    ASSERT_EQ(mesh.TexCoords.size(), scan.points.size());
    for (std::size_t i = 0; i < scan.points.size(); ++i) {
        ASSERT_EQ(mesh.TexCoords[i].u, scan.coords[i].u) << i;
        // Bit for bit: a stored -0 stays one.
        ASSERT_EQ(std::memcmp(&mesh.Points[i], &scan.points[i], sizeof(Vector3D)), 0) << i;
    }
}

TEST_F(ModelStoreTest, VerticesAreSharedAsALiteralScanWould) {
    std::mt19937 random(7);
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<float> odd = {0.0f, -0.0f, 1.0f, std::nextafter(1.0f, 2.0f), -1.0f, 1e-42f, inf, nan};
    const auto number = [&] {
        return random() % 2 ? odd[random() % odd.size()] : static_cast<float>(random() % 23);
    };
    BeginObject("PART", 3, true, false);
    std::vector<Scan> scans(1);
    for (int i = 0; i < 23'000; ++i) {
        Vector3D corner[3] = {{number(), number(), 5}, {number(), number(), number()}, {number(), 5, 5}};
        if (i % 7 == 0) corner[2] = corner[0];
        const auto u = static_cast<float>(i);
        const TexCoord coord[3] = {{u, 1}, {u + 0.25f, 2}, {u + 0.5f, 3}};
        AddFace(corner[0], corner[1], corner[2], coord[0], coord[1], coord[2]);
        scans.back().Add(corner, coord);
        if (scans.back().faces.size() == 10'000) {
            EXPECT_EQ(Model3DS.MeshCount(), static_cast<int>(scans.size())) << "flushed by the 10,000th face";
            scans.emplace_back();
        }
    }
    FlushObject();
    FlushObject();
    ASSERT_EQ(Model3DS.MeshCount(), 3);
    EXPECT_EQ(ObjectPartNumber, 3);
    for (std::size_t i = 0; i < 3; ++i)
        ExpectMesh(Model3DS.Meshes[i], scans[i], "PART000" + std::to_string(i));
}

TEST_F(ModelStoreTest, AllVerticesOfAFullMeshFindTheirOwn) {
    BeginObject("X", 0, false, false);
    const auto corner = [](int i) { return Vector3D{static_cast<float>(i), 0.5f, -3}; };
    const auto add = [&](int a, int b, int c) { AddFace(corner(a), corner(b), corner(c), {}, {}, {}); };
    for (int i = 0; i < 9'999; ++i)
        add(3 * i, 3 * i + 1, 3 * i + 2);
    EXPECT_EQ(ObjectBuffer.PointCount(), 29'997);
    add(29'996, 15'000, 0);
    ASSERT_EQ(Model3DS.MeshCount(), 1);
    EXPECT_EQ(Model3DS.Meshes[0].Faces.back(), (MeshFace{29'996, 15'000, 0}));
    EXPECT_FALSE(Model3DS.Meshes[0].HasTexCoords);
    // The next object starts from nothing, whatever the last one held.
    add(0, 1, 0);
    add(0, 0, 1);
    EXPECT_EQ(ObjectBuffer.PointCount(), 3);
    EXPECT_EQ(ObjectBuffer.Faces[1].a, 2) << "the later of two equal vertices";
    ObjectPartNumber = 12'345;
    FlushObject();
    EXPECT_EQ(Model3DS.Meshes[1].Name, "X12345");
}

}  // namespace
}  // namespace boreforge
