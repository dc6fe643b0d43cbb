// What the tests of the core share.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Bytes.h"
#include "base/Outcome.h"
#include "tracing/mMath3D.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Each test starts with the program's initial state and an empty folder of its own.
class CoreTest : public testing::Test {
  protected:
    CoreTest();
    ~CoreTest() override;
    std::string In(const std::string& name) const { return folder_ + "/" + name; }
    // The names in the folder in alphabetical order, hidden files included.
    std::vector<std::string> Listing() const;

  private:
    std::string folder_;
};

// The words of a failure; empty if it worked.
inline std::string TextOf(const Outcome& outcome) { return outcome ? "" : outcome.Why().Text(); }
// Whether a text contains another, with both in the message if not.
testing::AssertionResult Contains(const std::string& text, const std::string& part);

Bytes ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const Bytes& bytes);

// A track with several records of each kind, each kind of chunk and a different value in each field.
inline constexpr char kFullTrack[] = PROJECT "/tests/golden/carried/track.zrtrack";

// Stores a number big-endian.
void Put32(Bytes& bytes, std::size_t at, std::uint32_t value);

// A node of the path. `back` and `forth` are the ways from its position to ControlIn and ControlOut.
TrackBezierNode Node(const Vector3D& position, const Vector3D& back, const Vector3D& forth, float roll = 0,
                     bool rollFlag = false);
// Makes TrackFile a track of these nodes and as many segments; a 'T' in `tunnels` marks a tunnel.
void MakeTrack(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels = "");
// Makes a shape with so many nodes that its objects are larger than any buffer.
void MakeLargeShape();
// Six nodes far from the origin: curves, slopes, rolls to both sides, unequal handles.
std::vector<TrackBezierNode> WindingCircuit();

// The bytes of pairs of hexadecimal digits; what is between single quotes is text. Spaces only separate.
Bytes FromHex(const std::string& digits);

}  // namespace boreforge
