#include "platform/Files.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kContent(3000, 'c');

class FilesTest : public CoreTest {
  protected:
    // A path for each kind of thing that is not a regular file, and for what isn't there.
    std::vector<std::string> MakeStrangePaths() {
        fs::create_directory(In("folder"));
        fs::create_symlink("ring", In("ring"));
        EXPECT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
        return {In("folder"), In("folder/"), In("absent/f"), In("ring"), In("pipe"), ""};
    }
};

TEST_F(FilesTest, OnlyRegularFilesAreRead) {
    for (const std::string& path : MakeStrangePaths()) {
        Bytes content = kContent;
        EXPECT_FALSE(ReadWholeFile(path, content)) << path;
        EXPECT_TRUE(content.empty()) << path;
    }
}

TEST_F(FilesTest, OnlyTheBeginningOfAnotherKindOfFileIsRead) {
    static std::int64_t read;
    read = 0;
    fileCalls.read = [](int file, void* bytes, std::size_t count) {
        const std::int64_t got = SystemFileCalls().read(file, bytes, count);
        read += got;
        return got;
    };
    WriteBytes(In("f"), kContent);
    Bytes content;
    EXPECT_FALSE(ReadWholeFile(In("f"), content, kTrackBeginning));
    EXPECT_EQ(lastFileFailure.problem, FileProblem::WrongBeginning);
    EXPECT_EQ(read, 4);
}

TEST_F(FilesTest, ReadingTakesOneByteMoreThanTheFile) {
    WriteBytes(In("f"), kContent);
    Bytes content;
    ASSERT_TRUE(ReadWholeFile(In("f"), content));
    EXPECT_EQ(content, kContent);
    EXPECT_EQ(content.capacity(), kContent.size() + 1);
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

TEST_F(HeldFileTest, AnUntouchedFileIsHeld) { EXPECT_EQ(Held(), FileProblem::None); }

TEST_F(HeldFileTest, ARewrittenFileOfTheSameContentIsHeld) {
    fs::remove(path_);
    WriteBytes(path_, kContent);
    EXPECT_EQ(Held(), FileProblem::None);
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

TEST_F(HeldFileTest, ALongerFileIsNoticed) {
    Bytes longer = kContent;
    longer.push_back('c');
    WriteBytes(path_, longer);
    EXPECT_EQ(Held(), FileProblem::Changed);
}

TEST_F(HeldFileTest, ARemovedFileIsNoticed) {
    fs::remove(path_);
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
