// Whole files, read and replaced so that no fault on the way costs the user what was there before.
// Paths are UTF-8 and are handed to the system as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "base/LargeArray.h"

namespace boreforge {

// True when something other than a folder stands at `path`, links followed.
bool FileExists(const std::string& path);

// True when both paths lead to the same file, through links or not. Two paths at which nothing stands yet are
// the same when they name the same place.
bool SameFile(const std::string& one, const std::string& other);

// Reads the whole regular file at `path` into `content`. False, with `content` empty, for a folder, a device,
// a file of 2 GiB or more, one that can't be read, and one that became shorter while it was read.
bool ReadWholeFile(const std::string& path, Bytes& content);

// Replaces the file at `path`, or makes it, in one step: a complete new file is written beside it, flushed to
// the disk and renamed over it, so that at every moment the old file or the new one stands there whole. Links
// are followed; the permissions of an old file are kept. False when any of it fails, or when the old file is
// no regular file or is locked against writing by its mode: it is then as it was, and nothing is left beside
// it. `path` may not be empty.
bool ReplaceFile(const std::string& path, std::span<const std::uint8_t> content);

// A file that is written front to back through a buffer of fixed size.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // A file that was not finished is removed.
    ~OutputFile();

    // Deletes the file at `path`, links followed, and opens a new one in its place. False when something that
    // is no regular file or is locked against writing by its mode stands there, or when the file can't be
    // made.
    bool Create(const std::string& path);

    // `count` bytes of the buffer to be filled at once; they count as written. At most kBufferSize.
    std::uint8_t* Claim(std::size_t count) {
        if (kBufferSize - used_ < count) Flush();
        std::uint8_t* const place = buffer_.get() + used_;
        used_ += count;
        return place;
    }

    // Writes what is left and closes the file. False when any write since Create failed; the file is then
    // removed, as a part of it helps nobody.
    bool Finish();

    static constexpr std::size_t kBufferSize = std::size_t{1} << 18;

  private:
    void Flush();

    std::string path_;
    std::unique_ptr<std::uint8_t[]> buffer_;
    std::size_t used_ = 0;
    int file_ = -1;
    bool good_ = false;
};

// From now on a file that is being written is removed when the user or the system ends the program by a
// signal that can be caught: SIGINT, SIGTERM or SIGHUP, but for those that were ignored before.
void RemoveUnfinishedOnSignals();

}  // namespace boreforge
