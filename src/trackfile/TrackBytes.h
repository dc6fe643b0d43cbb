// The byte-level encodings of a .zrtrack file: big-endian, unaligned, texts one byte a character.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/Values.h"

namespace boreforge {

// The buffer through which a whole track passes, on a load and on a save.
extern Bytes TrackBytes;

// A place in bytes that are being read. A read that would cross the end yields zero, moves nothing and marks
// the cursor as failed for good; so does a negative length. So a reader needs no test of its own until the
// end.
struct ReadCursor {
    std::span<const std::uint8_t> bytes;
    std::size_t position = 0;
    bool failed = false;

    std::size_t Remaining() const { return bytes.size() - position; }
};

// Each of these moves the cursor behind what it read.
std::uint8_t ReadU8(ReadCursor& at);
std::int32_t ReadI32(ReadCursor& at);
float ReadF32(ReadCursor& at);
PackedColor ReadColor(ReadCursor& at);                      // the field's first byte is ignored
std::string ReadText(ReadCursor& at, std::int32_t length);  // length 0 gives the empty text
std::string ReadTag(ReadCursor& at);                        // four characters, upper-cased
void SkipBytes(ReadCursor& at, std::int32_t count);         // reserved bytes

// Each of these appends to the bytes, which are thus always exactly as long as what was written.
void WriteU8(Bytes& bytes, std::uint8_t value);
void WriteI32(Bytes& bytes, std::int32_t value);
void WriteF32(Bytes& bytes, float value);
void WriteColor(Bytes& bytes, PackedColor color);     // the field's first byte is written as zero
void WriteText(Bytes& bytes, std::string_view text);  // neither length nor terminator
void WriteTag(Bytes& bytes, std::string_view tag);    // four characters, as they are
void WriteZeros(Bytes& bytes, std::int32_t count);    // nothing for a count of 0 or below

}  // namespace boreforge
