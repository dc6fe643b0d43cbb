// Loading and saving the open track, a .zrtrack file of format version 1.3.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Files.h"
#include "trackfile/TrackBytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Reads the file at `path` into TrackFile and gives true. False for an empty path, a file that isn't there
// and another extension than ".zrtrack" in any case: TrackFile is then as it was. False also for a file that
// can't be read, is no track, or says of itself what its length refutes: TrackFile is then reset.
bool ReadTrackFile(const std::string& path);

// The file that the open track was read from, as it was then; the path is empty when no track is open.
struct TrackFileOnDisk {
    std::string Path;
    FileState State;
};
extern TrackFileOnDisk TrackOnDisk;

// Replaces the file at `path` by the open track; ".zrtrack" is appended to a path without it. With `held` the
// file must still be as it was read; a file that is new gets no permission that the track's own file lacks.
// False when the file can't be written whole: an old file is then as it was, and the reason is in
// lastFileFailure. Counts, sizes and child counts follow from the document; its Size and Children fields are
// set on the way.
bool WriteTrackFile(const std::string& path, const HeldFile* held = nullptr);

// The path at which WriteTrackFile will write: `path` itself, or with ".zrtrack" appended.
std::string TrackSavePath(const std::string& path);

// Sets every field of TrackFile to zero, false or empty, and TrackBytes to a single byte.
void ResetTrackFile();

// Sets the Children fields of TrackFile to the tree's values and the Size fields to what a save will write.
// False when the file would be larger than its 32-bit sizes can say; the Size fields then mean nothing.
bool ComputeChunkSizes();

}  // namespace boreforge
