#include "platform/FileCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace boreforge {

namespace {

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
    switch (purpose) {
        case OpenFor::Reading:
            return ::open(path, O_RDONLY | kCommon);
        case OpenFor::ReadingAndWriting:
            return ::open(path, O_RDWR | kCommon);
        case OpenFor::Creating:
            return ::open(path, O_RDWR | O_CREAT | kCommon, 0666);
        case OpenFor::Folder:
            return ::open(path, O_PATH | O_DIRECTORY | O_CLOEXEC);  // a folder that can't be listed is enough
    }
    return -1;
}

// Fails if the disk or the quota is full. A file system that can't reserve space doesn't have to.
int Reserve(int file, std::int64_t length) {
    if (::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, length) == 0) return 0;
    const bool full = errno == ENOSPC || errno == EDQUOT || errno == EFBIG;
    return full ? -1 : 0;
}

int FlushFolder(int folder) {
    const int readable = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (readable < 0) return -1;
    const int result = ::fsync(readable);
    (void)::close(readable);
    return result;
}

}  // namespace

FileCalls SystemFileCalls() {
    FileCalls calls;
    calls.open = Open;
    calls.createIn = [](int folder, const char* name, unsigned mode) {
        return ::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    };
    calls.inspect = [](int file, FileInfo* info) {
        struct stat found;
        return Fill(info, ::fstat(file, &found), found);
    };
    calls.inspectIn = [](int folder, const char* name, FileInfo* info) {
        struct stat found;
        return Fill(info, ::fstatat(folder, name, &found, AT_SYMLINK_NOFOLLOW), found);
    };
    calls.realPath = [](int file, char* path, std::size_t size) -> std::int64_t {
        return ::readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, size);
    };
    calls.read = [](int file, void* bytes, std::size_t count) -> std::int64_t {
        return ::read(file, bytes, count);
    };
    calls.write = [](int file, const void* bytes, std::size_t count) -> std::int64_t {
        return ::write(file, bytes, count);
    };
    calls.reserve = Reserve;
    calls.rewind = [](int file) { return ::lseek(file, 0, SEEK_SET) == 0 ? 0 : -1; };
    calls.truncate = [](int file, std::int64_t length) { return ::ftruncate(file, length); };
    calls.setOwner = [](int file, unsigned owner) { return ::fchown(file, owner, static_cast<gid_t>(-1)); };
    calls.setGroup = [](int file, unsigned group) { return ::fchown(file, static_cast<uid_t>(-1), group); };
    calls.setMode = [](int file, unsigned mode) { return ::fchmod(file, mode); };
    calls.usualMode = [] {
        const mode_t mask = ::umask(077);  // it can only be read by setting it
        ::umask(mask);
        return 0666u & ~mask;
    };
    calls.listAttributes = [](int file, char* names, std::size_t size) -> std::int64_t {
        return ::flistxattr(file, names, size);
    };
    calls.getAttribute = [](int file, const char* name, void* value, std::size_t size) -> std::int64_t {
        return ::fgetxattr(file, name, value, size);
    };
    calls.setAttribute = [](int file, const char* name, const void* value, std::size_t size) {
        return ::fsetxattr(file, name, value, size, 0);
    };
    calls.removeAttribute = [](int file, const char* name) { return ::fremovexattr(file, name); };
    calls.lock = [](int file) { return ::flock(file, LOCK_EX | LOCK_NB); };
    calls.flush = [](int file) { return ::fsync(file); };
    calls.flushFolder = FlushFolder;
    calls.close = [](int file) { return ::close(file); };
    calls.renameIn = [](int folder, const char* from, const char* to) {
        return ::renameat(folder, from, folder, to);
    };
    calls.replacesOpenFiles = true;
    calls.removeIn = [](int folder, const char* name) { return ::unlinkat(folder, name, 0); };
    return calls;
}

}  // namespace boreforge
