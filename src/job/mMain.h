// The tunnel job: makes one .3ds file of the traced track, the shape and the settings, and saves the track.
#pragma once

#include <string>

#include "job/TunnelSettings.h"

namespace boreforge {

// The open track's path, and whether a track is open.
extern std::string TrackFilePath;
extern bool TrackLoaded;

// Opens the track at `path` and traces it. False, with a message, if it can't be read: then no track is open,
// and TrackFilePath keeps the last good path. A track that was read but can't be traced is open; the job
// refuses it.
[[nodiscard]] bool OpenTrack(const std::string& path);

// Builds the tunnel of the open track in the model store, changes the track in memory as the settings say,
// writes the object to OutputPath and the track to TrackFilePath, in this order; the track is not touched
// when the object could not be written. True when both are on the disk. False when no track is open, and,
// with a message, when the track has no tunnel, isn't traced, or was changed since it was read; when
// OutputPath is a track, a shape, or a name that can't be put into the track but should be; when the tunnel
// is too large; and when a file can't be written.
[[nodiscard]] bool RunTunnelJob(TunnelJobSettings settings);

// The two parts of the job that don't change the track, not even in memory. The first builds the tunnel in
// the model store and writes nothing; false, with a message, if the job would refuse. The second writes the
// object.
[[nodiscard]] bool BuildTunnelObject(TunnelJobSettings settings);
[[nodiscard]] bool WriteTunnelObject(const std::string& path);

}  // namespace boreforge
