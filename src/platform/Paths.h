// Paths as the system reads them. They are UTF-8.
#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace boreforge {

struct SplitPath {
    std::string folder, name;
};

// Splits a path after its last separator; a path without one is a name in the current folder.
SplitPath Split(const std::string& path);

// The absolute path without links of the file or folder at `path`. Empty, with the reason in errno, if there
// is none.
std::string RealPath(const std::string& path);

// Which file a path leads to, also through links. Paths to files that don't exist yet count as the same if
// folder and name agree without regard to case, which some disks ignore. Only the letters from A to Z have
// case; on Windows, all do.
struct FileIdentity {
    std::uint64_t device = 0, number = 0;  // of the file, or of its folder if there is no file, or 0
    std::string newName;  // in lower case; empty if the file exists, the whole path if its folder doesn't
    friend auto operator<=>(const FileIdentity&,
                            const FileIdentity&) = default;  // NOLINT(modernize-use-nullptr)
};
FileIdentity IdentityOf(const std::string& path);

// True if both paths lead to the same file.
inline bool SameFile(const std::string& one, const std::string& other) {
    return IdentityOf(one) == IdentityOf(other);
}

}  // namespace boreforge
