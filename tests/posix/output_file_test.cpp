#include "platform/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <functional>

#include "support/CoreTest.h"

namespace boreforge {

namespace fs = std::filesystem;

const Bytes kOld(3000, 'o'), kNew(2000, 'n');
const FileCalls kSystem = SystemFileCalls();

unsigned ModeOf(const std::string& path) {
    struct stat info;
    EXPECT_EQ(::stat(path.c_str(), &info), 0);
    return info.st_mode & 07777;
}

class OutputFileTest : public CoreTest {
  protected:
    bool Save(const std::string& name, FileKind kind = FileKind::Other) {
        return SaveWholeFile(In(name), kind, kNew);
    }
    void WriteOld(const std::string& name, unsigned mode = 0644) {
        WriteBytes(In(name), kOld);
        ASSERT_EQ(::chmod(In(name).c_str(), mode), 0);
    }
};

TEST_F(OutputFileTest, TheNewFileIsOnTheDiskBeforeItReplacesTheOldOne) {
    static std::string calls;
    calls.clear();
    WriteOld("f");
    fileCalls.createIn = [](int folder, const char* name, unsigned mode) {
        calls += mode == 0600 ? "create-private " : "create ";
        return kSystem.createIn(folder, name, mode);
    };
    fileCalls.reserve = [](int file, std::int64_t length) {
        calls += "reserve ";
        return kSystem.reserve(file, length);
    };
    fileCalls.write = [](int file, const void* bytes, std::size_t count) {
        calls += "write ";
        return kSystem.write(file, bytes, count);
    };
    fileCalls.flush = [](int file) {
        calls += "flush ";
        return kSystem.flush(file);
    };
    fileCalls.renameIn = [](int folder, const char* from, const char* to) {
        calls += "rename ";
        return kSystem.renameIn(folder, from, to);
    };
    fileCalls.flushFolder = [](int folder) {
        calls += "flush-folder ";
        return kSystem.flushFolder(folder);
    };
    EXPECT_TRUE(Save("f"));
    EXPECT_EQ(calls, "create-private reserve write flush rename flush-folder ");
}

TEST_F(OutputFileTest, ReservingWhereTheSystemCantIsNoFailure) {
    const OpenFile device(fileCalls.open("/dev/null", OpenFor::ReadingAndWriting));
    EXPECT_EQ(fileCalls.reserve(device.Get(), 1000), 0);
}

TEST_F(OutputFileTest, LinksAreFollowedAndStay) {
    fs::create_directory(In("folder"));
    WriteOld("folder/real");
    fs::create_symlink("folder/real", In("link"));
    fs::create_symlink("link", In("link2"));
    fs::create_symlink("folder/new", In("dangling"));
    const struct {
        const char *link, *target;
    } cases[] = {{"link2", "folder/real"}, {"dangling", "folder/new"}};
    for (const auto& [link, target] : cases) {
        EXPECT_TRUE(Save(link)) << link;
        EXPECT_TRUE(fs::is_symlink(In(link))) << link;
        EXPECT_EQ(ReadBytes(In(target)), kNew) << link;
    }
    EXPECT_EQ(Listing(), (std::vector<std::string>{"dangling", "folder", "link", "link2"}));
}

TEST_F(OutputFileTest, AFailureLeavesADanglingLinkDangling) {
    fs::create_symlink("new", In("dangling"));
    fileCalls.flush = [](int) { return -1; };
    EXPECT_FALSE(Save("dangling"));
    EXPECT_EQ(Listing(), std::vector<std::string>{"dangling"});
}

TEST_F(OutputFileTest, OnlyRegularFilesAreReplaced) {
    fs::create_directory(In("folder"));
    fs::create_symlink("ring", In("ring"));
    ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
    const auto before = Listing();
    for (const char* name : {"folder", "folder/", "absent/f", "ring", "pipe", ""})
        EXPECT_FALSE(Save(name)) << name;
    EXPECT_EQ(Listing(), before);
}

TEST_F(OutputFileTest, TracksAndShapesAreOnlyReplacedByTheirOwnKind) {
    const struct {
        const char* content;
        FileKind kind;
        FileProblem problem;
    } cases[] = {{"ZPHR and more", FileKind::Other, FileProblem::IsTrack},
                 {"zphr", FileKind::Shape, FileProblem::IsTrack},
                 {"ZPHR", FileKind::Track, FileProblem::None},
                 {"zRbF and more", FileKind::Other, FileProblem::IsShape},
                 {"ZRBF", FileKind::Track, FileProblem::IsShape},
                 {"ZRBF", FileKind::Shape, FileProblem::None},
                 {"ZRB", FileKind::Track, FileProblem::None},
                 {"", FileKind::Other, FileProblem::None},
                 {"MM and more", FileKind::Shape, FileProblem::None}};
    for (const auto& [content, kind, problem] : cases) {
        SCOPED_TRACE(content);
        const std::string text = content;
        WriteBytes(In("f"), Bytes(text.begin(), text.end()));
        lastFileFailure = {};
        EXPECT_EQ(Save("f", kind), problem == FileProblem::None);
        EXPECT_EQ(lastFileFailure.problem, problem);
        EXPECT_EQ(Listing(), std::vector<std::string>{"f"});
    }
}

TEST_F(OutputFileTest, WhatAnotherProgramDoesWithTheFileMeanwhileStays) {
    const Bytes track = {'Z', 'P', 'H', 'R'};
    const std::vector<std::string> file = {"f"}, nothing;
    const struct {
        const char* name;
        bool existed;
        std::function<void()> change;
        FileProblem problem;
        std::vector<std::string> left;
    } cases[] = {
        {"made", false, [&] { WriteOld("f"); }, FileProblem::Changed, file},
        {"removed", true, [&] { fs::remove(In("f")); }, FileProblem::Changed, nothing},
        {"turned into a track", true, [&] { WriteBytes(In("f"), track); }, FileProblem::IsTrack, file}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        fs::remove(In("f"));
        if (row.existed) WriteOld("f");
        OutputFile saved;
        ASSERT_TRUE(saved.Create(In("f"), FileKind::Other));
        row.change();
        EXPECT_FALSE(saved.Finish());
        EXPECT_EQ(lastFileFailure.problem, row.problem);
        EXPECT_EQ(Listing(), row.left);
    }
}

TEST_F(OutputFileTest, AnObjectIsOnlySavedWhenItsFolderReachesTheDisk) {
    const struct {
        FileKind kind;
        int error;
        bool saved;
    } cases[] = {{FileKind::Other, EIO, false},
                 {FileKind::Other, ENOSPC, false},
                 {FileKind::Other, EINVAL, true},  // this file system can't flush folders
                 {FileKind::Other, EACCES, true},  // a folder that can't be listed
                 {FileKind::Track, EIO, true}};    // it is in its place
    static int error;
    fileCalls.flushFolder = [](int) {
        errno = error;
        return -1;
    };
    for (const auto& row : cases) {
        error = row.error;
        EXPECT_EQ(Save("f", row.kind), row.saved) << row.error;
    }
}

TEST_F(OutputFileTest, ReplacingAFileNeitherGrantsNorRevokesAccess) {
    const struct {
        const char* name;
        unsigned oldMode;
        bool groupKept, ownerKept;
        int newMode;  // -1: the save is refused
    } cases[] = {{"all kept", 0640, true, true, 0640},
                 {"set-id bits go", 06755, true, true, 0755},
                 {"group lost, it could do no more than others", 0644, false, true, 0644},
                 {"group lost, others could do more", 0606, false, true, -1},
                 {"group lost, it could read what others can't", 0640, false, true, -1},
                 {"owner lost, the group can write", 0664, true, false, 0664},
                 {"owner lost, the group can only read", 0644, true, false, -1},
                 {"both lost, everyone can write", 0666, false, false, 0666}};
    static bool groupKept, ownerKept;
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = kSystem.inspect(file, info);
        // The new file seems to be somebody else's until its group and owner are set.
        info->owner += info->size == 0 ? 1 : 0;
        info->group += info->size == 0 ? 1 : 0;
        return result;
    };
    fileCalls.setGroup = [](int, unsigned) { return groupKept ? 0 : -1; };
    fileCalls.setOwner = [](int, unsigned) { return ownerKept ? 0 : -1; };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        WriteOld("f", row.oldMode);
        groupKept = row.groupKept;
        ownerKept = row.ownerKept;
        const bool refused = row.newMode < 0;
        EXPECT_EQ(Save("f", FileKind::Track), !refused);
        EXPECT_EQ(ReadBytes(In("f")), refused ? kOld : kNew);
        EXPECT_EQ(ModeOf(In("f")), refused ? row.oldMode : static_cast<unsigned>(row.newMode));
    }
}

TEST_F(OutputFileTest, PermissionsThatChangeDuringTheSaveAreKept) {
    WriteOld("f", 0644);
    OutputFile file;
    ASSERT_TRUE(file.Create(In("f"), FileKind::Other));
    ASSERT_EQ(::chmod(In("f").c_str(), 0600), 0);
    EXPECT_TRUE(file.Finish());
    EXPECT_EQ(ModeOf(In("f")), 0600u);
}

TEST_F(OutputFileTest, ANewFileIsNeverMoreOpenThanTheTrackItComesFrom) {
    FileState track;
    const struct {
        unsigned trackMode, mask, newMode;
        bool sameGroup, hasList;
    } cases[] = {{0600, 0022, 0600, true, false},  {0640, 0022, 0640, true, false},
                 {0644, 0077, 0600, true, false},  {0444, 0022, 0644, true, false},
                 {0660, 0002, 0600, false, false}, {0664, 0002, 0644, true, true}};
    for (const auto& row : cases) {
        fs::remove(In("f"));
        track.info.mode = row.trackMode;
        track.info.group = ::getegid() + (row.sameGroup ? 0 : 1);
        track.hasAccessList = row.hasList;
        const mode_t before = ::umask(row.mask);
        EXPECT_TRUE(SaveWholeFile(In("f"), FileKind::Track, kNew, nullptr, &track));
        ::umask(before);
        EXPECT_EQ(ModeOf(In("f")), row.newMode) << std::oct << row.trackMode;
    }
}

class AccessListTest : public OutputFileTest {
  protected:
    // user::rw- user:1000:r-- group::r-- mask::r-- other::---, as in Linux's posix_acl_xattr.h
    static Bytes List() {
        Bytes list = {2, 0, 0, 0};
        const std::array<std::array<std::uint8_t, 8>, 5> entries{{{1, 0, 6, 0, 255, 255, 255, 255},
                                                                  {2, 0, 4, 0, 0xE8, 3, 0, 0},
                                                                  {4, 0, 4, 0, 255, 255, 255, 255},
                                                                  {16, 0, 4, 0, 255, 255, 255, 255},
                                                                  {32, 0, 0, 0, 255, 255, 255, 255}}};
        for (const auto& entry : entries)
            list.insert(list.end(), entry.begin(), entry.end());
        return list;
    }
    bool Set(const std::string& name, const char* attribute, const Bytes& value) {
        return ::setxattr(In(name).c_str(), attribute, value.data(), value.size(), 0) == 0;
    }
    Bytes Attribute(const std::string& name, const char* attribute) {
        Bytes value(1000);
        const auto size = ::getxattr(In(name).c_str(), attribute, value.data(), value.size());
        value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return value;
    }
    void SetUp() override {
        WriteOld("f", 0640);
        if (!Set("f", "system.posix_acl_access", List())) GTEST_SKIP() << "no access lists on this disk";
    }
};

TEST_F(AccessListTest, AnAccessListIsKept) {
    EXPECT_TRUE(Save("f"));
    EXPECT_EQ(Attribute("f", "system.posix_acl_access"), List());
}

TEST_F(AccessListTest, AnAccessListWithoutItsOwnerOrGroupRefusesTheSave) {
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = kSystem.inspect(file, info);
        info->owner += info->size == 0 ? 1 : 0;  // the new file seems to be somebody else's
        info->group += info->size == 0 ? 1 : 0;
        return result;
    };
    ASSERT_EQ(::chmod(In("f").c_str(), 0666), 0);
    static bool groupKept;
    fileCalls.setGroup = [](int, unsigned) { return groupKept ? 0 : -1; };
    fileCalls.setOwner = [](int, unsigned) { return groupKept ? -1 : 0; };
    for (const bool kept : {true, false}) {
        groupKept = kept;
        EXPECT_FALSE(Save("f")) << kept;
        EXPECT_EQ(lastFileFailure.problem, FileProblem::RightsLost);
    }
}

TEST_F(AccessListTest, AListThatAFileInheritsFromItsFolderIsRemoved) {
    fs::create_directory(In("d"));
    WriteOld("d/old", 0600);
    ASSERT_TRUE(Set("d", "system.posix_acl_default", List()));
    FileState track;
    track.info.mode = 0600;
    EXPECT_TRUE(SaveWholeFile(In("d/new"), FileKind::Track, kNew, nullptr, &track));
    EXPECT_TRUE(Save("d/old"));
    for (const char* name : {"d/new", "d/old"})
        EXPECT_TRUE(Attribute(name, "system.posix_acl_access").empty()) << name;
}

}  // namespace boreforge
