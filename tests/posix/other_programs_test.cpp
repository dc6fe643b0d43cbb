// Links, and other programs that change the same files: nothing of theirs is lost.
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
        MakePresetShape(0);
        MakeTrack(WindingCircuit(), "-TT---");
        EXPECT_TRUE(WriteTrackFile(track));
        MakeTrack(WindingCircuit(), "------");
        EXPECT_TRUE(WriteTrackFile(changed));
        EXPECT_TRUE(OpenTrack(track));
    }
    // Runs the job, which must fail with one message.
    std::string Refusal(const std::string& output) {
        EXPECT_FALSE(RunTunnelJob(DeriveJobSettings({}, output)));
        EXPECT_EQ(Shown().size(), 1u);
        return Shown().empty() ? "" : Shown().back();
    }
    static inline std::string track, changed;
    const std::string object = In("o.3ds");
};

TEST_F(OtherProgramsTest, ATrackChangedSinceItWasReadIsRefusedAndNothingIsWritten) {
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    const std::string said = Refusal(object);
    EXPECT_NE(said.find("Error - The Track Was Changed by Another Program!"), std::string::npos) << said;
    EXPECT_NE(said.find("Nothing was written."), std::string::npos) << said;
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
    EXPECT_FALSE(fs::exists(object));
}

TEST_F(OtherProgramsTest, ATrackChangedDuringTheJobStaysAndTheMessageSaysWhatWasWritten) {
    fileCalls.renameIn = [](int folder, const char* from, const char* to) {
        fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
        return SystemFileCalls().renameIn(folder, from, to);
    };
    const std::string said = Refusal(object);
    EXPECT_NE(said.find("Was Changed by Another Program!"), std::string::npos) << said;
    EXPECT_NE(said.find("The 3DS object was written; the track was not saved."), std::string::npos) << said;
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
    EXPECT_TRUE(fs::exists(object));
}

TEST_F(OtherProgramsTest, AnObjectThatLeadsToTheTrackIsRefused) {
    for (const std::string& saved : {track, In("new.zrtrack")}) {
        TrackFilePath = saved;
        fs::remove(object);
        fs::create_symlink(saved, object);
        EXPECT_FALSE(RunTunnelJob(DeriveJobSettings({}, object))) << saved;
        EXPECT_NE(Shown().back().find("Would Replace the Track"), std::string::npos) << saved;
    }
}

TEST_F(OtherProgramsTest, ATrackThatWasReadThroughALinkIsCompared) {
    fs::create_symlink(track, In("link.zrtrack"));
    ASSERT_TRUE(OpenTrack(In("link.zrtrack")));
    TrackFilePath = track;
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    const std::string said = Refusal(object);
    EXPECT_NE(said.find("Was Changed by Another Program!"), std::string::npos) << said;
}

TEST_F(OtherProgramsTest, ATrackSavedElsewhereIsNotCompared) {
    fs::copy_file(changed, track, fs::copy_options::overwrite_existing);
    TrackFilePath = In("elsewhere.zrtrack");
    EXPECT_TRUE(RunTunnelJob(DeriveJobSettings({}, object)));
    EXPECT_EQ(ReadBytes(track), ReadBytes(changed));
}

}  // namespace boreforge
