// Text encodings: UTF-8, and Windows-1252 for track files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace boreforge {

inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// Removes and returns the first character of a UTF-8 text, which must not be empty. Returns kNoCharacter and
// leaves the text unchanged if it doesn't start with valid UTF-8: a stray byte, an overlong form, half a
// surrogate pair.
char32_t TakeCharacter(std::string_view& text);

// Converts UTF-8 to Windows-1252, one byte for each character. Returns nullopt if the text isn't UTF-8 or has
// a character that Windows-1252 lacks.
std::optional<std::string> ToWindows1252(std::string_view text);

}  // namespace boreforge
