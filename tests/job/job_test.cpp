#include "job/mMain.h"

#include <cerrno>
#include <cmath>
#include <filesystem>
#include <functional>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "platform/FileCalls.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kChanged = FromHex("'ZPHR by another program'");

struct JobTest : CoreTest {
    void Open(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels) {
        MakeTrack(nodes, tunnels);
        ASSERT_TRUE(WriteTrackFile(track));
        ASSERT_TRUE(OpenTrack(track));
        MakePresetShape(kPresetBox);
    }
    void Open(const std::string& tunnels) { Open(WindingCircuit(), tunnels); }
    std::string Run() { return TextOf(RunTunnelJob(DeriveJobSettings({}, object))); }
    const std::string track = In("track.zrtrack"), object = In("tube.3ds");
};

TEST_F(JobTest, TheTrackHoldsTheObjectsNameInWindows1252) {
    Open("-T----");
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings({}, In("Tunn\u00E9l \u20AC.3ds"))));
    EXPECT_EQ(TrackFile.SceneryObjects.back().ObjectFile, "Tunn\xE9l \x80.3ds");
}

TEST_F(JobTest, ATrackWithoutTunnelsIsANoticeEvenIfItsPathCantBeFollowed) {
    auto nodes = WindingCircuit();
    nodes[2].Position.x = NAN;
    Open(nodes, "------");
    const Outcome made = RunTunnelJob(DeriveJobSettings({}, track));
    EXPECT_EQ(TextOf(made), "Track does not have any tunnels!");
    EXPECT_TRUE(made.Why().isNotice);
}

TEST_F(JobTest, WithoutAnOpenTrackNothingHappensAndNothingIsSaid) {
    EXPECT_FALSE(OpenTrack(In("absent.zrtrack")));
    const Outcome made = RunTunnelJob(DeriveJobSettings({}, object));
    ASSERT_FALSE(made);
    EXPECT_EQ(TextOf(made), "");
}

TEST_F(JobTest, ATrackSavedElsewhereIsNotCompared) {
    Open("-TT---");
    WriteBytes(track, kChanged);
    TrackFilePath = In("elsewhere.zrtrack");
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(ReadBytes(track), kChanged);
}

TEST_F(JobTest, ASecondJobReplacesOurOwnSave) {
    Open("-TT---");
    TunnelChoices choices;
    choices.removeTunnels = false;
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
    EXPECT_EQ(Run(), "");
}

TEST_F(JobTest, AJobThatFailsSaysWhyAndLeavesTheTrack) {
    const std::string nothing = "Nothing was written.";
    const std::string otherName = " Open the track again and choose another name.";
    std::string path;
    const struct {
        std::string headline, consequence;
        bool objectIsWritten;
        std::function<void()> spoil;
    } cases[] = {
        {"The 3DS Object Can't Be Written!", "The track was not changed.", false,
         [&] { path = In("absent/tube.3ds"); }},
        {"The 3DS Object Would Replace the Track!", nothing + otherName, false,
         [&] { path = In("./track.zrtrack"); }},
        {"The Object's Name Can't Be Put into the Track!",
         "The texts in a track can hold only Western European characters (Windows-1252). " + nothing +
             otherName,
         false, [&] { path = In("\u0422.3ds"); }},
        {"The Track Is in Use by Another Program!",
         nothing + " Open the track again when that program has finished.", false,
         [] {
             fileCalls.lock = [](int) {
                 errno = EWOULDBLOCK;
                 return -1;
             };
         }},
        {"The Track Was Changed by Another Program!",
         nothing + " Open the track again and make the object once more.", false,
         [&] {
             ASSERT_TRUE(OpenTrack(In("./track.zrtrack")));
             TrackFilePath = track;
             WriteBytes(track, kChanged);
         }},
        {"The Track Can't Be Saved!", "The 3DS object was written; the track was not saved.", true,
         [] { fileCalls.replaceIn = [](int, const char*, const char*) { return -1; }; }},
        {"The Tunnel Is Too Large for a 3DS File!",
         nothing + " Open the track again and choose less detail, or use a shape with fewer nodes.", false,
         [] {
             TunnelShape.InsideNodes.assign(1 << 21, {});
             TunnelShape.OutsideNodes = TunnelShape.InsideNodes;
         }},
        {"The Track's Path Can't Be Followed!",
         "A tunnel needs at least two segments, a node for each of them, finite positions and rolls, "
         "and no more than 1,000,000 units of path. " +
             nothing,
         false, [&] {
             Open({Node({1, 2, 3}, {}, {})}, "T");
         }}};
    for (const auto& [headline, consequence, objectIsWritten, spoil] : cases) {
        SCOPED_TRACE(headline);
        Open("-TT---");
        path = object;
        spoil();
        ObjectPartNumber = -1;  // until something is built
        const Bytes before = ReadBytes(track);
        const std::string text = TextOf(RunTunnelJob(DeriveJobSettings({}, path)));
        fileCalls = SystemFileCalls();
        EXPECT_TRUE(text.starts_with("Error - " + headline + "\n\n")) << text;
        EXPECT_TRUE(text.ends_with("\n\n" + consequence)) << text;
        EXPECT_EQ(ReadBytes(track), before);
        EXPECT_EQ(fs::exists(object), objectIsWritten);
        EXPECT_EQ(ObjectPartNumber != -1, objectIsWritten);
        EXPECT_TRUE(Model3DS.Meshes.empty());
        fs::remove(object);
    }
}

}  // namespace boreforge
