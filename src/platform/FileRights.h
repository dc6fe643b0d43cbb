// Who may do what with a file that takes the place of another one.
#pragma once

#include "platform/FileCalls.h"

namespace boreforge {

// Gives the new file the group, the owner, the permissions and the access list of the old one, without the
// set-id bits, and its "user." attributes as far as possible. Nobody gains access. False when somebody would
// lose it: when the group can't be kept and could do more than others, or when the owner can't be kept and
// the old group could no longer write.
[[nodiscard]] bool CopyRights(int newFile, int oldFile);

// Takes from a new file whatever permissions the file `like` doesn't have too; its owner can always read and
// write it. `likeHasList`: that file has an access list, which says more than its permission bits.
[[nodiscard]] bool LimitRights(int newFile, const FileInfo& like, bool likeHasList);

// True when the file has an access list beyond its permission bits.
bool HasAccessList(int file);

}  // namespace boreforge
