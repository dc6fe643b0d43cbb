// The bytes of a file, and 32-bit numbers in them: big-endian in a track, little-endian in every other file.
#pragma once

#include <cstdint>
#include <vector>

namespace boreforge {

using Bytes = std::vector<std::uint8_t>;

inline std::uint32_t BigEndianAt(const std::uint8_t* b) {
    return std::uint32_t{b[0]} << 24 | std::uint32_t{b[1]} << 16 | std::uint32_t{b[2]} << 8 | b[3];
}
inline std::uint32_t LittleEndianAt(const std::uint8_t* b) {
    return b[0] | std::uint32_t{b[1]} << 8 | std::uint32_t{b[2]} << 16 | std::uint32_t{b[3]} << 24;
}

}  // namespace boreforge
