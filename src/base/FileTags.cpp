#include "base/FileTags.h"

#include <string>

#include "base/Values.h"

namespace boreforge {

Outcome MayReplace(std::string_view beginning, std::string_view newTag) {
    const std::string tag = ToUpperAscii(std::string(beginning));
    if (tag == newTag || (tag != kTrackTag && tag != kShapeTag)) return {};
    const std::string kind = tag == kTrackTag ? "Track" : "Shape";
    return Failure{.headline = "Error - That File Is a " + kind + "!", .reason = "It was not replaced."};
}

}  // namespace boreforge
