// What every test of the core starts from: module state as after the program's start, the messages caught
// instead of shown, and an empty folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Bytes.h"
#include "tracing/mMath3D.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

class CoreTest : public testing::Test {
  protected:
    CoreTest();
    ~CoreTest() override;

    // The path of `name` in the test's folder.
    std::string In(const std::string& name) const { return folder_ + "/" + name; }
    // What stands in the test's folder, in order, hidden files included.
    std::vector<std::string> Listing() const;
    // The texts that were shown so far, each behind its title and a line break.
    static const std::vector<std::string>& Shown();

  private:
    std::string folder_;
};

Bytes ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const Bytes& bytes);

// A node of the path. `back` and `forth` lead from its position to ControlIn and ControlOut.
TrackBezierNode Node(const Vector3D& position, const Vector3D& back, const Vector3D& forth, float roll = 0,
                     bool rollFlag = false);

// Makes TrackFile a track of these nodes with one segment for each; a 'T' in `tunnels` marks a tunnel.
void MakeTrack(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels = "");

// A closed track of six nodes far from the origin: curves, slopes, a roll to each side, unequal handles.
std::vector<TrackBezierNode> WindingCircuit();

}  // namespace boreforge
