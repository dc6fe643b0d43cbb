#include "export3ds/Save3DSFile.h"

#include <unistd.h>

#include "export3ds/mSave3DSObject.h"
#include "platform/FileCalls.h"
#include "support/CoreTest.h"

namespace boreforge {

using Save3DSTest = CoreTest;

void AddTriangle(const Vector3D& a, const Vector3D& b, const Vector3D& c, bool texCoords = false) {
    BeginObject("SEGT", 0, texCoords, true);
    AddFace(a, b, c, {0.25f, 1}, {0.5f, 1}, {1, 1});
    FlushObject();
}

TEST_F(Save3DSTest, OneTriangleByteForByte) {
    EXPECT_EQ(Compute3DSLength(), 42);
    AddMaterial({0x60, 0x40, 0x20}, {0xC0, 0x80, 0x40}, {0xE6, 0x9A, 0x4D}, 25, 5, 40);
    EXPECT_EQ(Compute3DSLength(), 210);
    // 1, 2, 3 goes out as 1, -3, 2; a tie goes to the even sixth digit, and no zero has a sign.
    AddTriangle({1, 2, 3}, {-0.0f, 0.0078125f, 0}, {-1, 16, -30});
    EXPECT_EQ(Compute3DSLength(), 374);
    WriteBytes(In("o.3ds"), Bytes(5000, 0xEE));
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    Bytes file = ReadBytes(In("o.3ds"));
    EXPECT_EQ(file,
              Unfold("4D4D 76010000 0200 0A000000 03000000 3D3D 66010000 3E3D 0A000000 03000000 "
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

    // Texture coordinates stand unrounded behind the points.
    AddTriangle({1, 2, 3}, {4e-7f, -4e-7f, 6e-7f}, {7, 8, 9}, true);
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    file = ReadBytes(In("o.3ds"));
    ASSERT_EQ(file.size(), 374u + 164u + 32u);
    EXPECT_EQ(Bytes(file.begin() + 415, file.begin() + 473),
              Unfold("00000000 BD3786B5 00000000 0000E040 000010C1 00000041 "
                     "4041 20000000 0300 0000803E 0000803F 0000003F 0000803F 0000803F 0000803F 6041"));
}

TEST_F(Save3DSTest, AFileThatCantBeWrittenWholeIsRemoved) {
    AddMaterial({}, {}, {}, 0, 0, 0);
    for (int i = 0; i < 1700; ++i)  // more than the output buffer holds, so that two writes are needed
        AddTriangle({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    static int writesLeft;
    writesLeft = 1;
    fileCalls.write = [](int file, const void* bytes, std::size_t count) -> ssize_t {
        return writesLeft-- > 0 ? ::write(file, bytes, count) : -1;
    };
    EXPECT_FALSE(Save3DSFile(In("o.3ds")));
    EXPECT_EQ(writesLeft, -1);
    fileCalls = SystemFileCalls();
    EXPECT_FALSE(Save3DSFile(In("absent/o.3ds")) || Save3DSFile(In("")));
    Model3DS.Meshes.resize(32'768);
    EXPECT_FALSE(Save3DSFile(In("o.3ds")));
    EXPECT_EQ(Listing(), std::vector<std::string>{});
}

}  // namespace boreforge
