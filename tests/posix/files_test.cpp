#include "platform/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <thread>

#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kContent(3000, 'c');

using FilesTest = CoreTest;

TEST_F(FilesTest, OnlyRegularFilesAreRead) {
    fs::create_directory(In("folder"));
    fs::create_symlink("ring", In("ring"));
    ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
    for (const char* name : {"folder", "folder/", "absent/f", "ring", "pipe"}) {
        Bytes content = kContent;
        EXPECT_FALSE(ReadWholeFile(In(name), content)) << name;
        EXPECT_TRUE(content.empty()) << name;
    }
}

TEST_F(FilesTest, PathsAreTheSameWhenTheyLeadToTheSamePlace) {
    fs::create_directory(In("folder"));
    WriteBytes(In("folder/real"), kContent);
    fs::create_symlink("folder/real", In("link"));
    fs::create_symlink("folder/new", In("dangling"));
    const struct {
        const char *one, *other;
        bool same;
    } cases[] = {{"link", "folder/../folder/real", true},
                 {"dangling", "folder/./new", true},
                 {"dangling", "new", false},
                 {"link", "dangling", false},
                 {"absent/f", "absent/f", false}};
    for (const auto& [one, other, same] : cases)
        EXPECT_EQ(SameFile(In(one), In(other)), same) << one << ' ' << other;
}

class HeldFileTest : public CoreTest {
  protected:
    HeldFileTest() {
        WriteBytes(path_, kContent);
        Bytes content;
        EXPECT_TRUE(ReadWholeFile(path_, content, {}, &asRead_));
    }
    // What Hold finds: None when the file is as it was read.
    FileProblem Held() {
        HeldFile held;
        return held.Hold(path_, asRead_) ? FileProblem::None : lastFileFailure.problem;
    }
    const std::string path_ = In("f");
    FileState asRead_;
};

TEST_F(HeldFileTest, AFileIsHeldIfItsContentIsAsItWasRead) {
    Bytes longer = kContent;
    longer.push_back('c');
    const struct {
        const char* name;
        std::function<void()> change;
        FileProblem problem;
    } cases[] = {{"untouched", [] {}, FileProblem::None},
                 {"made again", [&] { fs::remove(path_), WriteBytes(path_, kContent); }, FileProblem::None},
                 {"longer", [&] { WriteBytes(path_, longer); }, FileProblem::Changed},
                 {"removed", [&] { fs::remove(path_); }, FileProblem::Changed}};
    for (const auto& row : cases) {
        row.change();
        EXPECT_EQ(Held(), row.problem) << row.name;
    }
}

TEST_F(HeldFileTest, AChangeOfTheSameLengthIsNoticedEvenIfTheTimesAgree) {
    static FileInfo before;
    before = asRead_.info;
    WriteBytes(path_, Bytes(kContent.size(), 'd'));
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = SystemFileCalls().inspect(file, info);
        info->modified = before.modified;
        info->changed = before.changed;
        return result;
    };
    EXPECT_EQ(Held(), FileProblem::Changed);
}

TEST_F(HeldFileTest, AnOldFileWithTheSameTimesIsNotReadAgain) {
    asRead_.timesTell = true;
    fileCalls.read = [](int, void*, std::size_t) -> std::int64_t { return -1; };
    EXPECT_EQ(Held(), FileProblem::None);
}

TEST_F(HeldFileTest, AFileThatAnotherInstanceHoldsIsRefused) {
    const OpenFile other(fileCalls.open(path_.c_str(), OpenFor::Reading));
    ASSERT_EQ(fileCalls.lock(other.Get()), 0);
    EXPECT_EQ(Held(), FileProblem::InUse);
}

TEST_F(HeldFileTest, AFileIsHeldOnAFileSystemWithoutLocks) {
    fileCalls.lock = [](int) {
        errno = ENOLCK;
        return -1;
    };
    EXPECT_EQ(Held(), FileProblem::None);
}

TEST_F(HeldFileTest, AFileReplacedWhileWaitingForTheLockIsNoticed) {
    OpenFile other(fileCalls.open(path_.c_str(), OpenFor::Reading));
    ASSERT_EQ(fileCalls.lock(other.Get()), 0);
    std::thread replacing([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        WriteBytes(In("new"), Bytes(kContent.size(), 'd'));
        fs::rename(In("new"), path_);
        other = OpenFile();
    });
    EXPECT_EQ(Held(), FileProblem::Changed);
    replacing.join();
}

}  // namespace boreforge
