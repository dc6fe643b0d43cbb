// Owner, permissions and access list of a new file.
#pragma once

#include "base/Outcome.h"
#include "platform/FileCalls.h"

namespace boreforge {

// Gives the new file the owner, group, permissions and access list of the old one, exactly. Fails if one of
// them can't be the same.
Outcome CopyRights(int newFile, int oldFile);

// Gives a new file, which is private so far, the usual permissions except those that the file `like` doesn't
// have. Its owner can always read and write it. `likeHasList`: the other file has an access list, so
// nobody else can.
Outcome LimitRights(int newFile, const FileInfo& like, bool likeHasList);

// True when the file has an access list beyond its permission bits, or if that can't be found out.
bool HasAccessList(int file);

}  // namespace boreforge
