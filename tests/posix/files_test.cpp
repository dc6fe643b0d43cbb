#include "platform/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>

#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kContent(3000, 'c');

using FilesTest = CoreTest;

TEST_F(FilesTest, WhatCantBeReadIsRefusedWithItsReason) {
    fs::create_directory(In("folder"));
    fs::create_symlink("ring", In("ring"));
    ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
    WriteBytes(In("huge"), {});
    fs::resize_file(In("huge"), std::uintmax_t{1} << 31);
    const struct {
        const char *name, *reason;
    } cases[] = {{"folder", "It is not a regular file."},
                 {"pipe", "It is not a regular file."},
                 {"absent/f", "There is no such file."},
                 {"ring", "Too many levels of symbolic links."},
                 {"huge", "It is too large to be read."}};
    for (const auto& [name, reason] : cases) {
        Bytes content = kContent;
        EXPECT_EQ(TextOf(ReadWholeFile(In(name), content)), reason) << name;
        EXPECT_TRUE(content.empty()) << name;
    }
}

TEST_F(FilesTest, PathsAreTheSameWhenTheyLeadToTheSameFile) {
    fs::create_directory(In("folder"));
    WriteBytes(In("folder/real"), kContent);
    fs::create_symlink("folder/real", In("link"));
    const struct {
        const char *one, *other;
        bool same;
    } cases[] = {{"link", "folder/../folder/real", true},
                 {"new", "folder/../new", true},
                 {"new", "NEW", true},
                 {"new", "folder/new", false},
                 {"folder", "new", false},
                 {"link", "new", false}};
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(SameFile(In(one), In(other)), same) << one << ' ' << other;
}

// A save over a file that was read before.
class ReadFileTest : public CoreTest {
  protected:
    ReadFileTest() {
        WriteBytes(path_, kContent);
        Bytes content;
        EXPECT_TRUE(ReadWholeFile(path_, content, &asRead_));
    }
    std::string Refusal() { return TextOf(SaveWholeFile(path_, kContent, {.asRead = &asRead_})); }
    const std::string path_ = In("f");
    FileState asRead_;
};

const std::string kChanged = "It was changed by another program.";

TEST_F(ReadFileTest, IsReplacedIfItsContentIsAsItWasRead) {
    const struct {
        const char* name;
        std::function<void()> change;
        std::string reason;
    } cases[] = {{"untouched", [] {}, ""},
                 {"made again", [&] { fs::remove(path_), WriteBytes(path_, kContent); }, ""},
                 {"longer", [&] { WriteBytes(path_, Bytes(kContent.size() + 1, 'c')); }, kChanged},
                 {"of the same length", [&] { WriteBytes(path_, Bytes(kContent.size(), 'd')); }, kChanged},
                 {"removed", [&] { fs::remove(path_); }, kChanged}};
    for (const auto& row : cases) {
        row.change();
        EXPECT_EQ(Refusal(), row.reason) << row.name;
    }
}

TEST_F(ReadFileTest, ChangedDuringTheSaveStays) {
    OutputFile file;
    ASSERT_TRUE(file.Open(path_, {.asRead = &asRead_}));
    ASSERT_TRUE(file.Complete());
    // The times agree, as on a disk that stores them in steps of seconds.
    static FileInfo before;
    before = asRead_.info;
    WriteBytes(path_, Bytes(kContent.size(), 'd'));
    fileCalls.inspect = [](int number, FileInfo* info) {
        const int result = SystemFileCalls().inspect(number, info);
        info->modified = before.modified;
        info->changed = before.changed;
        return result;
    };
    EXPECT_EQ(TextOf(file.PutInPlace()), kChanged);
}

TEST_F(ReadFileTest, HeldByAnotherInstanceIsRefused) {
    const OpenFile other(fileCalls.open(path_.c_str(), OpenFor::Reading));
    ASSERT_EQ(fileCalls.lock(other.Get()), 0);
    EXPECT_EQ(Refusal(), "Another program is saving it right now.");
}

TEST_F(ReadFileTest, IsReplacedOnAFileSystemWithoutLocks) {
    fileCalls.lock = [](int) {
        errno = ENOLCK;
        return -1;
    };
    EXPECT_EQ(Refusal(), "");
}

}  // namespace boreforge
