// A track of all chunk kinds whose file was laid out by hand, from the format's tables.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/Bytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// The chunks of the file in its order, in this notation:
//   @ABCD      a tag                      'abc'       the characters of a text
//   0A0B..     bytes                      C0A0B0C     a colour field of four bytes, the first of no meaning
//   T          a true flag                z16         sixteen reserved bytes
//   S00000018  a size, of no use to a reader; also the length of a kind block
//   N00000002  a number that may be neither negative nor larger than the file: counts, lengths, children
//   M00000005  the length of a text that is empty when the length is negative
//   V01030000  the version
extern const std::array<std::string_view, 15> kKnownChunks;

// What a reader has to put up with, in the places of no meaning.
struct Disguise {
    bool lowerTags = false;
    std::string_view version = "01030000";
    std::string_view size;  // empty: the size itself
    std::string_view reserved = "00";
    std::string_view truth = "FF";
    std::string_view colorByte = "00";
};

// The bytes of a chunk in the notation above.
Bytes Unfold(std::string_view text, const Disguise& disguise = {});
// The known chunks in the order of `order`, indices into kKnownChunks.
Bytes UnfoldFile(const std::vector<std::size_t>& order, const Disguise& disguise = {});
Bytes KnownFile(const Disguise& disguise = {});

// Offsets in KnownFile of the fields that the notation marks with this letter.
std::vector<std::size_t> MarkedFields(char letter);

// The same track in memory, sizes and child counts left out.
TrackDocument KnownDocument();

}  // namespace boreforge
