// Text encodings: UTF-8, and Windows-1252 for track files. Also makes text from files safe to display.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace boreforge {

inline constexpr char32_t kInvalidCharacter = 0xFFFFFFFF;

// Removes and returns the first character of a UTF-8 text, which must not be empty. Removes one byte and
// returns kInvalidCharacter if it doesn't start with valid UTF-8: a stray byte, an overlong form, half a
// surrogate pair.
char32_t TakeCharacter(std::string_view& text);

// Converts UTF-8 to Windows-1252, one byte for each character. Returns nullopt if the text isn't UTF-8 or has
// a character that Windows-1252 lacks.
std::optional<std::string> ToWindows1252(std::string_view text);

// Control characters, and those of Unicode that break lines or change the direction of writing.
bool IsUnsafeToPrint(char32_t character);

// Replaces everything that isn't UTF-8 or could control a terminal with "?". Line ends stay.
std::string ToPrintable(std::string_view text);

// The same without line ends: a path or a name must not look like a line of output.
std::string ToOneLine(std::string_view text);

// The first 60 characters of a name from a file, then "..." if that isn't all of it. A byte that isn't UTF-8
// counts as a character.
std::string Shorten(std::string_view name);

}  // namespace boreforge
