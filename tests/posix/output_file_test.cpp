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
    Outcome Save(const std::string& name, const SaveRules& rules = {}) {
        return SaveWholeFile(In(name), kNew, rules);
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
    fileCalls.write = [](int file, const void* bytes, std::size_t count) {
        calls += "write ";
        return kSystem.write(file, bytes, count);
    };
    fileCalls.flush = [](int file) {
        calls += "flush ";
        return kSystem.flush(file);
    };
    fileCalls.replaceIn = [](int folder, const char* from, const char* to) {
        calls += "replace ";
        return kSystem.replaceIn(folder, from, to);
    };
    EXPECT_TRUE(Save("f"));
    EXPECT_EQ(calls, "create-private write flush replace ");
}

TEST_F(OutputFileTest, LinksAreFollowedAndStay) {
    fs::create_directory(In("folder"));
    WriteOld("folder/real");
    fs::create_symlink("folder/real", In("link"));
    fs::create_symlink("link", In("link2"));
    EXPECT_TRUE(Save("link2"));
    EXPECT_TRUE(fs::is_symlink(In("link2")));
    EXPECT_EQ(ReadBytes(In("folder/real")), kNew);
    EXPECT_EQ(Listing(), (std::vector<std::string>{"folder", "link", "link2"}));
}

TEST_F(OutputFileTest, WhatCantBeReplacedIsRefusedWithItsReason) {
    fs::create_directory(In("folder"));
    fs::create_symlink("ring", In("ring"));
    fs::create_symlink("new", In("dangling"));
    ASSERT_EQ(::mkfifo(In("pipe").c_str(), 0600), 0);
    const auto before = Listing();
    const struct {
        const char *name, *reason;
    } cases[] = {{"folder", "Is a directory."},
                 {"folder/", "Is a directory."},
                 {"absent/f", "No such file or directory."},
                 {"ring", "Too many levels of symbolic links."},
                 {"dangling", "It is a link that leads nowhere."},
                 {"pipe", "It is not a regular file."},
                 {"", "Is a directory."}};
    for (const auto& [name, reason] : cases)
        EXPECT_EQ(TextOf(Save(name)), reason) << name;
    EXPECT_EQ(Listing(), before);
}

TEST_F(OutputFileTest, TheRulesSeeTheBeginningOfTheOldFile) {
    static std::string seen;
    const SaveRules rules{.mayReplace = [](std::string_view beginning) -> Outcome {
        seen = beginning;
        return Failure{.reason = "No."};
    }};
    WriteOld("f");
    EXPECT_EQ(TextOf(Save("f", rules)), "No.");
    EXPECT_EQ(seen, "oooo");
    EXPECT_EQ(ReadBytes(In("f")), kOld);
    EXPECT_TRUE(Save("new", rules));
}

TEST_F(OutputFileTest, WhatAnotherProgramDoesWithTheFileMeanwhileStays) {
    const std::vector<std::string> file = {"f"}, nothing;
    const struct {
        const char* name;
        bool existed;
        std::function<void()> change;
        std::vector<std::string> left;
    } cases[] = {{"made", false, [&] { WriteOld("f"); }, file},
                 {"removed", true, [&] { fs::remove(In("f")); }, nothing},
                 {"changed", true, [&] { WriteBytes(In("f"), {1}); }, file},
                 {"replaced", true, [&] { fs::remove(In("f")), WriteOld("f"); }, file},
                 {"given other permissions", true, [&] { fs::permissions(In("f"), fs::perms(0600)); }, file}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        fs::remove(In("f"));
        if (row.existed) WriteOld("f");
        {
            OutputFile saved;
            ASSERT_TRUE(saved.Open(In("f")));
            ASSERT_TRUE(saved.Complete());
            row.change();
            EXPECT_EQ(TextOf(saved.PutInPlace()), "It was changed by another program.");
        }
        EXPECT_EQ(Listing(), row.left);
    }
}

TEST_F(OutputFileTest, OfTwoSavesOfANewFileTheSecondIsRefused) {
    OutputFile one, two;
    for (OutputFile* const file : {&one, &two}) {
        ASSERT_TRUE(file->Open(In("f")));
        ASSERT_TRUE(file->Complete());
    }
    EXPECT_TRUE(one.PutInPlace());
    EXPECT_EQ(TextOf(two.PutInPlace()), "It was changed by another program.");
}

TEST_F(OutputFileTest, AFolderThatCantBeFlushedIsAFailureOnlyIfTheDiskFails) {
    const struct {
        int error;
        bool good;
    } cases[] = {{EIO, false},
                 {ENOSPC, false},
                 {EINVAL, true},   // this file system can't flush folders
                 {EACCES, true}};  // a folder that can't be listed
    static int error;
    fileCalls.flushFolder = [](int) {
        errno = error;
        return -1;
    };
    OutputFile file;
    ASSERT_TRUE(file.Open(In("f")));
    for (const auto& row : cases) {
        error = row.error;
        EXPECT_EQ(bool(file.FlushFolder()), row.good) << row.error;
    }
}

TEST_F(OutputFileTest, ASystemThatWritesNothingIsAFailure) {
    fileCalls.write = [](int, const void*, std::size_t) -> std::int64_t { return 0; };
    EXPECT_EQ(TextOf(Save("f")), "Input/output error.");
}

TEST_F(OutputFileTest, AFileKeepsItsPermissions) {
    for (const unsigned mode : {0640u, 0604u, 0755u, 06755u}) {
        WriteOld("f", mode);
        EXPECT_TRUE(Save("f")) << std::oct << mode;
        EXPECT_EQ(ModeOf(In("f")), mode);
    }
}

TEST_F(OutputFileTest, ASaveThatCantKeepTheOwnerOrTheModeIsRefused) {
    const struct {
        const char* name;
        std::function<void()> spoil;
    } cases[] = {
        {"the owner can't be set", [] { fileCalls.setOwner = [](int, unsigned, unsigned) { return -1; }; }},
        {"the system ignores the owner",
         [] { fileCalls.setOwner = [](int, unsigned, unsigned) { return 0; }; }},
        {"the mode can't be set", [] { fileCalls.setMode = [](int, unsigned) { return -1; }; }},
        {"the system ignores the mode", [] { fileCalls.setMode = [](int, unsigned) { return 0; }; }}};
    for (const auto& [name, spoil] : cases) {
        SCOPED_TRACE(name);
        WriteOld("f");
        fileCalls = kSystem;
        fileCalls.inspect = [](int file, FileInfo* info) {
            const int result = kSystem.inspect(file, info);
            info->owner += info->size == 0 ? 1 : 0;  // the new file seems to be somebody else's
            return result;
        };
        spoil();
        EXPECT_EQ(TextOf(Save("f")), "Its owner and permissions can't be kept.");
        EXPECT_EQ(ReadBytes(In("f")), kOld);
        EXPECT_EQ(Listing(), std::vector<std::string>{"f"});
    }
}

TEST_F(OutputFileTest, ANewFileIsNeverMoreOpenThanTheTrackItComesFrom) {
    FileState track;
    const struct {
        unsigned trackMode, mask, newMode;
        bool sameGroup, hasList;
    } cases[] = {{0600, 0022, 0600, true, false},  {0640, 0022, 0640, true, false},
                 {0644, 0077, 0600, true, false},  {0444, 0022, 0644, true, false},
                 {0660, 0002, 0600, false, false}, {0604, 0002, 0600, false, false},
                 {0664, 0002, 0600, true, true}};
    for (const auto& row : cases) {
        fs::remove(In("f"));
        track.info.mode = row.trackMode;
        track.info.group = ::getegid() + (row.sameGroup ? 0 : 1);
        track.hasAccessList = row.hasList;
        const mode_t before = ::umask(row.mask);
        EXPECT_TRUE(Save("f", {.like = &track}));
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

TEST_F(AccessListTest, AListThatAFileInheritsFromItsFolderIsRemoved) {
    fs::create_directory(In("d"));
    WriteOld("d/old", 0600);
    ASSERT_TRUE(Set("d", "system.posix_acl_default", List()));
    FileState track;
    track.info.mode = 0600;
    EXPECT_TRUE(Save("d/new", {.like = &track}));
    EXPECT_TRUE(Save("d/old"));
    for (const char* name : {"d/new", "d/old"})
        EXPECT_TRUE(Attribute(name, "system.posix_acl_access").empty()) << name;
}

}  // namespace boreforge
