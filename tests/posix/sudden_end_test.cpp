// A job ends between any two of the calls that reach the disk. tools/campaign ends whole programs at random.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <tuple>

#include "job/mMain.h"
#include "platform/Signals.h"
#include "support/CoreTest.h"
#include "support/FailingCalls.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

class SuddenEndTest : public CoreTest {
  protected:
    SuddenEndTest() {
        MakeLargeShape();
        MakeTrack(WindingCircuit(), "-TT---");
        EXPECT_TRUE(WriteTrackFile(track));
        oldTrack = ReadBytes(track);
        EXPECT_TRUE(OpenTrack(track));
        EXPECT_TRUE(RunTunnelJob(settings));
        newTrack = ReadBytes(track);
        newObject = ReadBytes(object);
    }
    // Runs the job over old files in a process that gets the signal after its call number `which`. False if
    // the job made fewer calls.
    bool JobEndsAfterCall(int which, int signal) {
        WriteBytes(track, oldTrack);
        WriteBytes(object, oldObject);
        const pid_t child = ::fork();
        if (child == 0) {
            RemoveUnfinishedOnSignals();
            std::ignore = OpenTrack(track);
            RaiseAfterCall(which, signal);
            ::_exit(RunTunnelJob(settings) ? 0 : 1);
        }
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(WTERMSIG(status), WIFSIGNALED(status) ? signal : 0);
        EXPECT_EQ(WEXITSTATUS(status), 0);
        return WIFSIGNALED(status);
    }
    // Whatever a job that was ended has done. Returns the number of hidden files that it left, and removes
    // them.
    std::size_t HiddenFilesBesideWholeOnes() {
        const Bytes trackNow = ReadBytes(track), objectNow = ReadBytes(object);
        const bool isNewTrack = trackNow == newTrack, isNewObject = objectNow == newObject;
        EXPECT_EQ(trackNow, isNewTrack ? newTrack : oldTrack);
        EXPECT_EQ(objectNow, isNewObject ? newObject : oldObject);
        EXPECT_LE(isNewTrack, isNewObject) << "the track names an object that isn't there";
        std::size_t hidden = 0;
        for (const std::string& name : Listing())
            if (name.starts_with(".boreforge-")) hidden += std::filesystem::remove(In(name)) ? 1 : 0;
        return hidden;
    }
    const std::string track = In("t.zrtrack"), object = In("o.3ds");
    const TunnelJobSettings settings = DeriveJobSettings({}, object);
    const Bytes oldObject = Bytes(100, 'o');
    Bytes oldTrack, newTrack, newObject;
};

TEST_F(SuddenEndTest, AKillAfterAnyCallLeavesWholeFiles) {
    std::size_t hidden = 0;
    for (int call = 0; JobEndsAfterCall(call, SIGKILL); ++call) {
        SCOPED_TRACE(call);
        hidden += HiddenFilesBesideWholeOnes();
    }
    EXPECT_GT(hidden, 0u) << "no kill came while a file was written";
}

TEST_F(SuddenEndTest, ASignalAfterAnyCallLeavesWholeFilesAndNoHiddenOne) {
    for (int call = 0; JobEndsAfterCall(call, SIGTERM); ++call)
        EXPECT_EQ(HiddenFilesBesideWholeOnes(), 0u) << call;
}

}  // namespace boreforge
