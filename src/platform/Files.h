// Whole files, read so that a later change by another program is noticed. Paths are UTF-8 and are passed to
// the system unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "base/Bytes.h"
#include "base/Outcome.h"
#include "platform/FileCalls.h"

namespace boreforge {

// A file as it was when it was read.
struct FileState {
    FileInfo info;
    std::size_t hash = 0;  // of its content
    bool hasAccessList = false;
};

// Reads the whole regular file at `path` into `content`. Fails for a folder, a device, a file of 2 GiB or
// more, a file that can't be read, and one that changes meanwhile. Throws std::bad_alloc.
Outcome ReadWholeFile(const std::string& path, Bytes& content, FileState* state = nullptr);

// For a FileState; equal contents have equal hashes within one run of the program. The second hashes the
// content of an open file, from its position on, without holding it in memory.
std::size_t HashOf(std::span<const std::uint8_t> content);
Outcome HashOpenFile(int file, std::size_t& hash);

// Reads up to `count` bytes, fewer only at the end of the file. Returns their number, or -1 if the system
// fails.
std::int64_t ReadFully(int file, void* bytes, std::size_t count);

// Writes all bytes.
Outcome WriteFully(int file, std::span<const std::uint8_t> bytes);

}  // namespace boreforge
