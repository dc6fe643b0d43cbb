#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "support/CoreTest.h"

namespace boreforge {

using ExportTest = CoreTest;

TEST_F(ExportTest, ATriangleHasTheBytesOfTheFormatsTables) {
    AddMaterial({0x60, 0x40, 0x20}, {0xC0, 0x80, 0x40}, {0xE6, 0x9A, 0x4D}, 25, 5, 40);
    BeginObject("SEGT", 0, true, true);
    // 1, 2, 3 is written as 1, -3, 2; a tie goes to the even sixth digit, and no zero has a sign.
    AddFace({1, 2, 3}, {-0.0f, 0.0078125f, 0}, {-1, 16, -30}, {0.25f, 1}, {0.5f, 1}, {1, 1});
    FlushObject();
    FlushObject();  // adds no empty mesh
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    EXPECT_EQ(ReadBytes(In("o.3ds")),
              FromHex("4D4D 96010000 0200 0A000000 03000000 3D3D 86010000 3E3D 0A000000 03000000 "
                      "FFAF A8000000 00A0 0F000000 'MATER000' 00 "
                      "10A0 0F000000 1100 09000000 604020 20A0 0F000000 1100 09000000 C08040 "
                      "30A0 0F000000 1100 09000000 E69A4D 40A0 0E000000 3000 08000000 1900 "
                      "41A0 0E000000 3000 08000000 0500 50A0 0E000000 3000 08000000 2800 "
                      "52A0 0E000000 3000 08000000 0000 53A0 0E000000 3000 08000000 0000 00A1 08000000 0300 "
                      "84A0 0E000000 3000 08000000 0000 87A0 0A000000 0000803F 0001 0A000000 F67A1D42 "
                      "0040 C4000000 'SEGT0000' 00 0041 B5000000 1041 2C000000 0300 "
                      "0000803F 000040C0 00000040 00000000 00000000 CEFBFF3B 000080BF 0000F041 00008041 "
                      "4041 20000000 0300 0000803E 0000803F 0000003F 0000803F 0000803F 0000803F "
                      "6041 36000000 0000803F 00000000 00000000 00000000 0000803F 00000000 00000000 00000000 "
                      "0000803F 6F12833A 6F12833A 6F12833A 2041 2D000000 0100 0000 0100 0200 0700 "
                      "3041 13000000 'MATER000' 00 0100 0000 5041 0A000000 00000000"));
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
