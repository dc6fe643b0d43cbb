// Owner, permissions and access list of a file that replaces another.
#pragma once

#include "platform/FileCalls.h"

namespace boreforge {

// Copies the group, the owner, the permissions without the set-id bits, the access list and, where possible,
// the "user." attributes from the old file to the new one. Nobody gains access. False if somebody would lose
// it: if the group can't be kept and its permissions differ from those of others, if the owner can't be kept
// and the old group could no longer write, or if either can't be kept and there is an access list.
[[nodiscard]] bool CopyRights(int newFile, int oldFile);

// Gives a new file, which is private so far, the usual permissions except those that the file `like` doesn't
// have. Its owner can always read and write it. `likeHasList`: the other file has an access list, so its
// group bits are not the group's.
[[nodiscard]] bool LimitRights(int newFile, const FileInfo& like, bool likeHasList);

// True when the file has an access list beyond its permission bits.
bool HasAccessList(int file);

}  // namespace boreforge
