// The .zrbf file of a tunnel shape, little-endian: "ZRBF", the node count (32-bit), and for each node the
// inside and the outside point as three 32-bit floats each. Zoom, pan and selection are not in it.
#pragma once

#include <string>

namespace boreforge {

// Replaces the shape by the file's. False for an empty path and for a file that isn't there or can't be read:
// the shape is then as it was. False also for a file that is no shape or ends before the nodes that it
// announces: the shape is then empty. A count of 0 or below is an empty shape; bytes behind the last node are
// ignored, and no coordinate is tested. The reason is in lastFileFailure.
bool LoadTunnelShape(const std::string& path);

// Replaces the file at `path` by the shape. False when it can't be written whole: an old file is as it was.
bool SaveTunnelShape(const std::string& path);

}  // namespace boreforge
