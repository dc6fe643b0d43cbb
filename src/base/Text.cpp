#include "base/Text.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace boreforge {

namespace {

// The characters of the bytes 0x80 to 0x9F, from Unicode's mapping table CP1252.TXT. The five bytes without a
// character there stay control characters.
constexpr char32_t kWindows1252From80[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

char32_t TakeCharacter(std::string_view& text) {
    const std::string_view from = text;
    text.remove_prefix(1);
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(from[i]); };
    // The number of leading one bits tells the length: see "Well-Formed UTF-8 Byte Sequences" in the Unicode
    // Standard.
    const int ones = std::countl_one(byte(0));
    const std::size_t length = ones == 0 ? 1 : static_cast<std::size_t>(ones);
    if (ones == 1 || ones > 4 || from.size() < length) return kInvalidCharacter;
    char32_t character = byte(0) & (0x7F >> ones);
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(i) >> 6 != 2) return kInvalidCharacter;
        character = character << 6 | (byte(i) & 0x3F);
    }
    constexpr char32_t kFirstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < kFirstOfLength[length] || character > 0x10FFFF || surrogate) return kInvalidCharacter;
    text = from.substr(length);
    return character;
}

std::optional<std::string> ToWindows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        char32_t character = TakeCharacter(text);
        if (character >= 0x80 && (character < 0xA0 || character > 0xFF)) {
            const auto found = std::ranges::find(kWindows1252From80, character);
            if (found == std::end(kWindows1252From80)) return std::nullopt;
            character = static_cast<char32_t>(0x80 + (found - std::begin(kWindows1252From80)));
        }
        bytes += static_cast<char>(character);
    }
    return bytes;
}

bool IsUnsafeToPrint(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x061C ||
           character == 0x200E || character == 0x200F || (character >= 0x2028 && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

std::string ToPrintable(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = TakeCharacter(text);
        if (character == kInvalidCharacter || (character != '\n' && IsUnsafeToPrint(character)))
            printable += '?';
        else
            printable += before.substr(0, before.size() - text.size());
    }
    return printable;
}

std::string ToOneLine(std::string_view text) {
    std::string line = ToPrintable(text);
    std::ranges::replace(line, '\n', '?');
    return line;
}

std::string Shorten(std::string_view name) {
    constexpr int kMaxCharacters = 60;
    std::string_view rest = name;
    for (int i = 0; i < kMaxCharacters && !rest.empty(); ++i)
        TakeCharacter(rest);
    return std::string(name.substr(0, name.size() - rest.size())) + (rest.empty() ? "" : "...");
}

}  // namespace boreforge
