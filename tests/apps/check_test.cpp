// Runs the checking program as a user's script would.

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "shared/ObjectSurfaces.h"
#include "support/CommandTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

class CheckTest : public CommandTest {
  protected:
    int Make(const std::string& arguments) {
        return Run("'" PROGRAMS "/boreforge-batch' --track-out new.zrtrack " + arguments);
    }
    int Check(const std::string& arguments) {
        return Run("unset DISPLAY WAYLAND_DISPLAY; '" PROGRAMS "/boreforge-check' " + arguments);
    }
    void ExpectReport(const std::string& text) const {
        EXPECT_NE(Text("out").find(text), std::string::npos) << text << "\n\n" << Text("out");
    }
};

// The expected figures come from a separate script that read the bytes of the file.
TEST_F(CheckTest, FiguresAreThoseOfAnIndependentReader) {
    ASSERT_EQ(Make("'" PROJECT "/tracks/small-circuit.zrtrack' o.3ds --shape '" PROJECT
                   "/elements/horseshoe.zrbf'"),
              0);
    EXPECT_EQ(Check("o.3ds --json"), 0);
    ExpectReport(
        R"("faces": 6460, "facesWithoutArea": 0, "innerCapFaces": 0, "edges": 9690, "openEdges": 0, )"
        R"("edgesOfMoreThanTwoFaces": 0, )");
    ExpectReport(R"("bounds": {"low": [33.769703, -70.00803, 3.882248], "high": [110.67393, 84.093575, )"
                 R"(15.974015]}, "materials": ["MATER000", "MATER001"], "volume": 1535.476167164)");
}

TEST_F(CheckTest, EachKindOfTunnelHasItsOwnVerdict) {
    MakePresetShape(kPresetRounded);  // eight nodes
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    MirrorTunnelShape();
    ASSERT_TRUE(SaveTunnelShape(In("mirrored.zrbf")));
    const struct {
        const char *tunnels, *options;
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
        SCOPED_TRACE(std::string(tunnels) + " " + options);
        MakeTrack(WindingCircuit(), tunnels);
        ASSERT_TRUE(WriteTrackFile(In("t.zrtrack")));
        ASSERT_EQ(Make(std::string("t.zrtrack o.3ds ") + options), 0) << Text("err");
        EXPECT_EQ(Check("o.3ds"), status);
        ExpectReport(report);
    }
}

TEST_F(CheckTest, DamageIsReportedWithItsPosition) {
    ASSERT_EQ(Make("'" PROJECT "/tracks/small-circuit.zrtrack' o.3ds"), 0);
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
        ExpectReport("\nDamaged. At byte " + std::to_string(reported) + ": ");
        ExpectReport(reason);
    }
}

TEST_F(CheckTest, AFileThatCantBeCheckedIsReportedWithTheReason) {
    WriteBytes(In("empty.3ds"), {'M', 'M', 6, 0, 0, 0});
    EXPECT_EQ(Check("empty.3ds"), 1);
    ExpectReport("Empty: there are no faces.");
    WriteBytes(In("\"\xff\n.3ds"), {});
    EXPECT_EQ(Check("'\"\xff\n.3ds'"), 1);
    ExpectReport("\"??.3ds\n\nDamaged.");
    EXPECT_EQ(Check("--json '\"\xff\n.3ds'"), 1);
    ExpectReport(R"({"file": "\"\u00ff\u000a.3ds", "verdict": "damaged", "byte": 0, "reason": ")");
    EXPECT_EQ(Check("absent.3ds --json"), 1);
    ExpectReport(R"({"file": "absent.3ds", "verdict": "unreadable", "reason": "There is no such file."})");
    EXPECT_NE(Text("err").find("absent.3ds\nThere is no such file."), std::string::npos) << Text("err");
    EXPECT_EQ(Check("empty.3ds empty.3ds"), 2);
}

TEST_F(CheckTest, NamesAreOnOneLineAndCut) {
    const auto chunk = [](unsigned id, const std::string& content) {
        const std::size_t length = 6 + content.size();
        std::string bytes;
        for (const std::size_t byte : {std::size_t{id}, std::size_t{id} >> 8, length, length >> 8})
            bytes += static_cast<char>(byte);
        return bytes + std::string(2, '\0') + content;
    };
    const std::string one("\1\0", 2);
    const struct {
        std::string name, text, json;
    } cases[] = {{"M\n\nSound.", "M??Sound.", R"(M\u000a\u000aSound.)"},
                 {"\u202E\u0085\xE4", "???", R"(\u202e\u0085\u00e4)"},
                 {std::string(61, 'M'), std::string(60, 'M') + "...", std::string(60, 'M') + "..."}};
    for (const auto& [name, text, json] : cases) {
        const std::string ended = name + '\0', color = chunk(0xA020, chunk(0x11, std::string(3, '\0')));
        const std::string group = chunk(0x4130, ended + one + std::string(2, '\0'));
        const std::string mesh =
            chunk(0x4110, one + std::string(12, '\0')) + chunk(0x4120, one + std::string(8, '\0') + group);
        const std::string object = chunk(0x4000, '\0' + chunk(0x4100, mesh));
        const std::string file =
            chunk(0x4D4D, chunk(0x3D3D, chunk(0xAFFF, chunk(0xA000, ended) + color) + object));
        WriteBytes(In("o.3ds"), {file.begin(), file.end()});
        EXPECT_EQ(Check("o.3ds"), 0);
        ExpectReport("1 object, 1 material, 1 point, 1 face\n");
        ExpectReport("\nSurface 1: 1 face of " + text + "\n");
        EXPECT_EQ(Check("o.3ds --json"), 0);
        ExpectReport("\"materials\": [\"" + json + "\"]}");
    }
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
        object.Faces.assign(faces.begin(), faces.end());
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
