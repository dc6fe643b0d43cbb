#include "platform/FileCalls.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>

namespace boreforge {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

// The result of `call`, which is repeated while signals interrupt it.
template <class Call>
auto Uninterrupted(const Call& call) {
    while (true) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

std::int64_t Nanoseconds(const timespec& time) {
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

int Fill(FileInfo* info, int result, const struct stat& found) {
    if (result != 0) return result;
    *info = {found.st_dev,
             found.st_ino,
             found.st_size,
             Nanoseconds(found.st_mtim),
             Nanoseconds(found.st_ctim),
             found.st_mode & 07777u,
             found.st_uid,
             found.st_gid,
             S_ISREG(found.st_mode),
             S_ISLNK(found.st_mode)};
    return 0;
}

int Open(const char* path, OpenFor purpose) {
    // Without O_NONBLOCK, opening a named pipe would wait for its other end.
    constexpr int kCommon = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int flags = purpose == OpenFor::Reading             ? O_RDONLY | kCommon
                      : purpose == OpenFor::ReadingAndWriting ? O_RDWR | kCommon
                                                              : O_PATH | O_DIRECTORY | O_CLOEXEC;
    return Uninterrupted([&] { return ::open(path, flags); });
}

std::int64_t GetAccessList(int file, void* list, std::size_t size) {
    const std::int64_t length = ::fgetxattr(file, kAccessList, list, size);
    return length < 0 && (errno == ENODATA || errno == ENOTSUP) ? 0 : length;
}

int SetAccessList(int file, const void* list, std::size_t size) {
    if (size == 0) return ::fremovexattr(file, kAccessList);
    return ::fsetxattr(file, kAccessList, list, size, 0);
}

int FlushFolder(int folder) {
    const int readable =
        Uninterrupted([&] { return ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (readable < 0) return -1;
    const int result = Uninterrupted([&] { return ::fsync(readable); });
    (void)::close(readable);
    return result;
}

// Where RENAME_NOREPLACE isn't supported, links the new name and removes the old one: a link, too, fails if
// the name is taken.
int RenameIn(int folder, const char* from, const char* to) {
    if (::renameat2(folder, from, folder, to, RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return -1;
    if (::linkat(folder, from, folder, to, 0) != 0) return -1;
    (void)::unlinkat(folder, from, 0);  // the file is in place even if its old name stays
    return 0;
}

}  // namespace

FileCalls SystemFileCalls() {
    FileCalls calls;
    calls.open = Open;
    calls.createIn = [](int folder, const char* name, unsigned mode) {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        return Uninterrupted([&] { return ::openat(folder, name, kFlags, mode); });
    };
    calls.inspect = [](int file, FileInfo* info) {
        struct stat found;
        return Fill(info, ::fstat(file, &found), found);
    };
    calls.inspectIn = [](int folder, const char* name, FileInfo* info) {
        struct stat found;
        return Fill(info, ::fstatat(folder, name, &found, AT_SYMLINK_NOFOLLOW), found);
    };
    calls.read = [](int file, void* bytes, std::size_t count) -> std::int64_t {
        return Uninterrupted([&] { return ::read(file, bytes, count); });
    };
    calls.write = [](int file, const void* bytes, std::size_t count) -> std::int64_t {
        return Uninterrupted([&] { return ::write(file, bytes, count); });
    };
    calls.rewind = [](int file) { return ::lseek(file, 0, SEEK_SET) == 0 ? 0 : -1; };
    calls.setOwner = [](int file, unsigned owner, unsigned group) {
        return Uninterrupted([&] { return ::fchown(file, owner, group); });
    };
    calls.setMode = [](int file, unsigned mode) {
        return Uninterrupted([&] { return ::fchmod(file, mode); });
    };
    calls.defaultMode = [] {
        const mode_t mask = ::umask(077);  // it can only be read by setting it
        ::umask(mask);
        return 0666u & ~mask;
    };
    calls.getAccessList = GetAccessList;
    calls.setAccessList = SetAccessList;
    calls.lock = [](int file) { return Uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); }); };
    calls.flush = [](int file) { return Uninterrupted([&] { return ::fsync(file); }); };
    calls.flushFolder = FlushFolder;
    calls.close = [](int file) {
        const int result = ::close(file);  // Linux closes the file even if a signal interrupts the call
        return result != 0 && errno == EINTR ? 0 : result;
    };
    calls.replaceIn = [](int folder, const char* from, const char* to) {
        return ::renameat(folder, from, folder, to);
    };
    calls.renameIn = RenameIn;
    calls.canReplaceOpenFiles = true;
    calls.removeIn = [](int folder, const char* name) { return ::unlinkat(folder, name, 0); };
    return calls;
}

}  // namespace boreforge
