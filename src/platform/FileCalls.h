// Every call that reads or changes the content, the name or the rights of a file goes through this one table,
// so that a test can make any of them fail. Only the signal handler can't use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace boreforge {

// What the system knows about a file. Two files are the same one if device and number agree.
struct FileInfo {
    std::uint64_t device = 0, number = 0;
    std::int64_t size = 0;                   // bytes
    std::int64_t modified = 0, changed = 0;  // of the content, of anything; nanoseconds since 1970
    unsigned mode = 0;                       // permission bits, with the set-id bits
    unsigned owner = 0, group = 0;
    bool isRegular = false;
    bool isLink = false;
};

inline bool IsSameFile(const FileInfo& a, const FileInfo& b) {
    return a.device == b.device && a.number == b.number;
}

// Whether the size and the times of a file are what they were.
inline bool IsUnchanged(const FileInfo& before, const FileInfo& now) {
    return before.size == now.size && before.modified == now.modified && before.changed == now.changed;
}

enum class OpenFor {
    Reading,
    ReadingAndWriting,
    Folder,  // to name the files in it
};

// Each returns -1 and sets errno when it fails, as the POSIX calls do. A call that a signal interrupts is
// repeated, so none fails with EINTR. Paths and names are UTF-8.
struct FileCalls {
    // Follows links. Doesn't wait for the other end of a pipe.
    int (*open)(const char* path, OpenFor purpose);
    // Creates a new file and opens it for writing. Never follows a link.
    int (*createIn)(int folder, const char* name, unsigned mode);
    int (*inspect)(int file, FileInfo* info);
    // Of the link itself, if `name` is one.
    int (*inspectIn)(int folder, const char* name, FileInfo* info);

    std::int64_t (*read)(int file, void* bytes, std::size_t count);
    std::int64_t (*write)(int file, const void* bytes, std::size_t count);
    int (*rewind)(int file);

    // On Windows replaceIn keeps the rights, so these do nothing there: owner and permissions always look the
    // same, and there are no lists.
    int (*setOwner)(int file, unsigned owner, unsigned group);
    int (*setMode)(int file, unsigned mode);
    // The permissions that the user's new files get.
    unsigned (*defaultMode)();
    // The access list beyond the permission bits, in the system's own encoding; the first returns its length
    // in bytes, 0 if the file has none. A length of 0 removes it.
    std::int64_t (*getAccessList)(int file, void* list, std::size_t size);
    int (*setAccessList)(int file, const void* list, std::size_t size);

    // Takes the file's exclusive lock until the file is closed. EWOULDBLOCK: somebody else has it.
    int (*lock)(int file);
    int (*flush)(int file);
    int (*flushFolder)(int folder);
    int (*close)(int file);
    // Renames `from` to `to`, which exists and is replaced. On Windows the file keeps the access list, the
    // attributes and the streams of the old one.
    int (*replaceIn)(int folder, const char* from, const char* to);
    // Renames `from` to `to`. EEXIST if there is such a file, even if it was made a moment ago.
    int (*renameIn)(int folder, const char* from, const char* to);
    // Whether replaceIn can replace a file that is open.
    bool canReplaceOpenFiles;
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
        (void)Close();
        file_ = std::exchange(other.file_, -1);
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
