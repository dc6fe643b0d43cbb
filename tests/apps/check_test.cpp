// How the checking program judges surfaces and prints names; check.sh runs it on whole files.
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "shared/ObjectSurfaces.h"
#include "support/CommandTest.h"

namespace boreforge {

class CheckTest : public CommandTest {
  protected:
    int Check(const std::string& arguments) { return Run("'" PROGRAMS "/boreforge-check' " + arguments); }
};

TEST_F(CheckTest, NamesAreOnOneLineAndCut) {
    const std::int16_t material = AddMaterial({}, {}, {}, 0, 0, 0);
    Model3DS.Materials[0].Name = "\u202E\n\xE4" + std::string(58, 'M');
    const std::int32_t mesh = AddMesh("mesh", material);
    AddMeshPoint({1, 2, 3}, mesh);
    AddMeshFace(0, 0, 0, 0, mesh);
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    EXPECT_EQ(Check("o.3ds"), 0);
    EXPECT_TRUE(Contains(Text("out"), "\nSurface 1: 1 face of ???" + std::string(57, 'M') + "...\n"));
    EXPECT_EQ(Check("o.3ds --json"), 0);
    EXPECT_TRUE(Contains(Text("out"), R"("materials":["\u202e\n\ufffd)" + std::string(57, 'M') + "...\"]}"));
}

TEST(ObjectSurfaces, EdgesAndFacingFollowFromTheFaces) {
    // A corner of a cube, away from the origin: its four faces face outwards.
    const ObjectFace x{0, 3, 2}, y{0, 1, 3}, z{0, 2, 1}, slope{1, 2, 3};
    const auto turned = [](const ObjectFace& f) { return ObjectFace{f.a, f.c, f.b}; };
    const struct {
        const char* name;
        std::vector<ObjectFace> faces;
        std::size_t open, opposed, crowded;
        Facing facing;
    } cases[] = {{"closed", {x, y, z, slope}, 0, 0, 0, Facing::Outwards},
                 {"inside out", {turned(x), turned(y), turned(z), turned(slope)}, 0, 0, 0, Facing::Inwards},
                 {"one face turned", {x, y, z, turned(slope)}, 0, 3, 0, Facing::Mixed},
                 {"one face lacking", {x, y, z}, 3, 0, 0, Facing::NotJudged},
                 {"a face without area", {x, y, z, slope, {1, 1, 2}}, 0, 0, 0, Facing::Outwards},
                 {"a face twice", {x, y, z, slope, x}, 0, 0, 3, Facing::Outwards},
                 {"a face three times", {x, y, z, slope, x, x}, 0, 0, 3, Facing::NotJudged},
                 {"a fin", {x, y, z, slope, {1, 2, 5}}, 2, 0, 1, Facing::NotJudged}};
    for (const auto& [name, faces, open, opposed, crowded, facing] : cases) {
        SCOPED_TRACE(name);
        Object3DS object;
        // Point 4 is equal to point 0, so the faces that meet there are one surface.
        object.points = {{7, 5, 3}, {8, 5, 3}, {7, 6, 3}, {7, 5, 4}, {7, 5, 3}, {9, 9, 9}};
        object.faces = faces;
        object.faces[0].a = 4;
        const auto surfaces = FindSurfaces(object);
        ASSERT_EQ(surfaces.size(), 1u);
        EXPECT_EQ(surfaces[0].openEdges, open);
        EXPECT_EQ(surfaces[0].opposedEdges, opposed);
        EXPECT_EQ(surfaces[0].crowdedEdges, crowded);
        EXPECT_EQ(surfaces[0].facing, facing);
        EXPECT_FALSE(surfaces[0].IsDoubleSided());
    }
}

}  // namespace boreforge
