// Paths as the system reads them. They are UTF-8.
#pragma once

#include <string>

namespace boreforge {

// A path split into folder and name.
struct Place {
    std::string folder, name;
};

Place PlaceOf(const std::string& path);

// True if there is something other than a folder at `path`. Follows links.
bool FileExists(const std::string& path);

// True if both paths lead to the same file, also through links. Two paths without a file are the same if a
// file created at one would be found at the other.
bool SameFile(const std::string& one, const std::string& other);

}  // namespace boreforge
