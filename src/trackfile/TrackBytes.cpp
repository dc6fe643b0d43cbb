#include "trackfile/TrackBytes.h"

#include <cstring>

namespace boreforge {

Bytes TrackBytes(1);

std::string ReadText(ReadCursor& at, std::int32_t length) {
    if (length < 0) at.Fail();
    const std::uint8_t* const b = length > 0 ? at.Take(static_cast<std::size_t>(length)) : nullptr;
    return b ? std::string(reinterpret_cast<const char*>(b), static_cast<std::size_t>(length))
             : std::string();
}

std::string ReadTag(ReadCursor& at) { return ToUpperAscii(ReadText(at, 4)); }

void SkipBytes(ReadCursor& at, std::int32_t count) {
    if (count < 0) at.Fail();
    if (count > 0) (void)at.Take(static_cast<std::size_t>(count));
}

void WriteText(Bytes& bytes, std::string_view text) {
    if (!text.empty()) std::memcpy(Append(bytes, text.size()), text.data(), text.size());
}

void WriteTag(Bytes& bytes, std::string_view tag) { WriteText(bytes, tag.substr(0, 4)); }

void WriteZeros(Bytes& bytes, std::int32_t count) {
    if (count > 0)
        std::memset(Append(bytes, static_cast<std::size_t>(count)), 0, static_cast<std::size_t>(count));
}

}  // namespace boreforge
