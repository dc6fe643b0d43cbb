// A track file with all kinds of chunks, laid out by hand from the tables of the format.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Bytes.h"

namespace boreforge {

// What a file may have differently and still be the same track. The defaults are what a save writes.
struct KnownTrackStyle {
    bool lowerCaseTags = false;
    std::optional<std::uint32_t> size = {};  // in place of every chunk's and block's own
    std::uint32_t version = 0x01030000;
    std::uint8_t reserved = 0;  // each reserved byte
    std::uint8_t trueFlag = 0xFF;
    std::uint8_t colorTop = 0;  // the first of a colour's four bytes
};

struct KnownTrack {
    Bytes bytes;
    std::vector<std::size_t> chunks;       // where each chunk starts
    std::vector<std::size_t> sizes;        // fields that a reader ignores
    std::vector<std::size_t> counts;       // fields that must be 0 or more
    std::vector<std::size_t> textLengths;  // fields that may be negative: then the text is empty

    // The chunks with these tags, in this order.
    Bytes InOrder(const std::vector<std::string>& tags) const;
};

KnownTrack MakeKnownTrack(const KnownTrackStyle& style = {});
inline Bytes KnownFile(const KnownTrackStyle& style = {}) { return MakeKnownTrack(style).bytes; }

}  // namespace boreforge
