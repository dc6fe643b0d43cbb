// Owner, permissions and access list of a new file.
#pragma once

#include "base/Outcome.h"
#include "platform/FileCalls.h"
#include "platform/Files.h"

namespace boreforge {

// Gives the new file the owner, group, permissions and access list of the old one, exactly. Fails if one of
// them can't be the same.
Outcome CopyRights(int newFile, int oldFile);

// Gives a new file, created private, the default permissions without those that the file `source` lacks. Its
// owner can always read and write it. If `source` has an access list, nobody else can.
Outcome LimitRights(int newFile, const FileState& source);

// True when the file has an access list beyond its permission bits, or if that can't be determined.
bool HasAccessList(int file);

}  // namespace boreforge
