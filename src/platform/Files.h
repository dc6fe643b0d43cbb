// Whole files, read so that a later change by another program is noticed.
// Paths are UTF-8 and are handed to the system as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Bytes.h"
#include "platform/FileCalls.h"
#include "platform/FileFailure.h"

namespace boreforge {

// True when there is something other than a folder at `path`, links followed.
bool FileExists(const std::string& path);

// True when both paths lead to the same file, through links or not. Two paths at which there is nothing yet
// are the same when they name the same place.
bool SameFile(const std::string& one, const std::string& other);

// A file as it was when it was read.
struct FileState {
    FileInfo info;
    std::uint64_t hash = 0;
    // A file that was changed just before it was read can change again without its times showing it.
    bool timesTell = false;
    bool hasAccessList = false;
};

// Reads the whole regular file at `path` into `content`, with room for one more byte. Nothing is read beyond
// the first bytes unless they are those of `beginning`, ASCII case ignored. False, with `content` empty, for
// a folder, a device, a file of 2 GiB or more, one that can't be read and one that doesn't hold still; the
// failure is then in lastFileFailure. Throws std::bad_alloc.
[[nodiscard]] bool ReadWholeFile(const std::string& path, Bytes& content, std::string_view beginning = {},
                                 FileState* state = nullptr);

// The tags with which a track and a shape begin, in either case.
inline constexpr std::string_view kTrackBeginning = "ZPHR";
inline constexpr std::string_view kShapeBeginning = "ZRBF";

// A file that was read and is to be replaced, locked against other instances of our programs. A program that
// takes no lock can still change it: hence the comparisons.
class HeldFile {
  public:
    // Opens and locks the file at `path`, which must still be as it was read. False when it can't be opened
    // for writing, was changed or removed, or is held by another instance for two seconds. A file system
    // without locks is no failure.
    [[nodiscard]] bool Hold(const std::string& path, const FileState& asRead);

    bool IsHeld() const { return bool(file_); }

    // Compares once more. False when the file at the path has changed since it was read.
    [[nodiscard]] bool IsUnchanged() const;

  private:
    OpenFile file_;
    std::string path_;
    FileState asRead_;
};

// For the other functions that write files.
[[nodiscard]] bool ReadFully(int file, void* bytes, std::size_t count);
[[nodiscard]] bool WriteFully(int file, const void* bytes, std::size_t count);

}  // namespace boreforge
