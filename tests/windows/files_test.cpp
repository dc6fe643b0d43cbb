#include <windows.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileCalls.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "platform/Signals.h"
#include "platform/WideText_windows.h"
#include "support/CoreTest.h"

namespace boreforge {

class WindowsFilesTest : public CoreTest {
  protected:
    WindowsFilesTest() { EXPECT_TRUE(Save(path_, old_)); }

    static bool Save(const std::string& path, const Bytes& content) {
        return SaveWholeFile(path, FileKind::Other, content);
    }
    static Bytes Read(const std::string& path) {
        Bytes content;
        EXPECT_TRUE(ReadWholeFile(path, content)) << path;
        return content;
    }
    // Opens the file so that nobody else may write or delete it.
    static HANDLE Occupy(const std::string& path) {
        return ::CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                             OPEN_EXISTING, 0, nullptr);
    }
    const std::string path_ = In("f");
    const Bytes old_ = Bytes(3, 'o'), new_ = Bytes(5, 'n');
};

TEST_F(WindowsFilesTest, AWriteThatFailsHasNoLength) {
    const OpenFile file(fileCalls.open(path_.c_str(), OpenFor::Reading));
    EXPECT_EQ(fileCalls.write(file.Get(), "n", 1), -1);
}

TEST_F(WindowsFilesTest, ASaveWaitsForAnotherProgramThatSoonLetsGo) {
    const HANDLE other = Occupy(path_);
    std::thread later([other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        ::CloseHandle(other);
    });
    EXPECT_TRUE(Save(path_, new_));
    later.join();
    EXPECT_EQ(Read(path_), new_);
}

TEST_F(WindowsFilesTest, AFileThatStaysInUseIsLeftAlone) {
    const HANDLE other = Occupy(path_);
    EXPECT_FALSE(Save(path_, new_));
    EXPECT_EQ(FailureText(), "Another program is using it.");
    ::CloseHandle(other);
    EXPECT_EQ(Read(path_), old_);
    EXPECT_EQ(Listing().size(), 1u);
}

TEST_F(WindowsFilesTest, AFileThatComesIntoUseBeforeTheRenameIsLeftAlone) {
    static HANDLE other;
    static std::string path;
    path = path_;
    fileCalls.renameIn = [](int folder, const char* from, const char* to) {
        other = Occupy(path);
        return SystemFileCalls().renameIn(folder, from, to);
    };
    EXPECT_FALSE(Save(path_, new_));
    ::CloseHandle(other);
    EXPECT_EQ(Read(path_), old_);
    EXPECT_EQ(Listing().size(), 1u);
}

TEST_F(WindowsFilesTest, AHiddenFileStaysHidden) {
    ::SetFileAttributesW(ToSystemPath(path_).c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_TRUE(Save(path_, new_));
    constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    EXPECT_EQ(::GetFileAttributesW(ToSystemPath(path_).c_str()) & kKept, kKept);
}

TEST_F(WindowsFilesTest, AReadOnlyFileIsRefused) {
    ::SetFileAttributesW(ToSystemPath(path_).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(Save(path_, new_));
    ::SetFileAttributesW(ToSystemPath(path_).c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Read(path_), old_);
}

TEST_F(WindowsFilesTest, WhatCantKeepItsRightsIsRefused) {
    fileCalls.setAttribute = [](int, const char*, const void*, std::size_t) { return -1; };
    EXPECT_FALSE(Save(path_, new_));
    EXPECT_EQ(FailureText(), "Its owner and permissions can't be kept.");
    EXPECT_EQ(Read(path_), old_);
}

TEST_F(WindowsFilesTest, ADeviceIsRefused) { EXPECT_FALSE(Save("NUL", new_)); }

TEST_F(WindowsFilesTest, LongNamesAndEveryAlphabetWork) {
    std::vector<std::wstring> folders;
    std::string folder = In("long");
    for (int depth = 0; depth < 8; ++depth) {
        folders.push_back(ToSystemPath(folder));
        ASSERT_TRUE(::CreateDirectoryW(folders.back().c_str(), nullptr));
        folder += "\\\u0422\u0443\u043D\u043D\u0435\u043B\u044C " + std::string(40, 'x');
    }
    folder = ToUtf8(folders.back());
    ASSERT_GT(folder.size(), std::size_t{MAX_PATH});
    const std::string path = folder + "\\\u96A7\u9053.3ds";
    EXPECT_TRUE(Save(path, old_));
    EXPECT_TRUE(Save(path, new_));
    EXPECT_EQ(Read(path), new_);
    EXPECT_TRUE(FileExists(path));
    EXPECT_TRUE(::DeleteFileW(ToSystemPath(path).c_str()));
    for (; !folders.empty(); folders.pop_back())
        EXPECT_TRUE(::RemoveDirectoryW(folders.back().c_str()));
}

TEST_F(WindowsFilesTest, PathsOfOneFileAreRecognised) {
    std::string backslashes = path_, upper = In("F"), missing = In("m"), missingUpper = In("M");
    for (char& character : backslashes)
        if (character == '/') character = '\\';
    const struct {
        std::string one, other;
        bool same;
    } cases[] = {{path_, backslashes, true},
                 {path_, upper, true},
                 {missing, missingUpper, true},
                 {path_, missing, false},
                 {missing, In("n"), false}};
    for (const auto& row : cases)
        EXPECT_EQ(SameFile(row.one, row.other), row.same) << row.one << " " << row.other;
}

TEST_F(WindowsFilesTest, APathIsSplitAfterItsDriveOrLastSeparator) {
    const struct {
        const char *path, *folder, *name;
    } cases[] = {{"f", ".", "f"},          {"C:f", "C:.", "f"},      {"C:\\f", "C:\\", "f"},
                 {"a/b\\f", "a/b\\", "f"}, {"a\\b/f", "a\\b/", "f"}, {"\\\\s\\d\\f", "\\\\s\\d\\", "f"}};
    for (const auto& row : cases) {
        EXPECT_EQ(PlaceOf(row.path).folder, row.folder) << row.path;
        EXPECT_EQ(PlaceOf(row.path).name, row.name) << row.path;
    }
}

// These need a console, so ./test runs them in a terminal.
using WindowsConsoleTest = CoreTest;

TEST_F(WindowsConsoleTest, TheConsoleGetsItsCodePageBack) {
    ::SetConsoleOutputCP(850);
    {
        const ProcessSetup setup;
        EXPECT_EQ(::GetConsoleOutputCP(), 65001u);
    }
    EXPECT_EQ(::GetConsoleOutputCP(), 850u);
}

TEST_F(WindowsConsoleTest, ControlCRemovesTheUnfinishedFile) {
    const auto interrupted = [this] {
        ::SetConsoleCtrlHandler(nullptr, FALSE);
        RemoveUnfinishedOnSignals();
        OutputFile file;
        if (!file.Create(In("new"), FileKind::Other)) return;
        ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
        ::Sleep(10'000);
    };
    EXPECT_EXIT(interrupted(), testing::ExitedWithCode(static_cast<int>(STATUS_CONTROL_C_EXIT)), "");
    EXPECT_TRUE(Listing().empty());
}

}  // namespace boreforge
