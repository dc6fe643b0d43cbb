// Runs the batch program as a user's script would.
#include "support/BatchTest.h"

#include <filesystem>

#include "job/mMain.h"

namespace boreforge {

TEST_F(BatchTest, MakesWhatTheJobMakes) {
    const std::string look = " --color 10,200,90 --transparency 7 --detail poor --double-sided --dim 30";
    ASSERT_EQ(Run("LC_ALL=de_DE.UTF-8 " + kBatch +
                  "t.zrtrack o.3ds --track-out ./new.zrtrack --shape s.zrbf" + look),
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

TEST_F(BatchTest, OptionsAreTakenInEveryUsualForm) {
    const struct {
        const char *one, *other;  // mean the same
    } cases[] = {{"--detail=HIGH --color '#0AC85a'", "--detail high --color 10,200,90"},
                 {"--dim 10 --dim 30", "--dim 30"},
                 {"--preset=Rounded", "--preset rounded"},
                 {"--no-dim --no-dim", "--no-dim"}};
    for (const auto& [one, other] : cases) {
        SCOPED_TRACE(one);
        EXPECT_EQ(Run(kBatch + one + " --track-out 1.zrtrack -- t.zrtrack o.3ds && mv o.3ds 1.3ds"), 0)
            << Text("err");
        EXPECT_EQ(Run(kBatch + other + " --track-out 2.ZRTRACK -- t.zrtrack o.3ds && mv o.3ds 2.3ds"), 0)
            << Text("err");
        EXPECT_EQ(ReadBytes(In("1.3ds")), ReadBytes(In("2.3ds")));
        EXPECT_EQ(ReadBytes(In("1.zrtrack")), ReadBytes(In("2.ZRTRACK")));
    }
}

class FailingBatchTest : public BatchTest {
  protected:
    struct Case {
        const char *arguments, *saying;
    };
    template <std::size_t Count>
    void ExpectFailures(const Case (&cases)[Count], int status) {
        const Bytes shape = ReadBytes(In("s.zrbf"));
        for (const auto& [arguments, saying] : cases) {
            SCOPED_TRACE(arguments);
            EXPECT_EQ(Run(kBatch + arguments), status);
            EXPECT_NE(Text("err").find(saying), std::string::npos) << Text("err");
            EXPECT_TRUE(TrackIsAsItWas());
            EXPECT_EQ(ReadBytes(In("s.zrbf")), shape);
        }
    }
};

TEST_F(FailingBatchTest, AFailureEndsWithOneAndItsReason) {
    WriteBytes(In("track.3ds"), track_);
    ExpectFailures({{"s.zrbf o.3ds", "Invalid Track File"},
                    {"t.zrtrack o.3ds --shape t.zrtrack", "Invalid Tunnel Shape File"},
                    {"t.zrtrack absent/o.3ds", "Can't Be Written"},
                    {"t.zrtrack track.3ds", "Error - That File Is a Track!"},
                    {"t.zrtrack o.3ds --track-out absent/u.zrtrack", "Can't Be Saved"}},
                   1);
    EXPECT_EQ(ReadBytes(In("track.3ds")), track_);
}

TEST_F(FailingBatchTest, WrongUsageEndsWithTwoAndWritesNothing) {
    WriteBytes(In("u.zrtrack"), track_);
    ExpectFailures({{"t.zrtrack", "OUTPUT is required"},
                    {"t.zrtrack u.zrtrack", "'u.zrtrack' doesn't end in .3ds"},
                    {"t.zrtrack s.zrbf --shape ./s.zrbf", "doesn't end in .3ds"},
                    {"t.zrtrack .3ds", "doesn't end in .3ds"},
                    {"t.zrtrack o.3ds --track-out u", "'u' doesn't end in .zrtrack"},
                    {"t.zrtrack o.3ds third", "not expected: third"},
                    {"t.zrtrack o.3ds --nonsense", "not expected: --nonsense"},
                    {"t.zrtrack o.3ds --dim 5x", "--dim: takes 0..100, not '5x'"},
                    {"t.zrtrack o.3ds --color 1,2", "--color: takes R,G,B|#rrggbb, not '1,2'"},
                    {"t.zrtrack o.3ds --color '#12345'", "not '#12345'"},
                    {"t.zrtrack o.3ds --detail best", "extreme|high|normal|low|poor, not 'best'"},
                    {"t.zrtrack o.3ds --dim 5 --no-dim", "excludes"},
                    {"t.zrtrack o.3ds --shape s.zrbf --preset box", "excludes"}},
                   2);
    EXPECT_EQ(ReadBytes(In("u.zrtrack")), track_);
    EXPECT_FALSE(std::filesystem::exists(In("o.3ds")));
}

TEST_F(FailingBatchTest, WhatAFileNameHoldsCantControlTheTerminal) {
    ExpectFailures({{"$(printf 'a\\033]0;b\\302\\233c\\377.zrtrack') o.3ds", "a?]0;b?c?.zrtrack"}}, 1);
}

TEST_F(BatchTest, TheSamplesAreWhatTheirMakerMakes) {
    ASSERT_EQ(Run("'" PROGRAMS "/make_samples' made"), 0) << Text("err");
    for (const std::string folder : {"elements", "tracks"})
        EXPECT_EQ(Run("diff -rq -x README* '" PROJECT "/" + folder + "' made/" + folder), 0) << Text("out");
}

}  // namespace boreforge
