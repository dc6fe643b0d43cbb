// What a save replaces and what it refuses. reliability/disks.sh has permissions and links, apps/batch.sh
// what is no file.
#include "platform/Files.h"

#include <cerrno>
#include <filesystem>
#include <functional>

#include "platform/OutputFile.h"
#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kOld(3000, 'o'), kNew(2000, 'n');
const std::string kChanged = "It was changed by another program.";

template <int error>
int FailWith() {
    errno = error;
    return -1;
}

class FilesTest : public CoreTest {
  protected:
    Outcome Save(const SaveRules& rules = {}) { return SaveWholeFile(path, kNew, rules); }
    const std::string path = In("f");
};

TEST_F(FilesTest, TheWholeNewFileIsOnTheDiskBeforeItReplacesTheOldOne) {
    static std::int64_t flushed;
    flushed = 0;
    WriteBytes(path, kOld);
    fileCalls.flush = [](int file) {
        FileInfo info;
        EXPECT_EQ(SystemFileCalls().inspect(file, &info), 0);
        flushed = info.size;
        return SystemFileCalls().flush(file);
    };
    fileCalls.replaceIn = [](int folder, const char* from, const char* to) {
        EXPECT_EQ(flushed, std::ssize(kNew));
        return SystemFileCalls().replaceIn(folder, from, to);
    };
    EXPECT_TRUE(Save());
    EXPECT_EQ(ReadBytes(path), kNew);
}

TEST_F(FilesTest, AFullDiskLeavesTheOldFile) {
    WriteBytes(path, kOld);
    fileCalls.write = [](int, const void*, std::size_t) -> std::int64_t { return FailWith<ENOSPC>(); };
    EXPECT_EQ(TextOf(Save()), "No space left on device.");
    EXPECT_EQ(ReadBytes(path), kOld);
}

TEST_F(FilesTest, ASystemThatWritesNothingIsAFailure) {
    fileCalls.write = [](int, const void*, std::size_t) -> std::int64_t { return 0; };
    EXPECT_EQ(TextOf(Save()), "Input/output error.");
}

TEST_F(FilesTest, AFolderThatCantBeFlushedIsAFailureOnlyIfTheDiskFails) {
    const struct {
        int (*flush)(int);
        const char* reason;
    } cases[] = {{[](int) { return FailWith<EIO>(); }, "Input/output error."},
                 {[](int) { return FailWith<ENOSPC>(); }, "No space left on device."},
                 {[](int) { return FailWith<EINVAL>(); }, ""},   // this file system can't flush folders
                 {[](int) { return FailWith<EACCES>(); }, ""}};  // a folder that can't be listed
    OutputFile file;
    ASSERT_TRUE(file.Open(path));
    for (const auto& [flush, reason] : cases) {
        fileCalls.flushFolder = flush;
        EXPECT_EQ(TextOf(file.FlushFolder()), reason);
    }
}

TEST_F(FilesTest, WhatAnotherProgramDoesWithTheFileDuringTheSaveStays) {
    const struct {
        const char* name;
        bool existed, exists, onlyOnPosix;
        std::function<void()> change;
    } cases[] = {
        {"made", false, true, false, [&] { WriteBytes(path, kOld); }},
        {"removed", true, false, true, [&] { fs::remove(path); }},  // Windows has other words for it
        {"changed", true, true, false, [&] { WriteBytes(path, {1}); }},
        {"replaced", true, true, false, [&] { fs::remove(path), WriteBytes(path, kOld); }},
        {"given other permissions", true, true, true, [&] { fs::permissions(path, fs::perms(0600)); }},
    };
    const bool isPosix = fileCalls.canReplaceOpenFiles;
    for (const auto& row : cases) {
        if (row.onlyOnPosix && !isPosix) continue;
        SCOPED_TRACE(row.name);
        fs::remove(path);
        if (row.existed) WriteBytes(path, kOld);
        OutputFile saved;
        ASSERT_TRUE(saved.Open(path));
        ASSERT_TRUE(saved.Complete());
        row.change();
        EXPECT_EQ(TextOf(saved.PutInPlace()), kChanged);
        EXPECT_EQ(fs::exists(path), row.exists);
    }
}

// A save over a file that was read before.
class ReadFileTest : public FilesTest {
  protected:
    ReadFileTest() {
        WriteBytes(path, kOld);
        Bytes content;
        EXPECT_TRUE(ReadWholeFile(path, content, &expectedState));
    }
    std::string Refusal() { return TextOf(Save({.expectedState = &expectedState})); }
    FileState expectedState;
};

TEST_F(ReadFileTest, IsReplacedIfItsContentIsAsItWasRead) {
    const struct {
        const char* name;
        std::function<void()> change;
        std::string reason;
    } cases[] = {{"made again", [&] { fs::remove(path), WriteBytes(path, kOld); }, ""},
                 {"longer", [&] { WriteBytes(path, Bytes(kOld.size() + 1, 'o')); }, kChanged},
                 {"of the same length", [&] { WriteBytes(path, Bytes(kOld.size(), 'd')); }, kChanged},
                 {"removed", [&] { fs::remove(path); }, kChanged}};
    for (const auto& row : cases) {
        row.change();
        EXPECT_EQ(Refusal(), row.reason) << row.name;
        WriteBytes(path, kOld);
    }
}

TEST_F(ReadFileTest, ChangedDuringTheSaveStaysOnADiskWithoutTimes) {
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = SystemFileCalls().inspect(file, info);
        info->modified = info->changed = 0;
        return result;
    };
    OutputFile file;
    ASSERT_TRUE(file.Open(path, {.expectedState = &expectedState}));
    ASSERT_TRUE(file.Complete());
    WriteBytes(path, Bytes(kOld.size(), 'd'));
    EXPECT_EQ(TextOf(file.PutInPlace()), kChanged);
}

TEST_F(ReadFileTest, ThatCantBeReadAgainIsRefusedWithTheReason) {
    fileCalls.read = [](int, void*, std::size_t) -> std::int64_t { return FailWith<EIO>(); };
    EXPECT_EQ(Refusal(), "Input/output error.");
}

TEST_F(ReadFileTest, HeldByAnotherInstanceIsRefused) {
    const OpenFile other(fileCalls.open(path.c_str(), OpenFor::Reading));
    ASSERT_EQ(fileCalls.lock(other.Get()), 0);
    EXPECT_EQ(Refusal(), "Another program is saving it right now.");
}

TEST_F(ReadFileTest, IsReplacedOnAFileSystemWithoutLocks) {
    fileCalls.lock = [](int) { return FailWith<ENOLCK>(); };
    EXPECT_EQ(Refusal(), "");
}

TEST_F(FilesTest, ANewFileIsPrivateUntilItHasThePermissionsOfTheOldOne) {
    WriteBytes(path, kOld);
    fileCalls.createIn = [](int folder, const char* name, unsigned mode) {
        EXPECT_EQ(mode, 0600u);
        return SystemFileCalls().createIn(folder, name, mode);
    };
    EXPECT_TRUE(Save());
}

TEST_F(FilesTest, ASaveThatCantKeepTheOwnerOrThePermissionsIsRefused) {
    const struct {
        const char* name;
        std::function<void()> spoil;
    } cases[] = {
        {"the owner can't be set", [] { fileCalls.setOwner = [](int, unsigned, unsigned) { return -1; }; }},
        {"the owner stays", [] { fileCalls.setOwner = [](int, unsigned, unsigned) { return 0; }; }},
        {"the mode can't be set", [] { fileCalls.setMode = [](int, unsigned) { return -1; }; }},
        {"the mode stays", [] { fileCalls.setMode = [](int, unsigned) { return 0; }; }}};
    WriteBytes(path, kOld);
    for (const auto& [name, spoil] : cases) {
        fileCalls = SystemFileCalls();
        fileCalls.inspect = [](int file, FileInfo* info) {
            const int result = SystemFileCalls().inspect(file, info);
            info->owner += info->size == 0 ? 1 : 0;  // the new file seems to be somebody else's
            return result;
        };
        spoil();
        EXPECT_EQ(TextOf(Save()), "Its owner and permissions can't be kept.") << name;
        EXPECT_EQ(ReadBytes(path), kOld) << name;
    }
}

}  // namespace boreforge
