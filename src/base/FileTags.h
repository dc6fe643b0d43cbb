// The four bytes that the user's own files begin with, in upper or lower case.
#pragma once

#include <string_view>

#include "base/Outcome.h"

namespace boreforge {

inline constexpr std::string_view kTrackTag = "ZPHR";
inline constexpr std::string_view kShapeTag = "ZRBF";

// Whether a file may be replaced that starts with `beginning`, four bytes or fewer if it is shorter: a track
// or a shape only by a file with the same tag, any other file by any. `ownTag` is that of the new file, or
// empty.
Outcome MayReplace(std::string_view beginning, std::string_view ownTag);

}  // namespace boreforge
