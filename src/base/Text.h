// Characters in UTF-8, and texts in the encoding of a track file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace boreforge {

inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// Takes the first character off a text in UTF-8, which may not be empty. Returns kNoCharacter, and leaves the
// text as it is, where it is not UTF-8: a stray byte, an overlong form, half a surrogate pair.
char32_t TakeCharacter(std::string_view& text);

// Converts UTF-8 to Windows-1252, one byte for each character. Nothing for a text that isn't UTF-8 or has a
// character that Windows-1252 lacks.
std::optional<std::string> ToWindows1252(std::string_view text);

}  // namespace boreforge
