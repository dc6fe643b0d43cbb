// Every call that reads or changes a file goes through this one table, so that a test can make any of them
// fail.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace boreforge {

// What the system knows about a file. Two files are the same one if device and number agree.
struct FileInfo {
    std::uint64_t device = 0, number = 0;
    std::int64_t size = 0;                   // bytes
    std::int64_t modified = 0, changed = 0;  // nanoseconds since 1970: of the content, of anything
    unsigned mode = 0;                       // permission bits, with the set-id bits
    unsigned owner = 0, group = 0;
    bool isRegular = false;
    bool isLink = false;
};

inline bool IsSameFile(const FileInfo& a, const FileInfo& b) {
    return a.device == b.device && a.number == b.number;
}

enum class OpenFor {
    Reading,
    ReadingAndWriting,
    Creating,  // for both; a missing file is created with the usual permissions
    Folder,    // to name the files in it
};

// The longest path in bytes. Windows has 32,767 UTF-16 units.
inline constexpr std::size_t kMaxPath = std::size_t{3} << 15;

// Each returns -1 and sets errno when it fails, as the POSIX calls do. Paths and names are UTF-8.
struct FileCalls {
    // Follows links. Doesn't wait for the other end of a pipe.
    int (*open)(const char* path, OpenFor purpose);
    // Creates a new file and opens it for writing. Never follows a link.
    int (*createIn)(int folder, const char* name, unsigned mode);
    int (*inspect)(int file, FileInfo* info);
    // Of the link itself, if `name` is one.
    int (*inspectIn)(int folder, const char* name, FileInfo* info);
    // The absolute path of an open file, without links and without a terminating zero; returns its length.
    std::int64_t (*realPath)(int file, char* path, std::size_t size);

    std::int64_t (*read)(int file, void* bytes, std::size_t count);
    std::int64_t (*write)(int file, const void* bytes, std::size_t count);
    // Reserves space for a file of `length` bytes without changing its length. Fails only if there is no such
    // space.
    int (*reserve)(int file, std::int64_t length);
    int (*rewind)(int file);
    int (*truncate)(int file, std::int64_t length);

    int (*setOwner)(int file, unsigned owner);
    int (*setGroup)(int file, unsigned group);
    int (*setMode)(int file, unsigned mode);
    // The permissions that the user's new files get.
    unsigned (*usualMode)();
    // Extended attributes. The first two return a length in bytes; the list holds zero-terminated names.
    std::int64_t (*listAttributes)(int file, char* names, std::size_t size);
    std::int64_t (*getAttribute)(int file, const char* name, void* value, std::size_t size);
    int (*setAttribute)(int file, const char* name, const void* value, std::size_t size);
    int (*removeAttribute)(int file, const char* name);

    // Takes the file's exclusive lock until the file is closed. EWOULDBLOCK: somebody else has it.
    int (*lock)(int file);
    int (*flush)(int file);
    int (*flushFolder)(int folder);
    int (*close)(int file);
    // Replaces `to` if it exists.
    int (*renameIn)(int folder, const char* from, const char* to);
    // Whether renameIn can replace a file that is open.
    bool replacesOpenFiles;
    int (*removeIn)(int folder, const char* name);
};

// The system's own calls.
FileCalls SystemFileCalls();

// The table in use.
extern FileCalls fileCalls;

// An open file or folder, closed at the end of its scope.
class OpenFile {
  public:
    OpenFile() = default;
    explicit OpenFile(int file) : file_(file) {}
    OpenFile(OpenFile&& other) noexcept : file_(std::exchange(other.file_, -1)) {}
    OpenFile& operator=(OpenFile&& other) noexcept {
        std::swap(file_, other.file_);
        return *this;
    }
    ~OpenFile() { (void)Close(); }

    explicit operator bool() const { return file_ >= 0; }
    int Get() const { return file_; }
    // False if the system reports only now that a write failed.
    bool Close() {
        const int file = std::exchange(file_, -1);
        return file < 0 || fileCalls.close(file) == 0;
    }

  private:
    int file_ = -1;
};

}  // namespace boreforge
