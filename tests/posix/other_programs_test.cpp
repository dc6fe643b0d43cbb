// Links, and other programs that change the same files: nothing of theirs is lost.
#include <cerrno>
#include <filesystem>

#include "editor/TunnelShape.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

class OtherProgramsTest : public CoreTest {
  protected:
    OtherProgramsTest() {
        track = In("t.zrtrack");
        changed = In("changed.zrtrack");
        MakePresetShape(kPresetBox);
        MakeTrack(WindingCircuit(), "-TT---");
        EXPECT_TRUE(WriteTrackFile(track));
        MakeTrack(WindingCircuit(), "------");
        EXPECT_TRUE(WriteTrackFile(changed));
        EXPECT_TRUE(OpenTrack(track));
    }
    // Runs the job and returns why it failed.
    std::string Refusal() { return TextOf(RunTunnelJob(DeriveJobSettings({}, object))); }
    static inline std::string track, changed;
    const std::string object = In("o.3ds");
};

TEST_F(OtherProgramsTest, ATrackChangedSinceItWasReadIsRefusedAndNothingIsWritten) {
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    const std::string said = Refusal();
    EXPECT_TRUE(Contains(said, "Error - The Track Was Changed by Another Program!"));
    EXPECT_TRUE(Contains(said, "Nothing was written."));
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
    EXPECT_FALSE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ATrackChangedDuringTheJobStaysAndTheMessageSaysWhatWasWritten) {
    fileCalls.renameIn = [](int folder, const char* from, const char* to) {
        fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
        return SystemFileCalls().renameIn(folder, from, to);
    };
    const std::string said = Refusal();
    EXPECT_TRUE(Contains(said, "Was Changed by Another Program!"));
    EXPECT_TRUE(Contains(said, "The 3DS object was written; the track was not saved."));
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
    EXPECT_TRUE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ASecondJobOnTheOpenTrackReplacesOurOwnSave) {
    TunnelChoices choices;
    choices.RemoveTunnels = false;
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
    EXPECT_TRUE(RunTunnelJob(DeriveJobSettings(choices, object)));
}

TEST_F(OtherProgramsTest, AFailureToReadTheTrackAgainHasItsOwnReason) {
    fileCalls.read = [](int, void*, std::size_t) -> std::int64_t {
        errno = EIO;
        return -1;
    };
    EXPECT_TRUE(Contains(Refusal(), "Input/output error."));
}

TEST_F(OtherProgramsTest, AnObjectThatLeadsToTheTrackIsRefused) {
    fs::create_symlink(track, object);
    EXPECT_TRUE(Contains(Refusal(), "Would Replace the Track"));
}

TEST_F(OtherProgramsTest, ATrackThatWasReadThroughALinkIsCompared) {
    fs::create_symlink(track, In("link.zrtrack"));
    ASSERT_TRUE(OpenTrack(In("link.zrtrack")));
    TrackFilePath = track;
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    const std::string said = Refusal();
    EXPECT_TRUE(Contains(said, "Was Changed by Another Program!"));
}

TEST_F(OtherProgramsTest, ATrackSavedElsewhereIsNotCompared) {
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    TrackFilePath = In("elsewhere.zrtrack");
    EXPECT_TRUE(RunTunnelJob(DeriveJobSettings({}, object)));
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
}

}  // namespace boreforge
