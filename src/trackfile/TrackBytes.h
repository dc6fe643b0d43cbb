// How values are encoded in a .zrtrack file: big-endian, unaligned, text with one byte per character.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/Values.h"

namespace boreforge {

// The whole file during a load or a save.
extern Bytes TrackBytes;

// A position in bytes that are read or written. A step past the end, or of negative length, leaves the cursor
// where it is and fails it for good; a read then returns zero. So callers need to test for failure only once,
// at the end.
template <class Byte>
struct ByteCursor {
    std::span<Byte> bytes;
    std::ptrdiff_t position = 0;
    bool failed = false;

    std::ptrdiff_t Remaining() const { return std::ssize(bytes) - position; }

    // Cuts off the remaining bytes, so that later steps fail too.
    void Fail() {
        failed = true;
        bytes = bytes.first(position);
    }

    // The next `count` bytes, or nullptr if there are fewer.
    Byte* Take(std::ptrdiff_t count) {
        if (count < 0 || Remaining() < count) [[unlikely]] {
            Fail();
            return nullptr;
        }
        position += count;
        return bytes.data() + (position - count);
    }
};
using ReadCursor = ByteCursor<const std::uint8_t>;
using WriteCursor = ByteCursor<std::uint8_t>;

inline void PutBitsAt(std::uint8_t* b, std::uint32_t bits) {
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(bits >> 24),
                                  static_cast<std::uint8_t>(bits >> 16), static_cast<std::uint8_t>(bits >> 8),
                                  static_cast<std::uint8_t>(bits)};
    std::memcpy(b, bytes, sizeof bytes);
}

// Each of these moves the cursor past what it read. Those for single numbers are inline because a large track
// has tens of millions of them.
inline std::uint32_t ReadBits(ReadCursor& at) {
    const std::uint8_t* const b = at.Take(4);
    return b ? BigEndianAt(b) : 0;
}
inline std::uint8_t ReadU8(ReadCursor& at) {
    const std::uint8_t* const b = at.Take(1);
    return b ? *b : std::uint8_t{0};
}
inline std::int32_t ReadI32(ReadCursor& at) { return static_cast<std::int32_t>(ReadBits(at)); }
inline float ReadF32(ReadCursor& at) { return std::bit_cast<float>(ReadBits(at)); }
// The field's first byte is ignored.
inline PackedColor ReadColor(ReadCursor& at) { return static_cast<PackedColor>(ReadBits(at) & 0x00FFFFFFu); }
std::string ReadText(ReadCursor& at, std::int32_t length);
std::string ReadTag(ReadCursor& at);                 // four characters, upper-cased
void SkipBytes(ReadCursor& at, std::int32_t count);  // reserved bytes

// Each of these moves the cursor past what it wrote.
inline void WriteBits(WriteCursor& at, std::uint32_t bits) {
    if (std::uint8_t* const b = at.Take(4)) PutBitsAt(b, bits);
}
inline void WriteU8(WriteCursor& at, std::uint8_t value) {
    if (std::uint8_t* const b = at.Take(1)) *b = value;
}
inline void WriteI32(WriteCursor& at, std::int32_t value) {
    WriteBits(at, static_cast<std::uint32_t>(value));
}
inline void WriteF32(WriteCursor& at, float value) { WriteBits(at, std::bit_cast<std::uint32_t>(value)); }
// The field's first byte is written as zero.
inline void WriteColor(WriteCursor& at, PackedColor color) {
    WriteBits(at, static_cast<std::uint32_t>(color) & 0x00FFFFFFu);
}
void WriteText(WriteCursor& at, std::string_view text);  // without length or terminator
void WriteTag(WriteCursor& at, std::string_view tag);    // four characters, unchanged
void WriteZeros(WriteCursor& at, std::int32_t count);    // nothing for a count of 0 or less

}  // namespace boreforge
