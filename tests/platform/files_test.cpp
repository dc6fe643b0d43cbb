#include "platform/Files.h"
#include "platform/FileCalls.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;
using FilesTest = CoreTest;

const Bytes kOld(3000, 'o'), kNew(2000, 'n');
TEST_F(FilesTest, TheNewFileIsOnTheDiskBeforeItTakesThePlaceOfTheOldOne) {
    static std::string calls;
    static const FileCalls kSystem = SystemFileCalls();
    calls.clear();
    WriteBytes(In("f"), kOld);
    fileCalls.open = [](const char* path, int flags, mode_t mode) {
        calls += "open" + std::to_string(mode) + " ";
        return kSystem.open(path, flags, mode);
    };
    fileCalls.write = [](int file, const void* bytes, std::size_t count) {
        return calls += "write ", kSystem.write(file, bytes, count);
    };
    fileCalls.fsync = [](int file) { return calls += "fsync ", kSystem.fsync(file); };
    fileCalls.rename = [](const char* from, const char* to) {
        return calls += "rename ", kSystem.rename(from, to);
    };
    EXPECT_TRUE(ReplaceFile(In("f"), kNew));
    EXPECT_EQ(calls, "open384 write fsync rename open0 fsync ") << "384: for the owner alone";
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
