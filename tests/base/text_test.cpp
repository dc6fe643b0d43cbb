#include "base/Text.h"

#include <gtest/gtest.h>

#include "base/Values.h"

namespace boreforge {

TEST(TextTest, OnlyWellFormedUtf8IsTakenAsACharacter) {
    const struct {
        const char* name;
        std::string_view text;
        char32_t character;
    } cases[] = {{"one byte", "A\x80", U'A'},
                 {"two bytes for what fits one", "\xC1\xBF", kInvalidCharacter},
                 {"three bytes for what fits two", "\xE0\x9F\xBF", kInvalidCharacter},
                 {"before the surrogates", "\xED\x9F\xBF", 0xD7FF},
                 {"the first surrogate", "\xED\xA0\x80", kInvalidCharacter},
                 {"the last surrogate", "\xED\xBF\xBF", kInvalidCharacter},
                 {"the last character", "\xF4\x8F\xBF\xBF", 0x10FFFF},
                 {"beyond it", "\xF4\x90\x80\x80", kInvalidCharacter},
                 {"cut short", "\xE2\x82", kInvalidCharacter},
                 {"no second byte", "\xC3(", kInvalidCharacter}};
    for (const auto& [name, text, character] : cases) {
        std::string_view rest = text;
        EXPECT_EQ(TakeCharacter(rest), character) << name;
    }
}

TEST(TextTest, Windows1252HasLatin1AndItsOwnCharactersOnly) {
    const struct {
        std::string_view text;
        std::optional<std::string> bytes;
    } cases[] = {{"\u00A0\u00FF", "\xA0\xFF"}, {"\u20AC\u0178", "\x80\x9F"}, {"\u0081", "\x81"},
                 {"\u0080", std::nullopt},     {"\u0100", std::nullopt},     {"\xFF", std::nullopt}};
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(ToWindows1252(text), bytes) << text;
}

TEST(TextTest, WhatControlsATerminalIsReplaced) {
    for (const char* const text :
         {"\x1b", "\x7f", "\u009b", "\u061c", "\u200e", "\u2028", "\u202e", "\u2069", "\xff", "\n"})
        EXPECT_EQ(ToOneLine(text), "?") << text;
    EXPECT_EQ(ToOneLine("\u00e4\u2026\xe2\x82z"), "\u00e4\u2026??z");
    EXPECT_EQ(ToPrintable("a\r\nb"), "a?\nb");
}

TEST(TextTest, ANameIsCutAfterSixtyCharacters) {
    std::string name;
    for (int i = 0; i < 30; ++i)
        name += "\xff\u20ac";  // no character, so a byte of its own, and a character of three bytes
    EXPECT_EQ(Shorten(name), name);
    EXPECT_EQ(Shorten(name + "x"), name + "...");
}

// Tracks hold names without folders, also of paths that were typed on another system.
TEST(TextTest, ABaseNameFollowsTheLastSeparatorOfEitherKind) {
    for (const char* const path : {"o.3ds", "tunnels/o.3ds", "C:\\tunnels\\o.3ds", "a\\b/o.3ds"})
        EXPECT_EQ(BaseName(path), "o.3ds") << path;
}

}  // namespace boreforge
