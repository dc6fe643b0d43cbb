// Runs the batch program as a user's script would.
#include "support/BatchTest.h"

#include <filesystem>
#include <limits>

#include "job/mMain.h"

namespace boreforge {

TEST_F(BatchTest, TheProgramMakesWhatTheJobMakes) {
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
    EXPECT_TRUE(TrackIsAsItWas());
    EXPECT_TRUE(std::filesystem::exists(In("ä.3ds")));
}

TEST_F(BatchTest, OptionsAreTakenInEveryUsualForm) {
    const struct {
        const char *one, *other;  // mean the same
    } cases[] = {{"--detail=HIGH --color '#0AFF00'", "--detail high --color 10,255,0"},
                 {"--dim 10 --dim 100", "--dim 100"},
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
            EXPECT_TRUE(Contains(Text("err"), saying));
            EXPECT_TRUE(TrackIsAsItWas());
            EXPECT_EQ(ReadBytes(In("s.zrbf")), shape);
        }
    }
};

TEST_F(FailingBatchTest, AFailureEndsWithOneAndItsReason) {
    WriteBytes(In("track.3ds"), track_);
    MakeTrack(WindingCircuit(), "------");
    ASSERT_TRUE(WriteTrackFile(In("plain.zrtrack")));
    ExpectFailures({{"t.zrtrack absent/o.3ds", "Can't Be Written"},
                    {"plain.zrtrack o.3ds --dry-run", "Track does not have any tunnels!"},
                    {"t.zrtrack track.3ds", "Error - That File Is a Track!"},
                    {"t.zrtrack o.3ds --track-out absent/u.zrtrack", "Can't Be Saved"}},
                   1);
    EXPECT_EQ(ReadBytes(In("track.3ds")), track_);
}

TEST_F(FailingBatchTest, AFileThatCantBeReadHasItsReasonInTheSecondLine) {
    const auto write = [this](const char* name, Bytes bytes, std::size_t length) {
        bytes.resize(length);
        WriteBytes(In(name), bytes);
    };
    const Bytes shape = ReadBytes(In("s.zrbf"));
    std::filesystem::create_directory(In("folder.zrtrack"));
    const std::size_t segments = std::string(track_.begin(), track_.end()).find("SEGM");
    write("shape.zrtrack", shape, shape.size());
    write("cut.zrtrack", track_, segments + 60);
    write("between.zrtrack", track_, segments + 2);
    Bytes damaged = track_;
    damaged[segments + 8] = 0xFF;  // of the number of its children
    write("damaged.zrtrack", damaged, damaged.size());
    write("cut.zrbf", shape, 100);
    write("head.zrbf", shape, 6);
    ExpectFailures({{"absent.zrtrack o.3ds", "Invalid Track File!\nabsent.zrtrack: There is no such file."},
                    {"s.zrbf o.3ds", "\ns.zrbf: Its name has the wrong extension."},
                    {"folder.zrtrack o.3ds", "\nfolder.zrtrack: It is not a regular file."},
                    {"shape.zrtrack o.3ds", "\nshape.zrtrack: It is not a track."},
                    {"cut.zrtrack o.3ds", "\ncut.zrtrack: It ends at byte 60 of chunk \"SEGM\"."},
                    {"between.zrtrack o.3ds", ", where another chunk is due."},
                    {"damaged.zrtrack o.3ds", ": It is damaged at byte 12 of chunk \"SEGM\"."},
                    {"t.zrtrack o.3ds --shape cut.zrbf", "Shape File!\ncut.zrbf: It ends at byte 100, which"},
                    {"t.zrtrack o.3ds --shape head.zrbf", "It ends at byte 6, within the number"},
                    {"t.zrtrack o.3ds --shape t.zrtrack", "It is not a tunnel shape."}},
                   1);
}

TEST_F(FailingBatchTest, WrongUsageEndsWithTwoAndWritesNothing) {
    WriteBytes(In("u.zrtrack"), track_);
    ExpectFailures({{"t.zrtrack", "OUTPUT is required"},
                    {"t.zrtrack u.zrtrack", "'u.zrtrack' doesn't end in .3ds"},
                    {"t.zrtrack s.zrbf --shape ./s.zrbf", "doesn't end in .3ds"},
                    {"t.zrtrack .3ds", "doesn't end in .3ds"},
                    {"t.zrtrack o.3ds --track-out u", "'u' doesn't end in .zrtrack"},
                    {"t.zrtrack o.3ds third", "not expected: third"},
                    {"t.zrtrack u.zrtrack a/t.zrtrack --output-folder .", "two tracks have the name 't'"},
                    {"t.zrtrack o.3ds --output-folder .", "'o.3ds' doesn't end in .zrtrack"},
                    {"t.zrtrack --output-folder . --track-out x.zrtrack", "excludes"},
                    {"t.zrtrack o.3ds --nonsense", "not expected: --nonsense"},
                    {"t.zrtrack o.3ds --dim 5x", "--dim: takes 0..100, not '5x'"},
                    {"t.zrtrack o.3ds --dim 101", "not '101'"},
                    {"t.zrtrack o.3ds --color 1,2", "--color: takes R,G,B|#rrggbb, not '1,2'"},
                    {"t.zrtrack o.3ds --color 1,2,256", "not '1,2,256'"},
                    {"t.zrtrack o.3ds --color '#12345'", "not '#12345'"},
                    {"t.zrtrack o.3ds --detail best", "extreme|high|normal|low|poor, not 'best'"},
                    {"t.zrtrack o.3ds --dim 5 --no-dim", "excludes"},
                    {"t.zrtrack o.3ds --shape s.zrbf --preset box", "excludes"}},
                   2);
    EXPECT_EQ(ReadBytes(In("u.zrtrack")), track_);
    EXPECT_FALSE(std::filesystem::exists(In("o.3ds")));
}

TEST_F(FailingBatchTest, WhatAFileNameHoldsCantControlTheTerminal) {
    ExpectFailures(
        {{"$(printf 'a\\033]0;b\\302\\233c\\377d\\342\\200\\256.zrtrack') o.3ds", "a?]0;b?c?d?.zrtrack"}}, 1);
}

TEST_F(BatchTest, SeveralTracksGoToTheOutputFolderAndOneThatFailsStopsNoOther) {
    std::filesystem::create_directory(In("made"));
    WriteBytes(In("bad.zrtrack"), {});
    WriteBytes(In("u.zrtrack"), track_);
    ASSERT_EQ(Run(kBatch + "t.zrtrack made/t.3ds --track-out made/t.zrtrack"), 0);
    const Bytes object = ReadBytes(In("made/t.3ds")), changed = ReadBytes(In("made/t.zrtrack"));
    EXPECT_EQ(Run(kBatch + "t.zrtrack bad.zrtrack u.zrtrack --output-folder made"), 1);
    EXPECT_TRUE(Contains(Text("err"), "Failed: bad.zrtrack"));
    EXPECT_EQ(ReadBytes(In("made/t.zrtrack")), changed);
    EXPECT_EQ(ReadBytes(In("made/u.3ds")), object);
    EXPECT_FALSE(std::filesystem::exists(In("made/bad.3ds")));
    EXPECT_TRUE(TrackIsAsItWas());
}

TEST_F(FailingBatchTest, OutputsThatAreInputsOrOneFileAreWrongUsage) {
    WriteBytes(In("u.zrtrack"), track_);
    std::filesystem::create_directory(In("d"));
    std::filesystem::create_symlink("../t.zrtrack", In("d/u.3ds"));
    std::filesystem::create_symlink("u.zrtrack", In("link.zrtrack"));
    ExpectFailures(
        {{"t.zrtrack --output-folder .", "'./t.zrtrack' would replace 't.zrtrack'"},
         {"t.zrtrack u.zrtrack --output-folder d", "'d/u.3ds' would replace 't.zrtrack'"},
         {"t.zrtrack o.3ds --track-out d/../t.zrtrack", "'d/../t.zrtrack' would replace 't.zrtrack'"},
         {"link.zrtrack o.3ds --track-out u.zrtrack", "'u.zrtrack' would replace 'link.zrtrack'"},
         {"t.zrtrack a/T.zrtrack --output-folder made", "'made/t.3ds' and 'made/T.3ds' are the same file"}},
        2);
    EXPECT_EQ(ReadBytes(In("u.zrtrack")), track_);
    EXPECT_EQ(Listing(), (std::vector<std::string>{"d", "err", "link.zrtrack", "out", "s.zrbf", "t.zrtrack",
                                                   "u.zrtrack"}));
}

TEST_F(FailingBatchTest, MessagesNeverGoIntoAFileWhenAStandardStreamIsClosed) {
    const Bytes shape = ReadBytes(In("s.zrbf"));
    for (const char* closed : {"0<&-", "1>&-", "2>&-", "0<&- 1>&- 2>&-"}) {
        const std::string command = "(" + kBatch + "t.zrtrack absent/o.3ds " + closed + ")";
        EXPECT_EQ(Run(command), 1) << closed;
        EXPECT_TRUE(TrackIsAsItWas()) << closed;
    }
}

TEST_F(FailingBatchTest, OutputThatCantBeWrittenIsAFailure) {
    for (const char* arguments : {"--help", "--version", "t.zrtrack o.3ds --dry-run"}) {
        EXPECT_EQ(Run("(" + kBatch + arguments + " >/dev/full)"), 1) << arguments;
        EXPECT_TRUE(Contains(Text("err"), "The Output Can't Be Written!"));
    }
}

TEST_F(BatchTest, WarnsOfWhatASavedTrackLoses) {
    Bytes more = track_;
    more.resize(more.size() + 3);
    WriteBytes(In("more.zrtrack"), more);
    EXPECT_EQ(Run(kBatch + "more.zrtrack o.3ds --dry-run"), 0);
    EXPECT_EQ(Text("err"),
              "Warning: more.zrtrack has 3 bytes after the last chunk; the saved track won't have "
              "them.\n");
    EXPECT_EQ(Run(kBatch + "more.zrtrack o.3ds --no-track"), 0);
    EXPECT_EQ(Text("err"), "");
}

TEST_F(BatchTest, ANewObjectIsAsPrivateAsItsTrack) {
    std::filesystem::permissions(In("t.zrtrack"), std::filesystem::perms(0600));
    for (const std::string options : {"", " --no-track"}) {
        std::filesystem::remove(In("o.3ds"));
        ASSERT_EQ(Run("umask 022 && " + kBatch + "t.zrtrack o.3ds --keep-tunnel-flags" + options), 0)
            << Text("err");
        EXPECT_EQ(std::filesystem::status(In("o.3ds")).permissions(), std::filesystem::perms(0600))
            << options;
    }
}

TEST_F(BatchTest, NoTrackWritesTheObjectAloneAndADryRunNothing) {
    ASSERT_EQ(Run(kBatch + "t.zrtrack o.3ds --track-out new.zrtrack"), 0);
    const Bytes object = ReadBytes(In("o.3ds"));
    const std::string summary = Text("out");
    std::filesystem::remove(In("o.3ds"));
    EXPECT_EQ(Run(kBatch + "t.zrtrack o.3ds --dry-run"), 0);
    EXPECT_EQ(Text("out"), summary.substr(0, summary.rfind(" in ")) + " for o.3ds\n");
    EXPECT_FALSE(std::filesystem::exists(In("o.3ds")));
    // A name that can't be put into a track doesn't matter here.
    EXPECT_EQ(Run(kBatch + "t.zrtrack 東.3ds --no-track"), 0) << Text("err");
    EXPECT_EQ(ReadBytes(In("東.3ds")), object);
    EXPECT_TRUE(TrackIsAsItWas());
}

TEST_F(BatchTest, WarnsOfShapesThatAreProbablyWrong) {
    using Nodes = std::vector<Vector3D>;
    const Nodes inside = {{2, -1, 0}, {2, 3, 0}, {-2, 3, 0}, {-2, -1, 0}};
    const Nodes outside = {{3, -2, 0}, {3, 4, 0}, {-3, 4, 0}, {-3, -2, 0}};
    const Nodes large = {{9, -9, 0}, {9, 0, 0}, {9, 9, 0}, {-9, 9, 0}, {-9, 0, 0}, {-9, -9, 0}};
    const std::string crossed = "The inside contour crosses itself.\n",
                      crossing = "The contours cross each other.\n";
    const float infinity = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        Nodes inside, outside;
        std::string warning;
    } cases[] = {
        {"right", inside, outside, ""},
        {"no wall between the contours", inside, inside, ""},
        {"empty", {}, {}, "The shape is empty, so the object has no faces.\n"},
        {"a line", {{0, 0, 0}, {1, 1, 0}}, {{0, 2, 0}, {1, 3, 0}}, "The shape has fewer than three nodes.\n"},
        {"clockwise", Nodes(inside.rbegin(), inside.rend()), outside,
         "The inside contour is drawn clockwise, so its walls face the wrong way.\n"},
        {"crossed edges",
         {inside[0], inside[2], {-1, 5, 0}, inside[3], inside[3], inside[3]},
         large,
         crossed},
        {"crossed in a common node",
         {{-1, -1, 0}, {0, 0, 0}, {1, 1, 0}, {1, -1, 0}, {0, 0, 0}, {-1, 1, 0}},
         large,
         crossed},
        {"a node outside", {inside[0], {4, 1, 0}, inside[1], inside[2]}, outside, crossing},
        {"crossing in a node",
         {inside[0], {4, 0, 0}, {2, 4, 0}, {-2, 0, 0}},
         {{3, -2, 0}, {3, 2, 0}, {-3, 4, 0}, {-3, -2, 0}},
         crossing},
        {"a spike that touches the tip of a notch",
         {{2, -1, 0}, {2, 1, 0}, {3, 1, 0}, {2.5f, 1, 0}, {2, 3, 0}, {-2, 3, 0}, {-2, -1, 0}},
         {{3, -2, 0}, {3, 1, 0}, {5, -2, 0}, {5, 4, 0}, {1, 4, 0}, {-3, 4, 0}, {-3, -2, 0}},
         ""},
        {"a node on the other contour", {{3, 1, 0}, inside[1], inside[2], inside[3]}, outside, ""},
        {"infinite",
         {inside[0], inside[1], {infinity, 0, 0}, inside[3]},
         outside,
         "The shape has coordinates that are not finite; most programs will refuse the object.\n"}};
    for (const auto& [name, insideNodes, outsideNodes, warning] : cases) {
        SCOPED_TRACE(name);
        TunnelShape.InsideNodes = insideNodes;
        TunnelShape.OutsideNodes = outsideNodes;
        ASSERT_TRUE(SaveTunnelShape(In("w.zrbf")));
        EXPECT_EQ(Run(kBatch + "t.zrtrack o.3ds --dry-run --shape w.zrbf"), 0);
        EXPECT_EQ(Text("err"), warning.empty() ? "" : "Warning: " + warning);
    }
}

}  // namespace boreforge
