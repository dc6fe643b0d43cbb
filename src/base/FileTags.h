// How the user's own files are recognised: the four bytes that they begin with, in upper or lower case, and
// the extension of their names.
#pragma once

#include <string>
#include <string_view>

#include "base/Outcome.h"
#include "base/Values.h"

namespace boreforge {

inline constexpr std::string_view kTrackTag = "ZPHR";
inline constexpr std::string_view kShapeTag = "ZRBF";
inline constexpr std::string_view kTrackExtension = ".zrtrack", kShapeExtension = ".zrbf";

// Whether a new file with the tag `newTag` (empty: none) may replace a file that starts with `beginning`, up
// to four bytes. A track or a shape may be replaced only by its own kind.
inline Outcome MayReplace(std::string_view beginning, std::string_view newTag) {
    const std::string tag = ToUpperAscii(std::string(beginning));
    if (tag == newTag || (tag != kTrackTag && tag != kShapeTag)) return {};
    const std::string kind = tag == kTrackTag ? "Track" : "Shape";
    return Failure{.headline = "Error - That File Is a " + kind + "!", .reason = "It was not replaced."};
}

}  // namespace boreforge
