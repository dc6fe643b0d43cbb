#include "trackfile/TrackBytes.h"

#include <bit>
#include <cstring>

namespace boreforge {

Bytes TrackBytes(1);

namespace {

// The next `count` bytes, or nullptr where they are not there.
const std::uint8_t* Take(ReadCursor& at, std::size_t count) {
    if (at.failed || at.Remaining() < count) {
        at.failed = true;
        return nullptr;
    }
    const std::uint8_t* const place = at.bytes.data() + at.position;
    at.position += count;
    return place;
}

std::uint8_t* Append(Bytes& bytes, std::size_t count) {
    const std::size_t before = bytes.size();
    bytes.resize(before + count);
    return bytes.data() + before;
}

std::uint32_t ReadBits(ReadCursor& at) {
    const std::uint8_t* const b = Take(at, 4);
    if (!b) return 0;
    return std::uint32_t{b[0]} << 24 | std::uint32_t{b[1]} << 16 | std::uint32_t{b[2]} << 8 | b[3];
}

void WriteBits(Bytes& bytes, std::uint32_t bits) {
    std::uint8_t* const b = Append(bytes, 4);
    b[0] = static_cast<std::uint8_t>(bits >> 24);
    b[1] = static_cast<std::uint8_t>(bits >> 16);
    b[2] = static_cast<std::uint8_t>(bits >> 8);
    b[3] = static_cast<std::uint8_t>(bits);
}

}  // namespace

std::uint8_t ReadU8(ReadCursor& at) {
    const std::uint8_t* const b = Take(at, 1);
    return b ? *b : std::uint8_t{0};
}

std::int32_t ReadI32(ReadCursor& at) { return static_cast<std::int32_t>(ReadBits(at)); }

float ReadF32(ReadCursor& at) { return std::bit_cast<float>(ReadBits(at)); }

PackedColor ReadColor(ReadCursor& at) { return static_cast<PackedColor>(ReadBits(at) & 0x00FFFFFFu); }

std::string ReadText(ReadCursor& at, std::int32_t length) {
    if (length < 0) at.failed = true;
    const std::uint8_t* const b = length > 0 ? Take(at, static_cast<std::size_t>(length)) : nullptr;
    return b ? std::string(reinterpret_cast<const char*>(b), static_cast<std::size_t>(length))
             : std::string();
}

std::string ReadTag(ReadCursor& at) { return ToUpperAscii(ReadText(at, 4)); }

void SkipBytes(ReadCursor& at, std::int32_t count) {
    if (count < 0) at.failed = true;
    if (count > 0) (void)Take(at, static_cast<std::size_t>(count));
}

void WriteU8(Bytes& bytes, std::uint8_t value) { *Append(bytes, 1) = value; }

void WriteI32(Bytes& bytes, std::int32_t value) { WriteBits(bytes, static_cast<std::uint32_t>(value)); }

void WriteF32(Bytes& bytes, float value) { WriteBits(bytes, std::bit_cast<std::uint32_t>(value)); }

void WriteColor(Bytes& bytes, PackedColor color) {
    WriteBits(bytes, static_cast<std::uint32_t>(color) & 0x00FFFFFFu);
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
