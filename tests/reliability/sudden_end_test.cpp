// The batch program ends in the middle of its work: it is killed, or there is no more memory.
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
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
    // With a terrain, so that writing the track takes its share of the time.
    SuddenEndTest() {
        TrackFile.HasTerrain = kTrue;
        TrackFile.TerrainWidth = TrackFile.TerrainDepth = 600;
        TrackFile.TerrainGrid.assign(600 * 600, 1.5f);
        MakeLargeShape();
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")) && SaveTunnelShape(In("s.zrbf")));
        track_ = ReadBytes(In("t.zrtrack"));
    }
    std::string program_ = PROGRAMS "/boreforge-batch", track = In("t.zrtrack"), object = In("o.3ds");
    std::string option_ = "--shape", shape_ = In("s.zrbf");

    pid_t Start() {
        char* const arguments[] = {program_.data(), track.data(),  object.data(),
                                   option_.data(),  shape_.data(), nullptr};
        posix_spawn_file_actions_t quiet;
        posix_spawn_file_actions_init(&quiet);
        posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
        pid_t child = -1;
        EXPECT_EQ(::posix_spawn(&child, program_.c_str(), &quiet, nullptr, arguments, environ), 0);
        posix_spawn_file_actions_destroy(&quiet);
        return child;
    }
    std::size_t Temporaries() const {
        std::size_t count = 0;
        for (const std::string& name : Listing())
            count += name.starts_with(".boreforge-") ? 1 : 0;
        return count;
    }
};

TEST_F(SuddenEndTest, AnExportThatIsEndedLeavesTheOldTrackOrTheNewOne) {
    int status = -1;
    auto taken = Microseconds::max();  // by the quickest of three whole runs
    for (int run = 0; run < 3; ++run) {
        WriteBytes(track, track_);
        const auto start = std::chrono::steady_clock::now();
        ASSERT_EQ(::waitpid(Start(), &status, 0) > 0 ? status : -1, 0);
        taken = std::min(taken,
                         std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - start));
    }
    const Bytes made = ReadBytes(track), whole = ReadBytes(object);
    ASSERT_NE(made, track_);

    constexpr int kKills = 300, kTerminations = 100;
    std::mt19937 random(20261123);
    std::uniform_int_distribution<long> moment(0, taken.count());
    int inObject = 0, inTrack = 0, finished = 0;
    for (int kill = 0; kill < kKills + kTerminations; ++kill) {
        SCOPED_TRACE(kill);
        WriteBytes(track, track_);
        fs::remove(object);
        const std::size_t before = Temporaries();
        const pid_t child = Start();
        std::this_thread::sleep_for(Microseconds(moment(random)));
        ::kill(child, kill < kKills ? SIGKILL : SIGTERM);
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        const Bytes now = ReadBytes(track);
        ASSERT_TRUE(now == track_ || now == made);
        ASSERT_TRUE(ReadTrackFile(track) && (WIFSIGNALED(status) || now == made));
        EXPECT_TRUE(now == track_ || ReadBytes(object) == whole);
        const bool halfObject = fs::exists(object) && fs::file_size(object) < whole.size();
        if (kill >= kKills) {
            EXPECT_TRUE(!halfObject && Temporaries() == before) << "what is unfinished is removed";
            continue;
        }
        finished += now == made ? 1 : 0;
        inTrack += Temporaries() > before ? 1 : 0;
        inObject += halfObject ? 1 : 0;
    }
    std::printf("%d kills: %d while the object was written, %d while the track was, %d behind that\n", kKills,
                inObject, inTrack, finished);
    EXPECT_GT(inObject + inTrack, 0);
    WriteBytes(track, track_);
    ASSERT_EQ(::waitpid(Start(), &status, 0) > 0 ? status : -1, 0);
    EXPECT_EQ(ReadBytes(track), made);
}

TEST_F(SuddenEndTest, TooLittleMemoryEndsInAMessage) {
    if (kSanitized) GTEST_SKIP() << "the sanitizer's own addresses exceed any limit";
    const auto limited = [](int kilobytes) {
        return "ulimit -v " + std::to_string(kilobytes) + " && " + kBatch;
    };
    const std::string job = "t.zrtrack o.3ds --shape s.zrbf --detail extreme";
    ASSERT_EQ(Run(kBatch + job + " --track-out new"), 0);
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
        ASSERT_TRUE(Text("err").starts_with("Error - ")) << Text("err");
        ASSERT_TRUE(TrackIsAsItWas() && Temporaries() == 0) << kilobytes;
        ASSERT_TRUE(!fs::exists(object) || ReadBytes(object) == whole) << kilobytes;
    }
    std::printf("%d limits of memory that did not suffice\n", refusals);
    EXPECT_GT(refusals, 10);
}

}  // namespace boreforge
