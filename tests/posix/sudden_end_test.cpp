// The batch program ends in the middle of its work: it is killed, or there is no more memory.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "support/BatchTest.h"
#include "support/Sanitizers.h"

namespace boreforge {

namespace fs = std::filesystem;
using Microseconds = std::chrono::microseconds;

class SuddenEndTest : public BatchTest {
  protected:
    // With a terrain, so that writing the track takes a good part of the time.
    SuddenEndTest() {
        TrackFile.HasTerrain = kTrue;
        TrackFile.TerrainWidth = TrackFile.TerrainDepth = 600;
        TrackFile.TerrainGrid.assign(600 * 600, 1.5f);
        MakeLargeShape();
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")));
        EXPECT_TRUE(SaveTunnelShape(In("s.zrbf")));
        track_ = ReadBytes(In("t.zrtrack"));
    }
    const std::string track = In("t.zrtrack"), object = In("o.3ds"), shape = In("s.zrbf");

    // More rounds for a long campaign: `usual` times the environment variable.
    static int Rounds(int usual) {
        const char* const factor = std::getenv("BOREFORGE_CAMPAIGN");
        return factor ? usual * std::atoi(factor) : usual;
    }
    pid_t Start() { return Start(object, track); }
    // Both paths of the track that is saved are the same in most tests.
    pid_t Start(const std::string& output, const std::string& saved) {
        const pid_t child = ::fork();
        if (child == 0) {
            const int nowhere = ::open("/dev/null", O_WRONLY);
            ::dup2(nowhere, 1);
            ::dup2(nowhere, 2);
            ::execl(PROGRAMS "/boreforge-batch", "boreforge-batch", track.c_str(), output.c_str(), "--shape",
                    shape.c_str(), saved == track ? nullptr : "--track-out", saved.c_str(), nullptr);
            ::_exit(127);
        }
        return child;
    }
    // Waits for the program; -1 when a signal ended it.
    static int ExitStatus(pid_t child) {
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::size_t Temporaries() const {
        std::size_t count = 0;
        for (const std::string& name : Listing())
            count += name.starts_with(".boreforge-") ? 1 : 0;
        return count;
    }
};

// What is on the disk after an export was ended at some moment.
struct Leftovers {
    bool newObject, newTrack;
    std::size_t temporaries;
};

class EndedExportTest : public SuddenEndTest {
  protected:
    EndedExportTest() {
        for (int run = 0; run < 3; ++run) {
            WriteBytes(track, track_);
            const auto start = std::chrono::steady_clock::now();
            EXPECT_EQ(ExitStatus(Start()), 0);
            const auto taken = std::chrono::steady_clock::now() - start;
            shortest_ = std::min(shortest_, std::chrono::duration_cast<Microseconds>(taken));
        }
        newTrack_ = ReadBytes(track);
        newObject_ = ReadBytes(object);
    }
    // Starts an export over an old object and sends it the signal at a random moment.
    Leftovers EndAtRandom(int signal) {
        WriteBytes(track, track_);
        WriteBytes(object, oldObject_);
        const std::size_t before = Temporaries();
        const pid_t child = Start();
        std::this_thread::sleep_for(
            Microseconds(std::uniform_int_distribution<long>(0, shortest_.count())(random_)));
        ::kill(child, signal);
        (void)ExitStatus(child);
        const Bytes trackNow = ReadBytes(track), objectNow = ReadBytes(object);
        const bool newObject = objectNow != oldObject_, newTrack = trackNow != track_;
        EXPECT_EQ(objectNow, newObject ? newObject_ : oldObject_);
        EXPECT_EQ(trackNow, newTrack ? newTrack_ : track_);
        EXPECT_LE(newTrack, newObject) << "the track names an object that isn't there";
        return {newObject, newTrack, Temporaries() - before};
    }
    Microseconds shortest_ = Microseconds::max();
    Bytes newTrack_, newObject_;
    const Bytes oldObject_ = Bytes(100, 'o');
    std::mt19937 random_{20261123};
};

TEST_F(EndedExportTest, AKillLeavesWholeFiles) {
    int temporaries = 0, newObjects = 0, newTracks = 0;
    const int kills = Rounds(200);
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        const Leftovers left = EndAtRandom(SIGKILL);
        temporaries += static_cast<int>(left.temporaries);
        newObjects += left.newObject && !left.newTrack ? 1 : 0;
        newTracks += left.newTrack ? 1 : 0;
    }
    std::printf("%d kills: %d left a hidden file, %d the new object with the old track, %d both new\n", kills,
                temporaries, newObjects, newTracks);
    EXPECT_GT(temporaries, 0) << "no kill came while a file was written";
    WriteBytes(track, track_);
    EXPECT_EQ(ExitStatus(Start()), 0) << "the next export works";
}

TEST_F(EndedExportTest, ATerminationSignalLeavesNoHiddenFile) {
    const int ends = Rounds(100);
    for (int end = 0; end < ends && !HasFailure(); ++end)
        EXPECT_EQ(EndAtRandom(SIGTERM).temporaries, 0u);
}

TEST_F(SuddenEndTest, TwoExportsOntoOneTrackNeverLoseAnEntryWithoutAnError) {
    const int rounds = Rounds(20);
    int refused = 0;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        WriteBytes(track, track_);
        const std::string names[] = {"one.3ds", "two.3ds"};
        std::vector<pid_t> children;
        for (const std::string& name : names)
            children.push_back(Start(In(name), track));
        std::vector<std::string> written;
        for (std::size_t i = 0; i < 2; ++i) {
            if (ExitStatus(children[i]) == 0)
                written.push_back(names[i]);
            else
                ++refused;
        }
        ASSERT_TRUE(ReadTrackFile(track));
        std::vector<std::string> entered;
        for (const TrackScenery& entry : TrackFile.SceneryObjects)
            entered.push_back(entry.ObjectFile);
        std::ranges::sort(entered);
        EXPECT_EQ(entered, written);
    }
    std::printf("%d rounds of two exports: %d were refused\n", rounds, refused);
}

TEST_F(SuddenEndTest, OfTwoExportsOntoOneNewTrackOneSucceeds) {
    const int rounds = Rounds(10);
    const std::string saved = In("new.zrtrack");
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        fs::remove(saved);
        const std::string names[] = {"one.3ds", "two.3ds"};
        const pid_t children[] = {Start(In(names[0]), saved), Start(In(names[1]), saved)};
        std::vector<std::string> written;
        for (int i = 0; i < 2; ++i)
            if (ExitStatus(children[i]) == 0) written.push_back(names[i]);
        ASSERT_TRUE(ReadTrackFile(saved));
        ASSERT_EQ(TrackFile.SceneryObjects.size(), 1u);
        // One after the other, both succeed; then the file has the entry of one of them.
        EXPECT_EQ(std::ranges::count(written, TrackFile.SceneryObjects[0].ObjectFile), 1);
    }
}

TEST_F(SuddenEndTest, TooLittleMemoryEndsInAMessage) {
    if (kSanitized) GTEST_SKIP() << "the sanitizer's own addresses exceed any limit";
    const auto limited = [](int kilobytes) {
        return "ulimit -v " + std::to_string(kilobytes) + " && " + kBatch;
    };
    const std::string job = "t.zrtrack o.3ds --shape s.zrbf --detail extreme";
    ASSERT_EQ(Run(kBatch + job + " --track-out new.zrtrack"), 0);
    const Bytes whole = ReadBytes(object);
    int kilobytes = 2000;
    while (Run(limited(kilobytes) + "--version") != 0)
        kilobytes += 200;
    int refusals = 0;
    for (;; kilobytes += 400, ++refusals) {
        fs::remove(object);
        const int status = Run(limited(kilobytes) + job);
        if (status == 0) break;
        ASSERT_EQ(status, 1) << kilobytes << Text("err");
        ASSERT_TRUE(Contains(Text("err"), "emory")) << kilobytes;
        ASSERT_TRUE(TrackIsAsItWas()) << kilobytes;
        ASSERT_EQ(Temporaries(), 0) << kilobytes;
        if (fs::exists(object)) {
            ASSERT_EQ(ReadBytes(object), whole) << kilobytes;
        }
    }
    std::printf("%d limits of memory that did not suffice\n", refusals);
    EXPECT_GT(refusals, 10);
}

}  // namespace boreforge
