// Whole files, read so that a later change by another program is noticed. Paths are UTF-8 and are passed to
// the system unchanged.
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

// A file as it was when it was read.
struct FileState {
    FileInfo info;
    std::uint64_t hash = 0;
    // False if the file was changed so shortly before the read that another change might not alter its times.
    bool timesTell = false;
    bool hasAccessList = false;
};

// Reads the whole regular file at `path` into `content`, with capacity for one more byte. If the file doesn't
// start with `beginning`, ignoring ASCII case, no more is read. False, with `content` empty and the reason in
// lastFileFailure, for a folder, a device, a file of 2 GiB or more, a file that can't be read, and one that
// keeps changing. Throws std::bad_alloc.
[[nodiscard]] bool ReadWholeFile(const std::string& path, Bytes& content, std::string_view beginning = {},
                                 FileState* state = nullptr);

// The tags that a track and a shape start with, in either case.
inline constexpr std::string_view kTrackBeginning = "ZPHR";
inline constexpr std::string_view kShapeBeginning = "ZRBF";

// A file that was read and will be replaced, locked against other instances of our programs. Other programs
// don't take the lock: hence the comparisons.
class HeldFile {
  public:
    // Opens and locks the file at `path`. False if it can't be opened for writing, was changed or removed
    // since it was read, or another instance keeps it locked for two seconds. A file system without locks is
    // fine.
    [[nodiscard]] bool Hold(const std::string& path, const FileState& asRead);

    bool IsHeld() const { return bool(file_); }

    void Release() { file_ = OpenFile(); }

    // True when the open file `target`, which is to be replaced, is the held one and still as it was read.
    [[nodiscard]] bool IsUnchanged(int target) const;

  private:
    OpenFile file_;
    FileState asRead_;
};

// For the other functions that write files.
[[nodiscard]] bool ReadFully(int file, void* bytes, std::size_t count);
[[nodiscard]] bool WriteFully(int file, const void* bytes, std::size_t count);

}  // namespace boreforge
