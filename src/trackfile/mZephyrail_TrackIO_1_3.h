// Loading and saving the open track, a .zrtrack file of format version 1.3.
#pragma once

#include <cstdint>
#include <string>

#include "base/Outcome.h"
#include "platform/OutputFile.h"
#include "trackfile/TrackBytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Reads the file at `path` into TrackFile. TrackFile is unchanged if the path is empty, its extension isn't
// ".zrtrack" in upper or lower case, or the file can't be read. It is reset if the file isn't a track or
// holds a count or length that doesn't fit its size.
Outcome ReadTrackFile(const std::string& path);

// The file that the open track was read from, as it was when it was read; after a save, with the new size and
// hash.
struct TrackFileOnDisk {
    std::string path;  // empty if no track is open
    FileState state;
    // What the file has but TrackFile can't hold; a save drops it.
    std::int64_t foreignChunks = 0;  // with unknown tags
    std::int64_t bytesAfterEnd = 0;  // after the last chunk
};
extern TrackFileOnDisk TrackOnDisk;

// Replaces the file at `path` with the open track; a path without ".zrtrack" gets it appended. The file from
// which the track was read must not have changed since. A new file gets no permission that the track's own
// file lacks. Also sets the Size and Children fields of TrackFile.
Outcome WriteTrackFile(const std::string& path);

// WriteTrackFile step by step, like OutputFile.
class TrackWriter {
  public:
    Outcome Open(const std::string& path);
    Outcome Write();
    Outcome PutInPlace();

  private:
    OutputFile file_;
    bool replacesReadFile_ = false;
    std::int64_t size_ = 0;
    std::size_t hash_ = 0;
};

// Where WriteTrackFile writes: `path` itself, or with ".zrtrack" appended.
std::string TrackSavePath(const std::string& path);

// Sets every field of TrackFile to zero, false or empty, and TrackBytes to a single byte.
void ResetTrackFile();

// Sets the Size and Children fields of TrackFile to what a save writes. False if the file would be too large
// for 32-bit sizes; the Size fields then mean nothing.
[[nodiscard]] bool ComputeChunkSizes();

}  // namespace boreforge
