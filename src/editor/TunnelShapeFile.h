// The .zrbf file of a tunnel shape, little-endian: "ZRBF", the node count (32-bit), and for each node the
// inside and the outside point as three 32-bit floats each. Zoom, pan and selection are not in it.
#pragma once

#include <string>

namespace boreforge {

// Replaces the shape with the file's. False if the path is empty or the file is missing or can't be read: the
// shape is then unchanged. Also false if the file isn't a shape or is too short for its node count: the shape
// is then empty. The reason is in lastFileFailure. A count of 0 or less is an empty shape; bytes after the
// last node are ignored, and coordinates aren't tested.
[[nodiscard]] bool LoadTunnelShape(const std::string& path);

// Saves the shape to `path`. False if the file can't be written whole: an existing file is then unchanged.
[[nodiscard]] bool SaveTunnelShape(const std::string& path);

}  // namespace boreforge
