// What the benchmarks work on: tracks, shapes, and files in a folder of their own.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace boreforge {

// The path of a file in a new folder under TMPDIR, or under the working directory without one; the folder
// goes with the program, and all that is in it. Call it once before a child process does.
std::string WorkFile(const std::string& name);

// The length of a file in bytes; 0 where there is none.
std::int64_t FileSize(const std::string& path);

// Copies by reads and writes of 256 KiB, as large as the pieces in which an object is written. The new file
// is flushed to the disk, or left to the system's cache.
bool CopyFile(const std::string& from, const std::string& to, bool flush);

// The most memory in bytes that a child process had at a time while it ran `action`; ends the program when
// that failed. A child starts with the pages of its parent, so call it before the parent has grown.
double PeakMemoryOf(const std::function<bool()>& action);

// What `action` gives in a child process, which has to touch all of its memory for the first time, as the
// program has when it is started for one job. Nothing, where there is no child or it failed.
struct ChildFigures {
    double seconds = 0;
    double count = 0;
};
ChildFigures FiguresOfChild(const std::function<ChildFigures()>& action);

// Replaces the shape by two circles of `nodes` nodes; the wall is half a unit thick.
void MakeRoundShape(int nodes, double radius);

// Replaces the open track by a hilly, banked round of `pieces` tunnel segments, each about `length` long.
void BuildCircuit(int pieces, double length);

// Replaces the open track by one of about `bytes` bytes: a fifth each for path and segments of all kinds,
// scenery points, scenery objects, structure records and the terrain.
void BuildLargeTrack(std::int64_t bytes);

}  // namespace boreforge
