// Runs the batch program as a user's script would.
#include "support/BatchTest.h"

#include <filesystem>

#include "job/mMain.h"

namespace boreforge {

TEST_F(BatchTest, MakesWhatTheJobMakes) {
    const std::string look = " --color 10,200,90 --transparency 7 --detail poor --double-sided --dim 30";
    ASSERT_EQ(Run("LC_ALL=de_DE.UTF-8 " + kBatch + "t.zrtrack o.3ds --track-out ./new --shape s.zrbf" + look),
              0);
    EXPECT_TRUE(TrackIsAsItWas());
    EXPECT_TRUE(Text("out").starts_with("6 segments, 3 tunnel segments: 10 objects, ")) << Text("out");
    ASSERT_TRUE(OpenTrack(In("t.zrtrack")));
    TunnelChoices choices{PackColor(10, 200, 90), 7, 4, true};
    choices.DimPercent = 30;
    std::filesystem::create_directory(In("by-hand"));
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, In("by-hand/o.3ds"))));
    EXPECT_EQ(ReadBytes(In("o.3ds")), ReadBytes(In("by-hand/o.3ds")));
    EXPECT_EQ(ReadBytes(In("new.zrtrack")), ReadBytes(In("t.zrtrack")));
    WriteBytes(In("t.zrtrack"), track_);
    ASSERT_EQ(Run(kBatch + "t.zrtrack ä.3ds --keep-tunnel-flags --no-dim --no-place"), 0) << Text("err");
    EXPECT_TRUE(TrackIsAsItWas() && std::filesystem::exists(In("ä.3ds")));
}

TEST_F(BatchTest, FailuresEndWithOneAndWrongUsageWithTwo) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"s.zrbf o.3ds", 1, "Invalid Track File"},
        {"t.zrtrack o.3ds --shape t.zrtrack", 1, "Invalid Tunnel Shape File"},
        {"t.zrtrack absent/o.3ds", 1, "Can't Be Written"},
        {"t.zrtrack ./t.zrtrack --track-out u", 1, "Would Replace"},
        {"t.zrtrack s.zrbf --shape ./s.zrbf", 1, "Would Replace"},
        {"t.zrtrack u.zrtrack --track-out u", 1, "Would Replace"},
        {"t.zrtrack o.3ds --track-out absent/u", 1, "Can't Be Saved"},
        {"t.zrtrack", 2, "Usage:"},
        {"t.zrtrack o.3ds --nonsense", 2, "no option '--nonsense'"},
        {"t.zrtrack o.3ds --dim 5x", 2, "'5x' is no value"},
        {"t.zrtrack o.3ds --dim 5 --no-dim", 2, "contradicts"},
        {"t.zrtrack o.3ds --detail Extreme", 2, "no value"}};
    for (const auto& [arguments, status, saying] : cases) {
        EXPECT_EQ(Run(kBatch + arguments), status) << arguments;
        EXPECT_NE(Text("err").find(saying), std::string::npos) << arguments << "\n" << Text("err");
        EXPECT_TRUE(TrackIsAsItWas() && LoadTunnelShape(In("s.zrbf"))) << arguments;
        EXPECT_FALSE(std::filesystem::remove(In("o.3ds")) && status == 2) << arguments;
    }
}

TEST_F(BatchTest, TheSamplesAreWhatTheirMakerMakes) {
    ASSERT_EQ(Run("'" PROGRAMS "/make_samples' made"), 0) << Text("err");
    for (const std::string folder : {"elements", "tracks"})
        EXPECT_EQ(Run("diff -rq -x README* '" PROJECT "/" + folder + "' made/" + folder), 0) << Text("out");
}

}  // namespace boreforge
