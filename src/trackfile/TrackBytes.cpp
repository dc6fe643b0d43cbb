#include "trackfile/TrackBytes.h"

#include <cstring>

namespace boreforge {

Bytes TrackBytes(1);

std::string ReadText(ReadCursor& at, std::int32_t length) {
    const std::uint8_t* const text = at.Take(length);
    return text ? std::string(reinterpret_cast<const char*>(text), length) : std::string();
}

std::string ReadTag(ReadCursor& at) { return ToUpperAscii(ReadText(at, 4)); }

void SkipBytes(ReadCursor& at, std::int32_t count) { (void)at.Take(count); }

void WriteText(Bytes& bytes, std::string_view text) {
    if (!text.empty()) std::memcpy(Append(bytes, text.size()), text.data(), text.size());
}

void WriteTag(Bytes& bytes, std::string_view tag) { WriteText(bytes, tag.substr(0, 4)); }

void WriteZeros(Bytes& bytes, std::int32_t count) {
    if (count > 0) std::memset(Append(bytes, count), 0, count);
}

}  // namespace boreforge
