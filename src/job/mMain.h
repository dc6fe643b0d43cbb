// The tunnel job: makes one .3ds file of the traced track, the shape and the settings, and saves the track.
#pragma once

#include <cstdint>
#include <string>

#include "base/Outcome.h"
#include "job/TunnelSettings.h"

namespace boreforge {

// The open track's path, and whether a track is open.
extern std::string TrackFilePath;
extern bool TrackLoaded;

// Opens the track at `path` and traces it. If it can't be read, no track is open, and TrackFilePath keeps the
// last good path. A track that was read but can't be traced is open; the job refuses it. If memory runs out
// in the trace, no track is open.
Outcome OpenTrack(const std::string& path);

// The number of tunnel segments of the open track.
std::int32_t CountTunnelSegments();

// Which steps a job skips; by default none.
struct SkippedSteps {
    bool track = false;    // the track is neither saved nor changed in memory
    bool writing = false;  // the model is built and both files can be written, but neither is
};

// Builds the tunnel of the open track in the model, changes the track in memory as the settings say, writes
// the object to OutputPath and the track to TrackFilePath. It fails, before the first write,
// - with an empty Failure, when no track is open,
// - with a notice when the track has no tunnel,
// - when the track isn't traced, or was changed on the disk since it was read or saved,
// - when OutputPath is the track, another track, a shape, or, if the object is to be placed, has a name
// that can't be stored in a track,
// - when the tunnel is too large for a .3ds file or for the memory,
// - when either file can't be replaced where it is.
// If writing fails later, the track is unchanged, but the object may already have been replaced. The track in
// memory may then be changed, so it has to be opened again. A skipped step can't make the job fail.
Outcome RunTunnelJob(const TunnelJobSettings& settings, const SkippedSteps& skipped = {});

}  // namespace boreforge
