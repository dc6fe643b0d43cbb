// What the tests of the core share.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/Bytes.h"
#include "tracing/mMath3D.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Starts each test from the program's first state, with messages caught and an empty folder of its own.
class CoreTest : public testing::Test {
  protected:
    CoreTest();
    ~CoreTest() override;
    std::string In(const std::string& name) const { return folder_ + "/" + name; }
    // What stands in the folder, in order, hidden files included.
    std::vector<std::string> Listing() const;
    // Each message so far: "(i) " or "(!) ", title, line break, text.
    static const std::vector<std::string>& Shown() { return shown_; }

  private:
    std::string folder_;
    static inline std::vector<std::string> shown_;
};

Bytes ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const Bytes& bytes);

// Stores a number big-endian.
void Put32(Bytes& bytes, std::size_t at, std::uint32_t value);

// A node of the path. `back` and `forth` lead from its position to ControlIn and ControlOut.
TrackBezierNode Node(const Vector3D& position, const Vector3D& back, const Vector3D& forth, float roll = 0,
                     bool rollFlag = false);
// Makes TrackFile a track of these nodes and as many segments; a 'T' in `tunnels` marks a tunnel.
void MakeTrack(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels = "");
// Makes the shape one of so many nodes that its objects are larger than any buffer.
void MakeLargeShape();
// Six nodes far from the origin: curves, slopes, rolls to both sides, unequal handles.
std::vector<TrackBezierNode> WindingCircuit();

// Bytes from a notation in which layouts can be written down by hand:
//   0A0B..     bytes                      'abc'       characters
//   @ABCD      a tag                      C0A0B0C     a colour field, its first byte left out
//   T          a true flag                z16         sixteen reserved bytes
//   S00000018  a size, of no use to a reader; also the length of a kind block
//   N00000002  a number that may be neither negative nor larger than the file: counts, lengths, children
//   M00000005  the length of a text that is empty when the length is negative
//   V01030000  the format version
using Disguise = std::map<char, std::string>;  // other digits for a letter; for @ lower case
Bytes Unfold(const std::string& notation, const Disguise& disguise = {});

// A track file with all kinds of chunks, laid out by hand from the format's tables; `order` of its 15 chunks.
Bytes KnownFile(const Disguise& disguise = {}, const std::vector<std::size_t>& order = {});
// Offsets in KnownFile of the fields that the notation marks with this letter.
std::vector<std::size_t> MarkedFields(char letter);

}  // namespace boreforge
