#include "job/mMain.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "platform/FileCalls.h"
#include "platform/Files.h"
#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

class JobTest : public CoreTest {
  protected:
    const std::string track = In("track.zrtrack"), object = In("tube.3ds");

    void Open(const std::string& tunnels) {
        MakeTrack(WindingCircuit(), tunnels);
        TrackFile.DefaultColor1 = 0x0180FF;
        TrackFile.DefaultColor3 = 0x7F6503;
        TrackFile.Segments[2].UseOwnColors = kTrue;
        TrackFile.Segments[2].Color1 = 0xC8C8C8;
        ASSERT_TRUE(WriteTrackFile(track));
        ASSERT_TRUE(OpenTrack(track));
        MakePresetShape(kPresetBox);
    }
    TunnelJobSettings Settings() const { return DeriveJobSettings({}, object); }
    static void MakeShape(std::int32_t nodes, float coordinate) {
        const Vector3D node{coordinate, 0, 0};
        TunnelShape.InsideNodes.assign(static_cast<std::size_t>(nodes), node);
        TunnelShape.OutsideNodes = TunnelShape.InsideNodes;
    }
};

TEST_F(JobTest, WallsAndCapsComeInOrderWithCapsWhereTheFlagChanges) {
    const struct {
        const char* tunnels;
        std::vector<std::size_t> caps;  // the segments at whose start they are
    } cases[] = {{"-T----", {1, 2}},    {"--TTT-", {2, 5}}, {"----TT", {4}},
                 {"TT---T", {0, 2, 5}}, {"TTTTTT", {0}},    {"T-T---", {0, 1, 2, 3}}};
    for (const auto& [tunnels, caps] : cases) {
        SCOPED_TRACE(tunnels);
        Open(tunnels);
        ASSERT_TRUE(RunTunnelJob(Settings()));
        const auto walls = static_cast<std::size_t>(std::count(tunnels, tunnels + 6, 'T'));
        ASSERT_EQ(Model3DS.Meshes.size(), 2 * walls + caps.size());
        for (std::size_t i = 0; i < Model3DS.Meshes.size(); ++i) {
            const Mesh3DS& mesh = Model3DS.Meshes[i];
            EXPECT_EQ(mesh.Name, (i < 10 ? "SEGT000" : "SEGT00") + std::to_string(i));
            EXPECT_EQ(mesh.MaterialIndex, i < walls + caps.size() ? 0 : 1) << i;
            if (i < walls || i >= walls + caps.size()) continue;
            const Matrix3D& world = TracedSegments[caps[i - walls]].Samples[0].WorldMatrix;
            const Vector3D corner = MatTransformPoint(world, TunnelShape.OutsideNodes[2]);
            EXPECT_NE(std::ranges::find(mesh.Points, corner), mesh.Points.end()) << i;
        }
    }
}

TEST_F(JobTest, EachOptionMakesItsOwnChangeOfTheTrack) {
    for (int bits = 0; bits < 8; ++bits) {
        Open("-TT---");
        TrackDocument expected = TrackFile;
        TunnelJobSettings settings = Settings();
        if ((settings.DimColors = bits & 1)) {
            expected.Segments[1].UseOwnColors = kTrue;
            expected.Segments[1].Color1 = 0x004080;  // of 0x0180FF: 0.5, 64, 127.5
            expected.Segments[1].Color3 = 0x403202;  // of 0x7F6503: 63.5, 50.5, 1.5
            expected.Segments[2].Color1 = 0x646464;
        }
        if ((settings.RemoveTunnels = bits & 2))
            expected.Segments[1].IsTunnel = expected.Segments[2].IsTunnel = kFalse;
        if ((settings.PlaceObject = bits & 4))
            expected.SceneryObjects = {{"tube.3ds", "dummy", {1, 0, 0, 0, 1, 0, 0, 0, 1}, {}, {}}};
        ASSERT_TRUE(RunTunnelJob(settings)) << bits;
        TrackFile = expected;
        ASSERT_TRUE(WriteTrackFile(In("expected.zrtrack")));
        EXPECT_EQ(ReadBytes(track), ReadBytes(In("expected.zrtrack"))) << bits;
    }
}

TEST_F(JobTest, AnEmptyShapeStillMakesBothFiles) {
    Open("-T----");
    ResetTunnelShape();
    ASSERT_TRUE(RunTunnelJob(Settings()));
    EXPECT_EQ(ReadBytes(object).size(), 42 + 2 * 168);
    EXPECT_EQ(TrackFile.SceneryObjects.size(), 1u);
}

TEST_F(JobTest, BothMaterialsHaveTheShineOfATunnel) {
    Open("-T----");
    ASSERT_TRUE(RunTunnelJob(Settings()));
    ASSERT_EQ(Model3DS.Materials.size(), 2u);
    for (const Material3DS& material : Model3DS.Materials) {
        EXPECT_EQ(material.Shininess, 25);
        EXPECT_EQ(material.ShininessStrength, 5);
    }
}

TEST_F(JobTest, DimmingAtZeroPercentKeepsAColourAndAtAHundredMakesItBlack) {
    const struct {
        int percent;
        PackedColor color;  // of 0x0180FF
    } cases[] = {{0, 0x0180FF}, {100, 0}};
    for (const auto& [percent, color] : cases) {
        Open("-T----");
        TunnelChoices choices;
        choices.DimPercent = percent;
        ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
        EXPECT_EQ(TrackFile.Segments[1].Color1, color) << percent;
    }
}

TEST_F(JobTest, TheTrackHoldsTheObjectsNameInWindows1252) {
    Open("-T----");
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings({}, In("Tunn\u00E9l \u20AC\u0178.3ds"))));
    EXPECT_EQ(TrackFile.SceneryObjects.back().ObjectFile, "Tunn\xE9l \x80\x9F.3ds");
}

TEST_F(JobTest, ANameThatTheTrackCantHoldIsRefusedOnlyWhenItIsToBePutThere) {
    for (const bool place : {true, false}) {
        Open("-T----");
        TunnelJobSettings settings = Settings();
        settings.OutputPath = In("\u0422\u0443\u043D.3ds");
        settings.PlaceObject = place;
        EXPECT_EQ(bool(RunTunnelJob(settings)), !place);
        Bytes written;
        EXPECT_EQ(bool(ReadWholeFile(settings.OutputPath, written)), !place);
    }
}

TEST_F(JobTest, ATrackWithoutTunnelsIsReportedWhateverElseIsWrong) {
    const struct {
        const char* name;
        std::function<void(TunnelJobSettings&)> spoil;
    } cases[] = {{"nothing", [](TunnelJobSettings&) {}},
                 {"too few segments",
                  [](TunnelJobSettings&) {
                      MakeTrack({Node({1, 2, 3}, {}, {})});
                  }},
                 {"a position that is not finite",
                  [](TunnelJobSettings&) { TrackFile.BezierNodes[2].Position.x = NAN; }},
                 {"the object is the track", [&](TunnelJobSettings& s) { s.OutputPath = track; }}};
    for (const auto& [name, spoil] : cases) {
        SCOPED_TRACE(name);
        Open("------");
        TunnelJobSettings settings = Settings();
        spoil(settings);
        ASSERT_TRUE(WriteTrackFile(track));
        ASSERT_TRUE(OpenTrack(track));
        const Outcome made = RunTunnelJob(settings);
        EXPECT_EQ(TextOf(made), "Track does not have any tunnels!");
        EXPECT_TRUE(made.Why().isNotice);
    }
}

TEST_F(JobTest, MoreWallsThanAFileCanHoldAreRefusedBeforeTheyAreBuilt) {
    constexpr std::size_t kTunnels = 16384;  // two walls each, one more than a file holds
    std::vector<TrackBezierNode> nodes;
    for (std::size_t i = 0; i < kTunnels; ++i)
        nodes.push_back(Node({static_cast<float>(i % 128), 0, static_cast<float>(i / 128)}, {}, {}));
    MakeTrack(nodes, std::string(kTunnels, 'T'));
    ASSERT_TRUE(WriteTrackFile(track));
    ASSERT_TRUE(OpenTrack(track));
    MakePresetShape(kPresetBox);
    EXPECT_TRUE(Contains(TextOf(RunTunnelJob(Settings())), "Is Too Large for a 3DS File"));
    EXPECT_TRUE(Model3DS.Meshes.empty());
}

TEST_F(JobTest, BothSidesOfTheWallsCountForTheSizeOfTheObject) {
    Open("-T----");
    TunnelJobSettings settings = Settings();
    settings.DoubleSided = true;
    // Walls of one side, two faces of 14 bytes for each node of a ring, would just fit into 2 GB.
    const std::int32_t rings = 1 + (TracedSegments[1].SampleCount() - 1) / settings.DetailStep;
    MakeShape(0x7FFFFFFF / (2 * 2 * 14 * rings), 1);
    EXPECT_TRUE(Contains(TextOf(RunTunnelJob(settings)), "Is Too Large"));
}

TEST_F(JobTest, PointsThatNoFacesShareCountForTheSizeOfTheObject) {
    Open("-T----");
    const std::int32_t rings = 1 + (TracedSegments[1].SampleCount() - 1) / Settings().DetailStep;
    // The faces, two of 14 bytes for each node of a ring, would take a third of 2 GB, their points 1.7 GB.
    MakeShape(0x7FFFFFFF / (3 * 2 * 2 * 14 * rings), NAN);
    EXPECT_TRUE(Contains(TextOf(RunTunnelJob(Settings())), "Is Too Large"));
}

TEST_F(JobTest, WithoutAnOpenTrackNothingHappensAndNothingIsSaid) {
    EXPECT_FALSE(OpenTrack(In("no.zrtrack")));
    const Outcome made = RunTunnelJob(Settings());
    EXPECT_FALSE(made);
    EXPECT_EQ(TextOf(made), "");
}

TEST_F(JobTest, AJobThatFailsLeavesTheTrackAndSaysWhy) {
    const std::string other = In("other.zrtrack");
    TunnelJobSettings settings;
    const struct {
        const char* message;  // a part of it
        bool objectExists;    // afterwards
        std::function<void()> spoil;
    } cases[] = {{"The track was not changed.", false, [&] { settings.OutputPath = In("no/tube.3ds"); }},
                 {"Is Too Large", false, [] { MakeShape(1 << 21, 1); }},
                 {"the track was not saved.", true,
                  [] { fileCalls.replaceIn = [](int, const char*, const char*) { return -1; }; }},
                 {"Can't Be Followed", false, [&] {
                      MakeTrack({Node({1, 2, 3}, {}, {})}, "T");
                      EXPECT_TRUE(WriteTrackFile(other));
                      EXPECT_TRUE(OpenTrack(other));
                  }}};
    for (const auto& [message, objectExists, spoil] : cases) {
        SCOPED_TRACE(message);
        fs::remove(object);
        Open("-TT---");
        settings = Settings();
        spoil();
        const Bytes before = ReadBytes(track);
        EXPECT_TRUE(Contains(TextOf(RunTunnelJob(settings)), message));
        fileCalls = SystemFileCalls();
        EXPECT_EQ(ReadBytes(track), before);
        EXPECT_EQ(fs::exists(object), objectExists);
    }
}

}  // namespace boreforge
