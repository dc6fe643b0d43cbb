#include "platform/FileCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace boreforge {

FileCalls SystemFileCalls() {
    FileCalls calls;
    calls.open = [](const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); };
    calls.fstat = [](int file, struct stat* info) { return ::fstat(file, info); };
    calls.read = [](int file, void* bytes, std::size_t count) { return ::read(file, bytes, count); };
    calls.write = [](int file, const void* bytes, std::size_t count) { return ::write(file, bytes, count); };
    calls.fchmod = [](int file, mode_t mode) { return ::fchmod(file, mode); };
    calls.fchown = [](int file, uid_t owner, gid_t group) { return ::fchown(file, owner, group); };
    calls.fsync = [](int file) { return ::fsync(file); };
    calls.close = [](int file) { return ::close(file); };
    calls.rename = [](const char* from, const char* to) { return std::rename(from, to); };
    calls.unlink = [](const char* path) { return ::unlink(path); };
    return calls;
}

FileCalls fileCalls = SystemFileCalls();

}  // namespace boreforge
