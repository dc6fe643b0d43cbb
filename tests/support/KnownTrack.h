// A track file with all kinds of chunks, laid out by hand from the tables of the format.
#pragma once

#include <vector>

#include "base/Bytes.h"

namespace boreforge {

struct KnownTrack {
    Bytes bytes;
    std::vector<std::size_t> chunks;       // where each chunk starts
    std::vector<std::size_t> sizes;        // fields that a reader ignores
    std::vector<std::size_t> counts;       // fields that must be 0 or more
    std::vector<std::size_t> textLengths;  // fields that may be negative: then the text is empty
};

KnownTrack MakeKnownTrack();
inline Bytes KnownFile() { return MakeKnownTrack().bytes; }

}  // namespace boreforge
