// How the user's own files are recognised: the four bytes that they begin with, in upper or lower case, and
// the extension of their names.
#pragma once

#include <string_view>

#include "base/Outcome.h"

namespace boreforge {

inline constexpr std::string_view kTrackTag = "ZPHR";
inline constexpr std::string_view kShapeTag = "ZRBF";
inline constexpr std::string_view kTrackExtension = ".zrtrack", kShapeExtension = ".zrbf";

// Whether a new file with the tag `newTag` (empty: none) may replace a file that starts with `beginning`, up
// to four bytes. A track or a shape may be replaced only by its own kind.
Outcome MayReplace(std::string_view beginning, std::string_view newTag);

}  // namespace boreforge
