#include "platform/FileRights.h"

#include <cerrno>
#include <cstdint>
#include <optional>
#include <vector>

namespace boreforge {

namespace {

constexpr unsigned kOwnerReadWrite = 0600;

unsigned GroupBits(unsigned mode) { return mode >> 3 & 7; }
unsigned OtherBits(unsigned mode) { return mode & 7; }
unsigned BothClasses(unsigned bits) { return bits << 3 | bits; }  // for the group and for others

// Everything that a file's rights consist of.
struct Rights {
    unsigned owner = 0, group = 0, mode = 0;
    std::vector<std::uint8_t> list;
    friend bool operator==(const Rights&, const Rights&) = default;
};

std::optional<Rights> RightsOf(int file) {
    FileInfo info;
    std::vector<std::uint8_t> list(1 << 16);  // Linux has no longer ones
    if (fileCalls.inspect(file, &info) != 0) return std::nullopt;
    const std::int64_t length = fileCalls.getAccessList(file, list.data(), list.size());
    if (length < 0) return std::nullopt;
    list.resize(static_cast<std::size_t>(length));
    return Rights{info.owner, info.group, info.mode, list};
}

bool SetRights(int file, const Rights& now, const Rights& wanted) {
    const bool changesOwner = now.owner != wanted.owner || now.group != wanted.group;
    if (changesOwner && fileCalls.setOwner(file, wanted.owner, wanted.group) != 0) return false;
    // The list first: with only the permission bits, someone whom the list excludes could open the file.
    const std::vector<std::uint8_t>& list = wanted.list;
    if (now.list != list && fileCalls.setAccessList(file, list.data(), list.size()) != 0) return false;
    return fileCalls.setMode(file, wanted.mode) == 0;
}

}  // namespace

bool HasAccessList(int file) {
    std::uint8_t list[1 << 12];
    return fileCalls.getAccessList(file, list, sizeof list) != 0;
}

Outcome CopyRights(int newFile, int oldFile) {
    const std::optional<Rights> wanted = RightsOf(oldFile);
    if (!wanted) return SystemFailure(errno);
    const std::optional<Rights> before = RightsOf(newFile);
    if (!before) return SystemFailure(errno);
    if (*wanted == *before) return {};
    // Compared once more: a system may drop set-id bits, or ignore what it can't store.
    if (SetRights(newFile, *before, *wanted) && RightsOf(newFile) == wanted) return {};
    return Failure{.reason = "Its owner and permissions can't be kept.", .problem = Problem::NoAccess};
}

Outcome LimitRights(int newFile, const FileState& source) {
    FileInfo now;
    if (fileCalls.inspect(newFile, &now) != 0) return SystemFailure(errno);
    if (HasAccessList(newFile) && fileCalls.setAccessList(newFile, nullptr, 0) != 0)
        return SystemFailure(errno);
    unsigned mode = fileCalls.defaultMode() & source.info.mode;
    // Members of the other file's group are "others" of this one, and the other way round.
    if (now.group != source.info.group)
        mode &= 0700 | BothClasses(GroupBits(source.info.mode) & OtherBits(source.info.mode));
    if (source.hasAccessList) mode &= 0700;  // the list may keep anyone out
    if (fileCalls.setMode(newFile, mode | kOwnerReadWrite) != 0) return SystemFailure(errno);
    return {};
}

}  // namespace boreforge
