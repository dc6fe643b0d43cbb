#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "platform/FileCalls.h"
#include "shared/Read3DSObject.h"
#include "support/CoreTest.h"
#include "support/LiteralScan.h"

namespace boreforge {

using ExportTest = CoreTest;

TEST_F(ExportTest, VerticesAreSharedAsByALiteralScan) {
    std::mt19937 random(7);
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    const float odd[] = {0.0f, -0.0f, 1.0f, std::nextafter(1.0f, 2.0f), -1.0f, 1e-42f, inf, nan};
    const auto number = [&] { return random() % 2 ? odd[random() % 8] : static_cast<float>(random() % 23); };
    std::vector<Vector3D> ring(40);
    std::vector<LiteralScan> scans(1);
    BeginObject("PART", 3, true, false);
    for (int i = 0; i < 23'000; ++i) {
        if (i % 16 == 0) ring[random() % 40] = {number(), number(), number()};
        Vector3D corners[3] = {{number(), number(), 5}, {number(), number(), number()}, {number(), 5, 5}};
        if (i % 7 == 0) corners[2] = corners[0];
        if (i % 3 == 0)  // points of earlier faces
            for (Vector3D& corner : corners)
                corner = ring[random() % 40];
        const TexCoord coord{static_cast<float>(i), 1};
        AddFace(corners[0], corners[1], corners[2], coord, coord, coord);
        scans.back().Add(corners, coord.u);
        if (scans.back().faces.size() < 10'000) continue;
        EXPECT_EQ(Model3DS.Meshes.size(), scans.size()) << "flushed by the 10,000th face";
        scans.emplace_back();
    }
    FlushObject();
    FlushObject();
    ASSERT_EQ(Model3DS.MeshCount(), 3);
    ASSERT_EQ(ObjectPartNumber, 3);
    for (std::size_t i = 0; i < 3; ++i) {
        const Mesh3DS& mesh = Model3DS.Meshes[i];
        EXPECT_EQ(mesh.Name, "PART000" + std::to_string(i));
        EXPECT_TRUE(std::ranges::equal(mesh.Faces, scans[i].faces)) << i;
        EXPECT_TRUE(std::ranges::equal(mesh.TexCoords, scans[i].coords, {}, &TexCoord::u)) << i;
        const auto bits = [](const Vector3D& p) { return std::bit_cast<std::array<std::uint32_t, 3>>(p); };
        EXPECT_TRUE(std::ranges::equal(mesh.Points, scans[i].points, {}, bits, bits)) << i;  // a -0 stays one
    }
}

void AddTriangle(const Vector3D& a, const Vector3D& b, const Vector3D& c, bool texCoords = false) {
    BeginObject("SEGT", 0, texCoords, true);
    AddFace(a, b, c, {0.25f, 1}, {0.5f, 1}, {1, 1});
    FlushObject();
}

TEST_F(ExportTest, OneTriangleHasTheBytesOfTheFormatsTables) {
    EXPECT_EQ(Compute3DSLength(), 42);
    AddMaterial({0x60, 0x40, 0x20}, {0xC0, 0x80, 0x40}, {0xE6, 0x9A, 0x4D}, 25, 5, 40);
    // 1, 2, 3 is written as 1, -3, 2; a tie goes to the even sixth digit, and no zero has a sign.
    AddTriangle({1, 2, 3}, {-0.0f, 0.0078125f, 0}, {-1, 16, -30});
    WriteBytes(In("o.3ds"), Bytes(5000, 0xEE));
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    Bytes file = ReadBytes(In("o.3ds"));
    EXPECT_EQ(file,
              FromHex("4D4D 76010000 0200 0A000000 03000000 3D3D 66010000 3E3D 0A000000 03000000 "
                      "FFAF A8000000 00A0 0F000000 'MATER000' 00 "
                      "10A0 0F000000 1100 09000000 604020 20A0 0F000000 1100 09000000 C08040 "
                      "30A0 0F000000 1100 09000000 E69A4D 40A0 0E000000 3000 08000000 1900 "
                      "41A0 0E000000 3000 08000000 0500 50A0 0E000000 3000 08000000 2800 "
                      "52A0 0E000000 3000 08000000 0000 53A0 0E000000 3000 08000000 0000 00A1 08000000 0300 "
                      "84A0 0E000000 3000 08000000 0000 87A0 0A000000 0000803F 0001 0A000000 F67A1D42 "
                      "0040 A4000000 'SEGT0000' 00 0041 95000000 1041 2C000000 0300 "
                      "0000803F 000040C0 00000040 00000000 00000000 CEFBFF3B 000080BF 0000F041 00008041 "
                      "6041 36000000 0000803F 00000000 00000000 00000000 0000803F 00000000 00000000 00000000 "
                      "0000803F 6F12833A 6F12833A 6F12833A 2041 2D000000 0100 0000 0100 0200 0700 "
                      "3041 13000000 'MATER000' 00 0100 0000 5041 0A000000 00000000"));

    // Texture coordinates come after the points and are not rounded.
    AddTriangle({1, 2, 3}, {4e-7f, -4e-7f, 6e-7f}, {7, 8, 9}, true);
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    file = ReadBytes(In("o.3ds"));
    ASSERT_EQ(file.size(), 374u + 164u + 32u);
    EXPECT_EQ(Compute3DSLength(), 374 + 164 + 32);
    EXPECT_EQ(Bytes(file.begin() + 415, file.begin() + 473),
              FromHex("00000000 BD3786B5 00000000 0000E040 000010C1 00000041 "
                      "4041 20000000 0300 0000803E 0000803F 0000003F 0000803F 0000803F 0000803F 6041"));
}

TEST_F(ExportTest, APointAndAFaceAddTheirBytesToTheFile) {
    AddMaterial({}, {}, {}, 0, 0, 0);
    const std::int32_t mesh = AddMesh("MESH", 0);
    const std::int64_t before = Compute3DSLength();
    AddMeshPoint({}, mesh);
    EXPECT_EQ(Compute3DSLength(), before + kPointBytes);
    AddMeshFace(0, 0, 0, 0, mesh);
    EXPECT_EQ(Compute3DSLength(), before + kPointBytes + kFaceBytes);
}

TEST_F(ExportTest, LengthsFollowTheNamesOfMaterials) {
    for (int i = 0; i <= 1000; ++i)
        AddMaterial({}, {}, {}, 0, 0, 0);
    ASSERT_EQ(Model3DS.Materials.back().Name, "MATER1000");
    BeginObject("SEGT", 1000, false, true);
    AddFace({1, 2, 3}, {4, 5, 6}, {7, 8, 10}, {}, {}, {});
    FlushObject();
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    const Bytes file = ReadBytes(In("o.3ds"));
    EXPECT_EQ(file.size(), 42u + 1000 * 168 + 169 + 165);
    Object3DS object;
    ObjectDamage damage;
    EXPECT_TRUE(Read3DSObject(file, object, damage));
}

TEST_F(ExportTest, ATextOfAnyLengthIsWrittenWhole) {
    constexpr std::size_t kBuffer = OutputFile::kBufferSize;
    for (const std::size_t length : {std::size_t{0}, kBuffer - 4, kBuffer - 1, kBuffer, 3 * kBuffer}) {
        OutputFile file;
        ASSERT_TRUE(file.Open(In("o")));
        PutWord(0x1234, file);
        PutZString(std::string(length, 'x'), file);
        PutWord(0x5678, file);
        ASSERT_TRUE(file.Complete());
        ASSERT_TRUE(file.PutInPlace());
        Bytes expected(length + 5, 'x');
        expected[0] = 0x34, expected[1] = 0x12, expected[length + 2] = 0;
        expected[length + 3] = 0x78, expected[length + 4] = 0x56;
        EXPECT_EQ(ReadBytes(In("o")), expected) << length;
    }
}

TEST_F(ExportTest, MoreMeshesThanTheFormatHoldsAreRefused) {
    AddMaterial({}, {}, {}, 0, 0, 0);
    for (int i = 0; i < kMaxMeshes; ++i)
        AddMesh("MESH", 0);
    EXPECT_TRUE(Save3DSFile(In("o.3ds")));
    AddMesh("MESH", 0);
    EXPECT_EQ(TextOf(Save3DSFile(In("o.3ds"))), "It would be too large.");
}

}  // namespace boreforge
