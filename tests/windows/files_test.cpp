// What differs on Windows from platform/files_test.cpp.
#include <windows.h>

#include <io.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/FileCalls.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "platform/Signals.h"
#include "platform/System_windows.h"
#include "support/CoreTest.h"

namespace boreforge {

const Bytes kOld(3, 'o'), kNew(5, 'n');

class WindowsFilesTest : public CoreTest {
  protected:
    WindowsFilesTest() { WriteBytes(path_, kOld); }

    // Opens the file so that nobody else may write or delete it.
    static HANDLE Occupy(const std::string& path) {
        return ::CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                             OPEN_EXISTING, 0, nullptr);
    }
    void ExpectNothingBut(const Bytes& content) const {
        EXPECT_EQ(ReadBytes(path_), content);
        EXPECT_EQ(Listing(), std::vector<std::string>{"f"});
    }
    const std::string path_ = In("f");
};

TEST_F(WindowsFilesTest, ASaveWaitsForAnotherProgramThatSoonLetsGo) {
    const HANDLE other = Occupy(path_);
    std::thread later([other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        ::CloseHandle(other);
    });
    EXPECT_EQ(TextOf(SaveWholeFile(path_, kNew)), "");
    later.join();
    ExpectNothingBut(kNew);
}

TEST_F(WindowsFilesTest, AFileInUseWhenItIsReplacedIsLeftAlone) {
    static HANDLE other;
    static std::string path;
    path = path_;
    fileCalls.replaceIn = [](int folder, const char* from, const char* to) {
        other = Occupy(path);
        return SystemFileCalls().replaceIn(folder, from, to);
    };
    EXPECT_EQ(TextOf(SaveWholeFile(path_, kNew)), "Another program is using it.");
    ::CloseHandle(other);
    ExpectNothingBut(kOld);
}

TEST_F(WindowsFilesTest, AReadOnlyFileIsRefused) {
    ::SetFileAttributesW(ToSystemPath(path_).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(TextOf(SaveWholeFile(path_, kNew)), "Permission denied.");
    ::SetFileAttributesW(ToSystemPath(path_).c_str(), FILE_ATTRIBUTE_NORMAL);
    ExpectNothingBut(kOld);
}

TEST_F(WindowsFilesTest, WhatIsNoFileIsRefused) {
    for (const char* const path : {"NUL", ".", "a?b", "Q:/f"})
        EXPECT_NE(TextOf(SaveWholeFile(path, kNew)), "") << path;
}

TEST_F(WindowsFilesTest, LongNamesAndEveryAlphabetWork) {
    const std::wstring top = ToSystemPath(In("long"));
    std::wstring folder = top;
    ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
    for (int depth = 0; depth < 8; ++depth) {
        folder += L"\\\u0422\u0443\u043D\u043D\u0435\u043B\u044C " + std::wstring(40, 'x');
        ASSERT_TRUE(::CreateDirectoryW(folder.c_str(), nullptr));
    }
    ASSERT_GT(folder.size(), std::size_t{MAX_PATH});
    const std::string path = ToUtf8(folder) + "\\\u96A7\u9053.3ds";
    EXPECT_TRUE(SaveWholeFile(path, kOld));
    EXPECT_TRUE(SaveWholeFile(path, kNew));
    Bytes content;
    EXPECT_TRUE(ReadWholeFile(path, content));
    EXPECT_EQ(content, kNew);
    EXPECT_EQ(RealPath(path), path);
    EXPECT_TRUE(::DeleteFileW(ToSystemPath(path).c_str()));
    for (; folder.size() >= top.size(); folder.resize(folder.rfind(L'\\')))
        EXPECT_TRUE(::RemoveDirectoryW(folder.c_str()));
}

TEST_F(WindowsFilesTest, PathsOfOneFileAreRecognised) {
    std::string backslashes = path_;
    std::replace(backslashes.begin(), backslashes.end(), '/', '\\');
    const struct {
        std::string one, other;
        bool same;
    } cases[] = {
        {path_, backslashes, true}, {path_, In("F"), true},        {path_, In("m"), false},
        {In("m"), In("M"), true},   {In("m"), In("m. "), true},    {In("\u00E4"), In("\u00C4"), true},
        {In("m"), In("n"), false},  {In("d/m"), In("D\\M"), true}, {In("d/m"), In("m"), false}};
    for (const auto& row : cases)
        EXPECT_EQ(SameFile(row.one, row.other), row.same) << row.one << " " << row.other;
}

TEST_F(WindowsFilesTest, APathIsSplitAfterItsDriveOrLastSeparator) {
    const struct {
        const char *path, *folder, *name;
    } cases[] = {{"f", ".", "f"},          {"C:f", "C:.", "f"},      {"C:\\f", "C:\\", "f"},
                 {"a/b\\f", "a/b\\", "f"}, {"a\\b/f", "a\\b/", "f"}, {"\\\\s\\d\\f", "\\\\s\\d\\", "f"}};
    for (const auto& row : cases) {
        EXPECT_EQ(Split(row.path).folder, row.folder) << row.path;
        EXPECT_EQ(Split(row.path).name, row.name) << row.path;
    }
}

TEST_F(WindowsFilesTest, AClosedStreamIsNotTheNextFile) {
    ::_close(0);
    const ProcessSetup setup;
    const OpenFile file(fileCalls.open(path_.c_str(), OpenFor::Reading));
    EXPECT_GT(file.Get(), 2);
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
    // The test is run once more in the process that is interrupted, which gets a folder of its own.
    constexpr char kShared[] = "BOREFORGE_UNFINISHED";
    if (!std::getenv(kShared)) ::SetEnvironmentVariableA(kShared, In("new").c_str());
    const auto interrupted = [&] {
        ::SetConsoleCtrlHandler(nullptr, FALSE);
        RemoveUnfinishedOnSignals();
        OutputFile file;
        if (!file.Open(std::getenv(kShared))) return;
        ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
        ::Sleep(10'000);
    };
    ::SetConsoleCtrlHandler(nullptr, TRUE);  // the event reaches both processes
    EXPECT_EXIT(interrupted(), testing::ExitedWithCode(static_cast<int>(STATUS_CONTROL_C_EXIT)), "");
    EXPECT_TRUE(Listing().empty());
}

}  // namespace boreforge
