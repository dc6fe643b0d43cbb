#include "trackfile/TrackBytes.h"

#include <algorithm>

namespace boreforge {

Bytes TrackBytes(1);

std::string ReadText(ReadCursor& at, std::int32_t length) {
    const std::uint8_t* const text = at.Take(length);
    return text ? std::string(reinterpret_cast<const char*>(text), length) : std::string();
}

std::string ReadTag(ReadCursor& at) { return ToUpperAscii(ReadText(at, 4)); }

void SkipBytes(ReadCursor& at, std::int32_t count) { (void)at.Take(count); }

void WriteText(WriteCursor& at, std::string_view text) {
    if (std::uint8_t* const bytes = at.Take(std::ssize(text))) std::copy(text.begin(), text.end(), bytes);
}

void WriteTag(WriteCursor& at, std::string_view tag) { WriteText(at, tag.substr(0, 4)); }

void WriteZeros(WriteCursor& at, std::int32_t count) {
    if (count <= 0) return;
    if (std::uint8_t* const bytes = at.Take(count)) std::fill_n(bytes, count, std::uint8_t{0});
}

}  // namespace boreforge
