#include <filesystem>

#include "job/mMain.h"
#include "support/CoreTest.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

using JobLinksTest = CoreTest;

TEST_F(JobLinksTest, AnObjectThatLeadsToTheTrackIsRefused) {
    const std::string track = In("t.zrtrack"), object = In("o.3ds");
    for (const std::string& saved : {track, In("new.zrtrack")}) {
        SCOPED_TRACE(saved);
        MakeTrack(WindingCircuit(), "-TT---");
        EXPECT_TRUE(WriteTrackFile(track));
        const Bytes before = ReadBytes(track);
        EXPECT_TRUE(OpenTrack(track));
        TrackFilePath = saved;
        std::filesystem::remove(object);
        std::filesystem::create_symlink(saved, object);
        EXPECT_FALSE(RunTunnelJob(DeriveJobSettings({}, object)));
        ASSERT_FALSE(Shown().empty());
        EXPECT_NE(Shown().back().find("Would Replace the Track"), std::string::npos);
        EXPECT_EQ(ReadBytes(track), before);
    }
}

}  // namespace boreforge
