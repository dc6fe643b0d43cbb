// Loading and saving the open track, a .zrtrack file of format version 1.3.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Files.h"
#include "trackfile/TrackBytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Reads the file at `path` into TrackFile. False if the path is empty, there is no such file, or its
// extension isn't ".zrtrack" in upper or lower case: TrackFile is then unchanged. Also false if the file
// can't be read, isn't a track, or holds a count or length that doesn't fit its size: TrackFile is then
// reset. The reason is in lastFileFailure.
[[nodiscard]] bool ReadTrackFile(const std::string& path);

// The file that the open track was read from, as it was then. The path is empty if no track is open.
struct TrackFileOnDisk {
    std::string Path;
    FileState State;
};
extern TrackFileOnDisk TrackOnDisk;

// Replaces the file at `path` with the open track; a path without ".zrtrack" gets it appended. With `held`,
// the file must not have changed since it was read. A new file gets no permission that the track's own file
// lacks. False if the file can't be written whole: an existing file is then unchanged, and the reason is in
// lastFileFailure. Also sets the Size and Children fields of TrackFile.
[[nodiscard]] bool WriteTrackFile(const std::string& path, HeldFile* held = nullptr);

// Where WriteTrackFile writes: `path` itself, or with ".zrtrack" appended.
std::string TrackSavePath(const std::string& path);

// Sets every field of TrackFile to zero, false or empty, and TrackBytes to a single byte.
void ResetTrackFile();

// Sets the Size and Children fields of TrackFile to what a save writes. False if the file would be too large
// for 32-bit sizes; the Size fields then mean nothing.
[[nodiscard]] bool ComputeChunkSizes();

}  // namespace boreforge
