// Every call that reads or changes a file goes through this one table, so that a test can make any of them
// fail.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace boreforge {

// The POSIX calls of the same names, with their arguments, results and errno.
struct FileCalls {
    int (*open)(const char* path, int flags, mode_t mode);
    int (*fstat)(int file, struct stat* info);
    ssize_t (*read)(int file, void* bytes, std::size_t count);
    ssize_t (*write)(int file, const void* bytes, std::size_t count);
    int (*fchmod)(int file, mode_t mode);
    int (*fchown)(int file, uid_t owner, gid_t group);
    int (*fsync)(int file);
    int (*close)(int file);
    int (*rename)(const char* from, const char* to);
    int (*unlink)(const char* path);
};

// The system's own calls.
FileCalls SystemFileCalls();

// The table in use.
extern FileCalls fileCalls;

}  // namespace boreforge
