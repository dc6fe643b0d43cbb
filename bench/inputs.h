// Inputs of the benchmarks: tracks, shapes, and files in a folder of their own.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace boreforge {

// The path of a file in a new folder under TMPDIR, or under the working directory if that isn't set. The
// folder is deleted when the program ends. Call this once before any child process does.
std::string WorkFile(const std::string& name);

// The length of a file in bytes; 0 if there is none.
std::int64_t FileSize(const std::string& path);

// Copies in pieces of 256 KiB, like those in which an object is written. Without `flush`, the new file is
// left to the system's cache.
bool CopyFile(const std::string& from, const std::string& to, bool flush);

// The peak memory, in bytes, of a child process that runs `action`. Ends the program if that fails. A child
// starts with the pages of its parent, so call this before the parent has grown.
double PeakMemoryOf(const std::function<bool()>& action);

// Returns the result of `action` in a child process, where all memory is fresh, as in a program that is
// started for one job. Ends the program if the child fails.
struct ChildFigures {
    double seconds = 0;
    double count = 0;
};
ChildFigures FiguresOfChild(const std::function<ChildFigures()>& action);

// Replaces the shape with two circles of `nodes` nodes; the wall is half a unit thick.
void MakeRoundShape(int nodes, double radius);

// Replaces the open track with a hilly, banked circuit of `pieces` tunnel segments, each about `length` long.
void BuildCircuit(int pieces, double length);

// Replaces the open track with one of about `bytes` bytes: a fifth each for path and segments of all kinds,
// scenery points, scenery objects, structure records and the terrain.
void BuildLargeTrack(std::int64_t bytes);

}  // namespace boreforge
