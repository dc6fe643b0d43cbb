#include "platform/FileRights.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/FileFailure.h"

namespace boreforge {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";
constexpr unsigned kAllBits = 0777, kGroupWrite = 0020, kOwnerReadWrite = 0600;

unsigned GroupBits(unsigned mode) { return mode >> 3 & 7; }
unsigned OtherBits(unsigned mode) { return mode & 7; }
unsigned WithGroupBits(unsigned mode, unsigned bits) { return (mode & ~070u) | bits << 3; }

enum class Attribute { Present, Absent, Unknown };

// Reads an attribute of any length.
Attribute ReadAttribute(int file, const char* name, std::vector<char>& value) {
    value.resize(1 << 16);  // no attribute of Linux is longer
    const std::int64_t length = fileCalls.getAttribute(file, name, value.data(), value.size());
    if (length < 0) return errno == ENODATA || errno == ENOTSUP ? Attribute::Absent : Attribute::Unknown;
    value.resize(static_cast<std::size_t>(length));
    return Attribute::Present;
}

// New files can inherit an access list from their folder, so one that the old file lacks is removed.
bool CopyAccessList(int newFile, int oldFile) {
    std::vector<char> list;
    switch (ReadAttribute(oldFile, kAccessList, list)) {
        case Attribute::Present:
            return fileCalls.setAttribute(newFile, kAccessList, list.data(), list.size()) == 0;
        case Attribute::Absent:
            return !HasAccessList(newFile) || fileCalls.removeAttribute(newFile, kAccessList) == 0;
        case Attribute::Unknown:
            break;
    }
    return false;
}

void CopyUserAttributes(int newFile, int oldFile) {
    std::vector<char> names(1 << 16), value;
    const std::int64_t length = fileCalls.listAttributes(oldFile, names.data(), names.size());
    for (std::int64_t at = 0; at < length;) {
        const char* const name = names.data() + at;
        at += static_cast<std::int64_t>(std::strlen(name)) + 1;
        if (!std::string_view(name).starts_with("user.")) continue;
        if (ReadAttribute(oldFile, name, value) == Attribute::Present)
            (void)fileCalls.setAttribute(newFile, name, value.data(), value.size());
    }
}

}  // namespace

bool HasAccessList(int file) {
    std::vector<char> list;
    return ReadAttribute(file, kAccessList, list) != Attribute::Absent;
}

bool CopyRights(int newFile, int oldFile) {
    FileInfo now, old;
    if (fileCalls.inspect(newFile, &now) != 0 || fileCalls.inspect(oldFile, &old) != 0) return FailBySystem();
    // The group first: after the owner has changed, we may no longer change the group.
    const bool keepsGroup = now.group == old.group || fileCalls.setGroup(newFile, old.group) == 0;
    const bool keepsOwner = now.owner == old.owner || fileCalls.setOwner(newFile, old.owner) == 0;

    const unsigned mode = old.mode & kAllBits;
    // With an access list the group bits are its mask, and its entries refer to the old owner and group.
    if (!(keepsGroup && keepsOwner) && HasAccessList(oldFile)) return Fail(FileProblem::RightsLost);
    // Without its group, the group's members become "others"; the members of the new group were that before.
    if (!keepsGroup && GroupBits(mode) != OtherBits(mode)) return Fail(FileProblem::RightsLost);
    if (!keepsOwner && (mode & kGroupWrite) == 0) return Fail(FileProblem::RightsLost);
    // The list first: with the permission bits alone, someone whom the list keeps out could get in.
    if (!CopyAccessList(newFile, oldFile)) return Fail(FileProblem::RightsLost);
    if (fileCalls.setMode(newFile, mode) != 0) return FailBySystem();
    CopyUserAttributes(newFile, oldFile);
    return true;
}

bool LimitRights(int newFile, const FileInfo& like, bool likeHasList) {
    FileInfo now;
    if (fileCalls.inspect(newFile, &now) != 0) return FailBySystem();
    if (HasAccessList(newFile) && fileCalls.removeAttribute(newFile, kAccessList) != 0) return FailBySystem();
    unsigned mode = fileCalls.usualMode() & like.mode;
    if (likeHasList || now.group != like.group)
        mode = WithGroupBits(mode, GroupBits(mode) & OtherBits(like.mode));
    return fileCalls.setMode(newFile, mode | kOwnerReadWrite) == 0 || FailBySystem();
}

}  // namespace boreforge
