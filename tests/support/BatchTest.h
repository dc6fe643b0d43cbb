// What the tests of the batch program share.
#pragma once

#include <string>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "support/CommandTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

inline const std::string kBatch = "'" PROGRAMS "/boreforge-batch' ";

// A folder with a track t.zrtrack, which has tunnels, and a shape s.zrbf.
class BatchTest : public CommandTest {
  protected:
    BatchTest() {
        MakeTrack(WindingCircuit(), "-TT-T-");
        TrackFile.DefaultColor1 = 0xFF0000;
        MakePresetShape(kPresetRounded);
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")));
        EXPECT_TRUE(SaveTunnelShape(In("s.zrbf")));
        track_ = ReadBytes(In("t.zrtrack"));
    }
    bool TrackIsAsItWas() const { return ReadBytes(In("t.zrtrack")) == track_; }
    Bytes track_;
};

}  // namespace boreforge
