// Other programs change the track of a job: nothing of theirs is lost, and the message says what was written.
#include <filesystem>

#include "editor/TunnelShape.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kChanged = FromHex("'ZPHR by another program'");

class OtherProgramsTest : public CoreTest {
  protected:
    OtherProgramsTest() {
        track = In("t.zrtrack");
        MakePresetShape(kPresetBox);
        MakeTrack(WindingCircuit(), "-TT---");
        EXPECT_TRUE(WriteTrackFile(track));
        EXPECT_TRUE(OpenTrack(track));
    }
    // Runs the job and returns why it failed.
    std::string Refusal() { return TextOf(RunTunnelJob(DeriveJobSettings({}, object))); }
    static inline std::string track;
    const std::string object = In("o.3ds");
};

TEST_F(OtherProgramsTest, ATrackChangedSinceItWasReadThroughALinkIsRefused) {
    fs::create_symlink(track, In("link.zrtrack"));
    ASSERT_TRUE(OpenTrack(In("link.zrtrack")));
    TrackFilePath = track;
    WriteBytes(track, kChanged);
    const std::string said = Refusal();
    EXPECT_TRUE(Contains(said, "Error - The Track Was Changed by Another Program!"));
    EXPECT_TRUE(Contains(said, "Nothing was written."));
    EXPECT_EQ(ReadBytes(track), kChanged);
    EXPECT_FALSE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ATrackSavedElsewhereIsNotCompared) {
    WriteBytes(track, kChanged);
    TrackFilePath = In("elsewhere.zrtrack");
    EXPECT_EQ(Refusal(), "");
    EXPECT_EQ(ReadBytes(track), kChanged);
}

TEST_F(OtherProgramsTest, ATrackChangedDuringTheJobStaysAfterTheObjectWasWritten) {
    fileCalls.renameIn = [](int folder, const char* from, const char* to) {
        WriteBytes(track, kChanged);
        return SystemFileCalls().renameIn(folder, from, to);
    };
    const std::string said = Refusal();
    EXPECT_TRUE(Contains(said, "Was Changed by Another Program!"));
    EXPECT_TRUE(Contains(said, "The 3DS object was written; the track was not saved."));
    EXPECT_EQ(ReadBytes(track), kChanged);
    EXPECT_TRUE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ATrackThatAnotherInstanceIsSavingIsInUse) {
    const OpenFile other(fileCalls.open(track.c_str(), OpenFor::Reading));
    ASSERT_EQ(fileCalls.lock(other.Get()), 0);
    EXPECT_TRUE(Contains(Refusal(), "Error - The Track Is in Use by Another Program!"));
    EXPECT_FALSE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ASecondJobReplacesOurOwnSave) {
    TunnelChoices choices;
    choices.removeTunnels = false;
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
    EXPECT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
}

TEST_F(OtherProgramsTest, AnObjectThatLeadsToTheTrackIsRefused) {
    fs::create_symlink(track, object);
    EXPECT_TRUE(Contains(Refusal(), "Would Replace the Track"));
}

}  // namespace boreforge
