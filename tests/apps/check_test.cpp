// Runs the checking program as a user's script would.

#include <algorithm>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "shared/ObjectSurfaces.h"
#include "support/CommandTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

const std::string kCircuit = "'" PROJECT "/tracks/small-circuit.zrtrack' ";

class CheckTest : public CommandTest {
  protected:
    void Make(const std::string& arguments) {
        EXPECT_EQ(Run("'" PROGRAMS "/boreforge-batch' --no-track " + arguments), 0) << Text("err");
    }
    int Check(const std::string& arguments) {
        return Run("unset DISPLAY WAYLAND_DISPLAY; '" PROGRAMS "/boreforge-check' " + arguments);
    }
    testing::AssertionResult Reports(const std::string& text) const { return Contains(Text("out"), text); }
};

// The expected figures come from a separate script that read the bytes of the file.
TEST_F(CheckTest, FiguresAreThoseOfAnIndependentReader) {
    Make(kCircuit + "o.3ds --shape '" PROJECT "/elements/horseshoe.zrbf'");
    EXPECT_EQ(Check("o.3ds --json"), 0);
    EXPECT_TRUE(Reports(R"("faces": 6460, "facesWithoutArea": 0, "innerCapFaces": 0, "edges": 9690, )"
                        R"("openEdges": 0, "edgesOfMoreThanTwoFaces": 0, )"));
    EXPECT_TRUE(Reports(R"("bounds": {"low": [33.769703, -70.00803, 3.882248], "high": [110.67393, )"
                        R"(84.093575, 15.974015]}, "materials": ["MATER000", "MATER001"], )"
                        R"("volume": 1535.476167164)"));
}

TEST_F(CheckTest, EachKindOfTunnelHasItsOwnVerdict) {
    MakePresetShape(kPresetRounded);  // eight nodes
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    MirrorTunnelShape();
    ASSERT_TRUE(SaveTunnelShape(In("mirrored.zrbf")));
    const struct {
        std::string tunnels, options;
        int status;
        const char* report;
    } cases[] = {
        {"-TT-T-", "--shape s.zrbf", 0, "closed, facing outwards, volume "},
        {"-TT---", "--shape mirrored.zrbf", 1, "FACING INWARDS, volume -"},
        {"-TT---", "--shape mirrored.zrbf", 1, "Wrong: walls face the wrong way in 1 of 1 surface."},
        {"T---TT", "--shape s.zrbf", 0, "closed, 16 edges of more than two faces, facing outwards"},
        {"T---TT", "--shape s.zrbf", 0, "16 faces of a cap inside the wall, as a tunnel over the start"},
        {"TTTTTT", "--shape s.zrbf", 0, "16 faces of a cap inside the wall"},
        {"----TT", "--shape s.zrbf", 0, "  16 open edges, facing not judged\n\nSound. With open edges"},
        {"-TT-T-", "--shape s.zrbf --double-sided", 0, "closed, double-sided, facing not judged"}};
    for (const auto& [tunnels, options, status, report] : cases) {
        MakeTrack(WindingCircuit(), tunnels);
        ASSERT_TRUE(WriteTrackFile(In("t.zrtrack")));
        Make("t.zrtrack o.3ds " + options);
        EXPECT_EQ(Check("o.3ds"), status) << tunnels << ' ' << options;
        EXPECT_TRUE(Reports(report)) << tunnels << ' ' << options;
    }
}

TEST_F(CheckTest, DamageIsReportedWithItsPosition) {
    Make(kCircuit + "o.3ds");
    const Bytes whole = ReadBytes(In("o.3ds"));
    const auto word = [&](std::size_t at) { return whole[at] + std::size_t{256} * whole[at + 1]; };
    const std::size_t points = 399, faces = points + 8 + 12 * word(points + 6) + 54;
    const std::size_t group = faces + 8 + 8 * word(faces + 6);
    const std::size_t object = points - 21, next = object + word(object + 2);
    const struct {
        std::size_t at;
        Bytes bytes;
        std::size_t reported;
        const char* reason;
    } cases[] = {{0, {0}, 0, "not a 3D Studio"},
                 {5, {127}, whole.size(), "the file ends here"},
                 {21, {127}, 16, "doesn't fit"},
                 {68, {0}, 32, "lacks its name"},
                 {44 + 7, {'1'}, 212, "two materials"},
                 {138, {101}, 138, "above 100"},
                 {points + 6, {1, 0}, points + 20, "length"},
                 {points + 10, {128, 127}, points + 8, "not finite"},
                 {points + 10, {128, 126}, points + 8, "too far away"},
                 {faces - 54, {0x10}, faces - 48, "two lists of points"},
                 {faces, {0}, object + 15, "no list"},
                 {faces + 8, {whole[points + 6], whole[points + 7]}, faces + 8, "a vertex"},
                 {group, {0}, faces, "no material"},
                 {group + 6, {'\n'}, group + 6, "no material '?"},
                 {group + 17, {1}, group + 19, "two materials"},
                 {next + 13, {'0'}, next + 6, "two objects"}};
    for (const auto& [at, bytes, reported, reason] : cases) {
        Bytes damaged = whole;
        std::copy(bytes.begin(), bytes.end(), &damaged[at]);
        WriteBytes(In("d.3ds"), damaged);
        EXPECT_EQ(Check("d.3ds"), 1) << reason;
        EXPECT_TRUE(Reports("\nDamaged. At byte " + std::to_string(reported) + ": "));
        EXPECT_TRUE(Reports(reason));
    }
}

TEST_F(CheckTest, AFileThatCantBeCheckedIsReportedWithTheReason) {
    WriteBytes(In("empty.3ds"), {'M', 'M', 6, 0, 0, 0});
    WriteBytes(In("\"\xff\n.3ds"), {});
    const struct {
        const char* arguments;
        int status;
        const char *out, *err;
    } cases[] = {{"empty.3ds", 1, "Empty: there are no faces.", ""},
                 {"'\"\xff\n.3ds'", 1, "\"??.3ds\n\nDamaged.", ""},
                 {"--json '\"\xff\n.3ds'", 1,
                  R"({"file": "\"\u00ff\u000a.3ds", "verdict": "damaged", "byte": 0, "reason": ")", ""},
                 {"absent.3ds --json", 1,
                  R"({"file": "absent.3ds", "verdict": "unreadable", "reason": "There is no such file."})",
                  "absent.3ds\nThere is no such file."},
                 {"empty.3ds empty.3ds", 2, "", "not expected"}};
    for (const auto& [arguments, status, out, err] : cases) {
        EXPECT_EQ(Check(arguments), status) << arguments;
        EXPECT_TRUE(Reports(out)) << arguments;
        EXPECT_TRUE(Contains(Text("err"), err)) << arguments;
    }
}

TEST_F(CheckTest, NamesAreOnOneLineAndCut) {
    const std::int16_t material = AddMaterial({}, {}, {}, 0, 0, 0);
    Model3DS.Materials[0].Name = "\u202E\n\xE4" + std::string(58, 'M');
    const std::int32_t mesh = AddMesh("mesh", material);
    AddMeshPoint({1, 2, 3}, mesh);
    AddMeshFace(0, 0, 0, 0, mesh);
    ASSERT_TRUE(Save3DSFile(In("o.3ds")));
    EXPECT_EQ(Check("o.3ds"), 0);
    EXPECT_TRUE(Reports("\nSurface 1: 1 face of ???" + std::string(57, 'M') + "...\n"));
    EXPECT_EQ(Check("o.3ds --json"), 0);
    EXPECT_TRUE(Reports(R"("materials": ["\u202e\u000a\u00e4)" + std::string(57, 'M') + "...\"]}"));
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
        object.Points = {{7, 5, 3}, {8, 5, 3}, {7, 6, 3}, {7, 5, 4}, {7, 5, 3}, {9, 9, 9}};
        object.Faces = faces;
        object.Faces[0].a = 4;
        const auto surfaces = FindSurfaces(object);
        ASSERT_EQ(surfaces.size(), 1u);
        EXPECT_EQ(surfaces[0].OpenEdges, open);
        EXPECT_EQ(surfaces[0].OpposedEdges, opposed);
        EXPECT_EQ(surfaces[0].CrowdedEdges, crowded);
        EXPECT_EQ(surfaces[0].Faces, facing);
        EXPECT_FALSE(surfaces[0].IsDoubleSided());
    }
}

}  // namespace boreforge
