#include "platform/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/FileCalls.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;
using FilesTest = CoreTest;

const Bytes kOld(3000, 'o'), kNew(2000, 'n');
const FileCalls kSystem = SystemFileCalls();
int callsBeforeFailure;  // the call after so many fails

bool Fails() { return callsBeforeFailure-- == 0 && (errno = EIO) != 0; }

// The system's calls, one of which fails; reads and writes do half of what they are asked for.
FileCalls FailingCalls(int which) {
    callsBeforeFailure = which;
    FileCalls calls = kSystem;
    calls.open = [](const char* p, int f, mode_t m) { return Fails() ? -1 : kSystem.open(p, f, m); };
    calls.fstat = [](int f, struct stat* s) { return Fails() ? -1 : kSystem.fstat(f, s); };
    calls.read = [](int f, void* b, std::size_t n) { return Fails() ? -1 : kSystem.read(f, b, n / 2 + 1); };
    calls.write = [](int f, const void* b, std::size_t n) {
        return Fails() ? -1 : kSystem.write(f, b, n / 2 + 1);
    };
    calls.fchmod = [](int f, mode_t m) { return Fails() ? -1 : kSystem.fchmod(f, m); };
    calls.fsync = [](int f) { return Fails() ? -1 : kSystem.fsync(f); };
    calls.close = [](int f) { return kSystem.close(f) != 0 || Fails() ? -1 : 0; };
    calls.rename = [](const char* from, const char* to) { return Fails() ? -1 : kSystem.rename(from, to); };
    return calls;
}

auto OpenFiles() { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); }

TEST_F(FilesTest, WhicheverCallFailsAFileIsReplacedOrReadWholeOrNotAtAll) {
    const auto openFiles = OpenFiles();
    for (const bool replaces : {true, false})
        for (int which = 0, failures = 0; which == 0 || callsBeforeFailure < 0; ++which) {
            fs::remove(In("f"));
            if (replaces) WriteBytes(In("f"), kOld), ::chmod(In("f").c_str(), 0604);
            fileCalls = FailingCalls(which);
            const bool good = ReplaceFile(In("f"), kNew);
            failures += good ? 0 : 1;
            EXPECT_TRUE(callsBeforeFailure < 0 || which - failures == 3) << "three calls flush the folder";
            EXPECT_EQ(Listing().size(), good || replaces ? 1 : 0) << which;
            EXPECT_TRUE(Listing().empty() || ReadBytes(In("f")) == (good ? kNew : kOld)) << which;
            EXPECT_TRUE(!replaces || fs::status(In("f")).permissions() == fs::perms(0604)) << which;
        }
    WriteBytes(In("f"), kOld);
    Bytes content;
    for (int which = 0; which == 0 || callsBeforeFailure < 0; ++which) {
        fileCalls = FailingCalls(which);
        const bool good = ReadWholeFile(In("f"), content);
        EXPECT_TRUE((good || callsBeforeFailure < 0) && content == (good ? kOld : Bytes())) << which;
    }
    EXPECT_EQ(OpenFiles(), openFiles);
}

TEST_F(FilesTest, LinksAreFollowedAndWhatIsNoPlainFileIsRefused) {
    fs::create_directory(In("folder"));
    WriteBytes(In("folder/real"), kOld);
    fs::create_symlink("folder/real", In("link"));
    fs::create_symlink("link", In("link2"));
    fs::create_symlink("folder/new", In("dangling"));
    fs::create_symlink("ring", In("ring"));
    ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(SameFile(In("dangling"), In("folder/./new"))) << "nothing stands there yet";
    EXPECT_FALSE(SameFile(In("dangling"), In("new")) || FileExists(In("dangling")));
    EXPECT_TRUE(ReplaceFile(In("link2"), kNew) && ReplaceFile(In("dangling"), kNew));
    EXPECT_TRUE(ReadBytes(In("folder/real")) == kNew && ReadBytes(In("folder/new")) == kNew);
    EXPECT_TRUE(SameFile(In("link2"), In("folder/../folder/real")) && !SameFile(In("link2"), In("dangling")));
    EXPECT_TRUE(fs::is_symlink(In("link2")) && fs::is_symlink(In("link")) && fs::is_symlink(In("dangling")));
    const auto listing = Listing();
    Bytes content;
    for (const char* name : {"folder", "folder/", "absent/f", "link/f", "ring", "pipe"}) {
        EXPECT_FALSE(ReplaceFile(In(name), kNew) || OutputFile().Create(In(name))) << name;
        EXPECT_FALSE(ReadWholeFile(In(name), content)) << name;
    }
    ::chmod(In("folder/real").c_str(), 0444);
    EXPECT_EQ(ReplaceFile(In("link"), kOld), ::geteuid() == 0) << "only root writes what is locked";
    EXPECT_EQ(Listing(), listing);
}

}  // namespace boreforge
