// The .zrbf file of a tunnel shape, little-endian: "ZRBF", the node count (32-bit), and for each node the
// inside and the outside point as three 32-bit floats each. Zoom, pan and selection are not in it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Outcome.h"

namespace boreforge {

// Replaces the shape with the file's. The shape is unchanged if the path is empty or the file can't be read.
// It is empty if the file isn't a shape or is too short for its node count. A count of 0 or less is an empty
// shape; bytes after the last node are ignored, and coordinates aren't tested.
Outcome LoadTunnelShape(const std::string& path);

// Saves the shape to `path`, replacing any file except a track. If it fails, an existing file is unchanged.
Outcome SaveTunnelShape(const std::string& path);

// A shape of the folder elements/. They are built into the programs, so that no file has to be found.
struct SampleShape {
    std::string_view name;  // of the file, without .zrbf
    std::string_view file;  // its bytes
};

// In alphabetical order. Written by cmake/SampleShapes.cmake.
extern const std::vector<SampleShape> kSampleShapes;

// Replaces the shape with a sample shape, or empties it if there is none of this name.
void LoadSampleShape(std::string_view name);

}  // namespace boreforge
