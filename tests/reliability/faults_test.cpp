// Each call that reaches the disk fails once: the old file or the new one stands there whole.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "platform/Files.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

// Calls whose failure costs nothing: the opening, flushing and closing of a folder, the deletion of a file
// that is then overwritten, the closing of one that was read.
constexpr int kFolderFlush = 3, kDeletion = 1, kClosing = 1;

const FileCalls kSystem = SystemFileCalls();
int callsBeforeFailure;  // the call after so many fails
bool interrupted;        // every other read and write is

bool Fails() { return callsBeforeFailure-- == 0 && (errno = ENOSPC) != 0; }
bool Interrupts() { return (interrupted = !interrupted) && (errno = EINTR) != 0; }

// The system's calls, one of which fails; reads and writes do half of what they are asked for.
FileCalls FailingCalls(int which) {
    callsBeforeFailure = which;
    FileCalls calls = kSystem;
    calls.open = [](const char* p, int f, mode_t m) { return Fails() ? -1 : kSystem.open(p, f, m); };
    calls.fstat = [](int f, struct stat* s) { return Fails() ? -1 : kSystem.fstat(f, s); };
    calls.read = [](int f, void* b, std::size_t n) {
        return Interrupts() || Fails() ? -1 : kSystem.read(f, b, n / 2 + 1);
    };
    calls.write = [](int f, const void* b, std::size_t n) {
        return Interrupts() || Fails() ? -1 : kSystem.write(f, b, n / 2 + 1);
    };
    calls.fchmod = [](int f, mode_t m) { return Fails() ? -1 : kSystem.fchmod(f, m); };
    calls.fsync = [](int f) { return Fails() ? -1 : kSystem.fsync(f); };
    calls.close = [](int f) { return kSystem.close(f) != 0 || Fails() ? -1 : 0; };
    calls.rename = [](const char* from, const char* to) { return Fails() ? -1 : kSystem.rename(from, to); };
    calls.unlink = [](const char* p) { return Fails() ? -1 : kSystem.unlink(p); };
    return calls;
}

class FaultsTest : public CoreTest {
  protected:
    FaultsTest() { fs::create_directory(In("d")); }
    ~FaultsTest() override {
        if (faults_ > 0) std::printf("%d calls failed, one at a time\n", faults_);
    }
    const std::string track = In("d/t.zrtrack"), shape = In("d/s.zrbf"), object = In("d/o.3ds");

    // Runs `work` once for each call that it makes, which then fails, and once without a failure; after each
    // time `check` gets its result. It succeeds in spite of `tolerated` failures. No file stays open.
    template <class Work, class Check>
    void WithEachCallFailing(int tolerated, Work work, Check check) {
        const auto openFiles = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); };
        const auto before = openFiles();
        int which = 0, failures = 0;
        do {
            SCOPED_TRACE(which);
            fileCalls = FailingCalls(which);
            const bool good = work();
            fileCalls = kSystem;
            failures += good ? 0 : 1;
            EXPECT_TRUE(good || callsBeforeFailure < 0) << "nothing failed";
            check(good);
        } while (++which, callsBeforeFailure < 0);
        EXPECT_EQ(openFiles(), before);
        EXPECT_EQ(which - 1 - failures, tolerated);
        faults_ += which - 1;
    }
    int faults_ = 0;
    std::size_t FilesInFolder() const { return std::distance(fs::directory_iterator(In("d")), {}); }
};

TEST_F(FaultsTest, AJobLeavesTheOldTrackOrTheNewOneAndAWholeObjectOrNone) {
    MakeLargeShape();
    MakeTrack(WindingCircuit(), "-TT---");
    ASSERT_TRUE(WriteTrackFile(track) && OpenTrack(track));
    const Bytes old = ReadBytes(track);
    const TunnelJobSettings settings = DeriveJobSettings({}, object);
    ASSERT_TRUE(RunTunnelJob(settings));
    const Bytes made = ReadBytes(track), whole = ReadBytes(object);
    ASSERT_GT(whole.size(), OutputFile::kBufferSize);
    WithEachCallFailing(
        kFolderFlush + kDeletion,
        [&] {
            fileCalls = kSystem;
            const int which = callsBeforeFailure;
            WriteBytes(track, old);
            EXPECT_TRUE(OpenTrack(track));
            fileCalls = FailingCalls(which);
            return RunTunnelJob(settings);
        },
        [&, shown = Shown().size()](bool good) mutable {
            EXPECT_EQ(ReadBytes(track), good ? made : old);
            EXPECT_TRUE(fs::exists(object) ? ReadBytes(object) == whole : !good);
            EXPECT_EQ(FilesInFolder(), fs::exists(object) ? 2u : 1u);
            EXPECT_EQ(Shown().size(), shown + (good ? 0 : 1));
            EXPECT_TRUE(OpenTrack(track) && RunTunnelJob(settings) == !good) << "the next job works";
            shown = Shown().size();
        });
}

TEST_F(FaultsTest, ALoadOrASaveLeavesTheOldFileOrTheNewOne) {
    MakeTrack(WindingCircuit(), "-TT---");
    const auto save = [&] { return WriteTrackFile(track); };
    const auto saveShape = [&] { return SaveTunnelShape(shape); };
    for (const bool replaces : {true, false})
        for (const bool isTrack : {true, false}) {
            const std::string& path = isTrack ? track : shape;
            const auto saving = [&] { return isTrack ? save() : saveShape(); };
            MakePresetShape(0);
            ASSERT_TRUE(saving());
            const Bytes made = ReadBytes(path), old(made.size() / 2, 'o');
            fs::remove(path);
            WithEachCallFailing(
                kFolderFlush,
                [&] {
                    if (replaces) WriteBytes(path, old), ::chmod(path.c_str(), 0604);
                    return saving();
                },
                [&](bool good) {
                    ASSERT_EQ(FilesInFolder(), good || replaces ? 1u : 0u);
                    if (!good && !replaces) return;
                    EXPECT_EQ(ReadBytes(path), good ? made : old);
                    EXPECT_TRUE(!replaces || fs::status(path).permissions() == fs::perms(0604));
                    EXPECT_TRUE(saving() && ReadBytes(path) == made) << "the next save works";
                    fs::remove(path);
                });
            ASSERT_TRUE(saving());
            WithEachCallFailing(
                kClosing, [&] { return isTrack ? ReadTrackFile(path) : LoadTunnelShape(path); },
                [&](bool) { EXPECT_EQ(ReadBytes(path), made); });
            fs::remove(path);
        }
}

TEST_F(FaultsTest, AFileThatShrinksWhileItIsReadIsRefused) {
    WriteBytes(track, KnownFile());
    fileCalls.fstat = [](int file, struct stat* info) {
        const int result = kSystem.fstat(file, info);
        EXPECT_EQ(::truncate(("/proc/self/fd/" + std::to_string(file)).c_str(), info->st_size - 1), 0);
        return result;
    };
    EXPECT_FALSE(OpenTrack(track));
    EXPECT_EQ(Shown().size(), 1u);
}

}  // namespace boreforge
