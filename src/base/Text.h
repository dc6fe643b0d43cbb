// Texts in the encoding of a track file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace boreforge {

// Converts UTF-8 to Windows-1252, one byte for each character. Nothing for a text that isn't UTF-8 or has a
// character that Windows-1252 lacks.
std::optional<std::string> ToWindows1252(std::string_view text);

}  // namespace boreforge
