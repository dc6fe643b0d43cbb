// The value encodings that modules share: truth values, packed colours, the one rounding rule, and text case
// without a locale.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace boreforge {

// A truth value as Zephyrail stores it: 16 bits, 0 false, -1 true.
using Truth = std::int16_t;
inline constexpr Truth kFalse = 0;
inline constexpr Truth kTrue = -1;
constexpr Truth ToTruth(bool value) { return value ? kTrue : kFalse; }

// A colour in one number: red in the low byte, then green, then blue; the top byte is not used.
using PackedColor = std::int32_t;

// A colour in three channels, 0 to 255 each.
struct ColorRGB {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const ColorRGB&, const ColorRGB&) = default;
};

// Only the low byte of each channel counts.
constexpr PackedColor PackColor(std::int32_t red, std::int32_t green, std::int32_t blue) {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}

// The channels of a packed colour, 0 to 255 each.
constexpr void SplitColor(PackedColor color, std::int32_t& red, std::int32_t& green, std::int32_t& blue) {
    red = color & 0xFF;
    green = (color & 0xFF00) / 256;
    blue = (color & 0xFF0000) / 65536;
}

// Rounds to the nearest whole number, a tie to the even one: 0.5 becomes 0, 1.5 and 2.5 become 2.
inline double RoundToEven(double value) { return std::nearbyint(value); }

inline ColorRGB ToColorRGB(PackedColor color) {
    std::int32_t red = 0, green = 0, blue = 0;
    SplitColor(color, red, green, blue);
    return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
            static_cast<std::uint8_t>(blue)};
}

constexpr PackedColor ToPackedColor(const ColorRGB& color) {
    return PackColor(color.red, color.green, color.blue);
}

// Each channel times a factor of at least 0, rounded to nearest (ties to even) and limited to 255.
inline ColorRGB ScaleColor(const ColorRGB& color, double factor) {
    const auto scale = [factor](std::uint8_t channel) {
        const double scaled = RoundToEven(channel * factor);
        return static_cast<std::uint8_t>(scaled > 255 ? 255 : scaled);
    };
    return {scale(color.red), scale(color.green), scale(color.blue)};
}

// Change the case of ASCII letters only: tags and extensions need no more, and the result must not depend on
// the locale.
inline std::string ToUpperAscii(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}
inline std::string ToLowerAscii(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// Whether a path ends with an extension, given in lower case with its dot.
inline bool HasExtension(std::string_view path, std::string_view extension) {
    return ToLowerAscii(std::string(path)).ends_with(extension);
}

// The text after the last "/" or "\", or the whole path if it has neither.
inline std::string_view BaseName(std::string_view path) {
    const std::size_t last = path.find_last_of("/\\");
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

}  // namespace boreforge
