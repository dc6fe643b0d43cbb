#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "export3ds/mSave3DSObject.h"
#include "support/CoreTest.h"

namespace boreforge {

using ModelStoreTest = CoreTest;

// The sharing rule as it reads: one scan of all stored vertices, the last match wins, and what was not found
// is appended without a further look.
struct Scan {
    std::vector<Vector3D> points;
    std::vector<float> coords;
    std::vector<MeshFace> faces;

    void Add(const Vector3D (&corners)[3], float coord) {
        std::int16_t found[3] = {-1, -1, -1};
        for (std::size_t i = 0; i < points.size(); ++i)
            for (int c = 0; c < 3; ++c)
                if (points[i].x == corners[c].x && points[i].y == corners[c].y && points[i].z == corners[c].z)
                    found[c] = static_cast<std::int16_t>(i);
        for (int c = 0; c < 3; ++c) {
            if (found[c] >= 0) continue;
            found[c] = static_cast<std::int16_t>(points.size());
            points.push_back(corners[c]);
            coords.push_back(coord);
        }
        faces.push_back({found[0], found[1], found[2]});
    }
};

TEST_F(ModelStoreTest, VerticesAreSharedAsALiteralScanWould) {
    std::mt19937 random(7);
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    const float odd[] = {0.0f, -0.0f, 1.0f, std::nextafter(1.0f, 2.0f), -1.0f, 1e-42f, inf, nan};
    const auto number = [&] { return random() % 2 ? odd[random() % 8] : static_cast<float>(random() % 23); };
    std::vector<BufferPoint> ring(40);
    std::vector<Scan> scans(1);
    BeginObject("PART", 3, true, false);
    for (int i = 0; i < 23'000; ++i) {
        if (i % 16 == 0) ring[random() % 40] = BufferPoint({number(), number(), number()});
        Vector3D corners[3] = {{number(), number(), 5}, {number(), number(), number()}, {number(), 5, 5}};
        if (i % 7 == 0) corners[2] = corners[0];
        if (i % 3 == 0) {  // points that come again are looked up once
            BufferPoint *p1 = &ring[random() % 40], *p2 = &ring[random() % 40], *p3 = &ring[random() % 40];
            corners[0] = p1->Point, corners[1] = p2->Point, corners[2] = p3->Point;
            AddFace(*p1, *p2, *p3);
            scans.back().Add(corners, 0);
        } else {
            const TexCoord coord{static_cast<float>(i), 1};
            AddFace(corners[0], corners[1], corners[2], coord, coord, coord);
            scans.back().Add(corners, coord.u);
        }
        if (scans.back().faces.size() < 10'000) continue;
        EXPECT_EQ(Model3DS.Meshes.size(), scans.size()) << "flushed by the 10,000th face";
        scans.emplace_back();
    }
    FlushObject();
    FlushObject();
    EXPECT_EQ(ObjectPartNumber, 3);
    ASSERT_EQ(Model3DS.MeshCount(), 3);
    for (std::size_t i = 0; i < 3; ++i) {
        const Mesh3DS& mesh = Model3DS.Meshes[i];
        EXPECT_EQ(mesh.Name, "PART000" + std::to_string(i));
        EXPECT_TRUE(std::ranges::equal(mesh.Faces, scans[i].faces)) << i;
        EXPECT_TRUE(std::ranges::equal(mesh.TexCoords, scans[i].coords, {}, &TexCoord::u)) << i;
        const auto bits = [](const Vector3D& p) { return std::bit_cast<std::array<std::uint32_t, 3>>(p); };
        EXPECT_TRUE(std::ranges::equal(mesh.Points, scans[i].points, {}, bits, bits)) << i;  // a -0 stays one
    }
}

}  // namespace boreforge
