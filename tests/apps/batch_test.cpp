// Runs the batch program as a user's script would.
#include <filesystem>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "job/mMain.h"
#include "support/CommandTest.h"
#include "support/Sanitizers.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

const std::string kBatch = "'" PROGRAMS "/boreforge-batch' ";

// A folder with a track t.zrtrack, which has tunnels, its copy u.zrtrack and a shape s.zrbf.
class BatchTest : public CommandTest {
  protected:
    BatchTest() {
        MakeTrack(WindingCircuit(), "-TT-T-");
        TrackFile.DefaultColor1 = 0xFF0000;
        MakePresetShape(kPresetRounded);
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")));
        EXPECT_TRUE(SaveTunnelShape(In("s.zrbf")));
        track = ReadBytes(In("t.zrtrack"));
        shape = ReadBytes(In("s.zrbf"));
        WriteBytes(In("u.zrtrack"), track);
    }
    int Batch(const std::string& arguments) { return Run(kBatch + arguments); }
    // The program refuses these arguments with these words and changes no input.
    struct Case {
        std::string arguments, saying;
    };
    void ExpectRefusals(const std::vector<Case>& cases, int status) {
        for (const auto& [arguments, saying] : cases) {
            SCOPED_TRACE(arguments);
            EXPECT_EQ(Batch(arguments), status);
            EXPECT_TRUE(Contains(Text("err"), saying));
            EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
            EXPECT_EQ(ReadBytes(In("u.zrtrack")), track);
            EXPECT_EQ(ReadBytes(In("s.zrbf")), shape);
            EXPECT_FALSE(fs::exists(In("o.3ds")));
        }
    }
    Bytes track, shape;
};

TEST_F(BatchTest, TheProgramMakesWhatTheJobMakes) {
    ASSERT_EQ(Run("LC_ALL=de_DE.UTF-8 " + kBatch +
                  "t.zrtrack o.3ds --track-out=new.ZRTRACK --shape s.zrbf --color '#0AC85A' --transparency 7 "
                  "--detail POOR --double-sided --dim 3 --dim 30"),
              0);
    EXPECT_TRUE(Text("out").starts_with("6 segments, 3 tunnel segments: 10 objects, ")) << Text("out");
    ASSERT_TRUE(OpenTrack(In("t.zrtrack")));
    TunnelChoices choices{PackColor(10, 200, 90), 7, 4, true};
    choices.DimPercent = 30;
    fs::create_directory(In("by-hand"));
    ASSERT_TRUE(RunTunnelJob(DeriveJobSettings(choices, In("by-hand/o.3ds"))));
    EXPECT_EQ(ReadBytes(In("o.3ds")), ReadBytes(In("by-hand/o.3ds")));
    EXPECT_EQ(ReadBytes(In("new.ZRTRACK")), ReadBytes(In("t.zrtrack")));
}

TEST_F(BatchTest, WithoutAnyModificationTheTrackIsSavedAsItWas) {
    EXPECT_EQ(Batch("t.zrtrack ä.3ds --keep-tunnel-flags --no-dim --no-place"), 0);
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
    EXPECT_TRUE(fs::exists(In("ä.3ds")));
}

TEST_F(BatchTest, NoTrackWritesTheObjectAloneAndADryRunNothing) {
    ASSERT_EQ(Batch("t.zrtrack o.3ds --track-out new.zrtrack"), 0);
    const std::string summary = Text("out");
    EXPECT_EQ(Batch("t.zrtrack dry.3ds --dry-run"), 0);
    EXPECT_EQ(Text("out"), summary.substr(0, summary.rfind(" in ")) + " for dry.3ds\n");
    EXPECT_FALSE(fs::exists(In("dry.3ds")));
    EXPECT_EQ(Batch("t.zrtrack 東.3ds --no-track"), 0) << "a name that a track can't hold";
    EXPECT_EQ(ReadBytes(In("東.3ds")), ReadBytes(In("o.3ds")));
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
}

TEST_F(BatchTest, SeveralTracksGoToTheOutputFolderAndOneThatFailsStopsNoOther) {
    fs::create_directory(In("d"));
    WriteBytes(In("bad.zrtrack"), {});
    ASSERT_EQ(Batch("t.zrtrack d/t.3ds --track-out d/t.zrtrack"), 0);
    const Bytes object = ReadBytes(In("d/t.3ds")), changed = ReadBytes(In("d/t.zrtrack"));
    EXPECT_EQ(Batch("t.zrtrack bad.zrtrack u.zrtrack --output-folder d"), 1);
    EXPECT_TRUE(Contains(Text("err"), "Failed: bad.zrtrack"));
    EXPECT_EQ(ReadBytes(In("d/t.zrtrack")), changed);
    EXPECT_EQ(ReadBytes(In("d/u.3ds")), object);
    EXPECT_FALSE(fs::exists(In("d/bad.3ds")));
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
}

TEST_F(BatchTest, AnOutputFolderWithoutTracksGetsTheObjectsAlone) {
    fs::create_directory(In("d"));
    EXPECT_EQ(Batch("t.zrtrack u.zrtrack --output-folder d --no-track"), 0);
    EXPECT_TRUE(fs::exists(In("d/t.3ds")));
    EXPECT_TRUE(fs::exists(In("d/u.3ds")));
    EXPECT_FALSE(fs::exists(In("d/t.zrtrack")));
}

TEST_F(BatchTest, AFailureEndsWithOneAndItsReason) {
    WriteBytes(In("track.3ds"), track);
    MakeTrack(WindingCircuit(), "------");
    ASSERT_TRUE(WriteTrackFile(In("plain.zrtrack")));
    ExpectRefusals({{"t.zrtrack absent/o.3ds", "Can't Be Written"},
                    {"plain.zrtrack o.3ds --dry-run", "Track does not have any tunnels!"},
                    {"t.zrtrack track.3ds", "Error - That File Is a Track!"},
                    {"t.zrtrack o.3ds --track-out absent/u.zrtrack", "Can't Be Saved"}},
                   1);
    EXPECT_EQ(ReadBytes(In("track.3ds")), track);
}

TEST_F(BatchTest, AFileThatCantBeReadHasItsReasonInTheSecondLine) {
    const auto segments = std::string(track.begin(), track.end()).find("SEGM");
    const auto writeStart = [this](const char* name, const Bytes& whole, std::size_t length) {
        WriteBytes(In(name), {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
    };
    Bytes damaged = track;
    damaged[segments + 8] = 0xFF;  // of the number of its children
    WriteBytes(In("damaged.zrtrack"), damaged);
    WriteBytes(In("shape.zrtrack"), shape);
    writeStart("cut.zrtrack", track, segments + 60);
    writeStart("between.zrtrack", track, segments + 2);
    writeStart("cut.zrbf", shape, 100);
    writeStart("head.zrbf", shape, 6);
    ExpectRefusals({{"absent.zrtrack o.3ds", "Invalid Track File!\nabsent.zrtrack: There is no such file."},
                    {"s.zrbf o.3ds", "\ns.zrbf: Its name has the wrong extension."},
                    {"shape.zrtrack o.3ds", "\nshape.zrtrack: It is not a track."},
                    {"cut.zrtrack o.3ds", "\ncut.zrtrack: It ends at byte 60 of chunk \"SEGM\"."},
                    {"between.zrtrack o.3ds", ", where another chunk is due."},
                    {"damaged.zrtrack o.3ds", ": It is damaged at byte 12 of chunk \"SEGM\"."},
                    {"$(printf 'a\\033]\\377.zrtrack') o.3ds", "a?]?.zrtrack"},  // no terminal's commands
                    {"t.zrtrack o.3ds --shape cut.zrbf", "Shape File!\ncut.zrbf: It ends at byte 100, which"},
                    {"t.zrtrack o.3ds --shape head.zrbf", "It ends at byte 6, within the number"},
                    {"t.zrtrack o.3ds --shape t.zrtrack", "It is not a tunnel shape."}},
                   1);
}

TEST_F(BatchTest, WrongUsageEndsWithTwo) {
    ExpectRefusals({{"t.zrtrack", "OUTPUT is required"},
                    {"t.zrtrack u.zrtrack", "'u.zrtrack' doesn't end in .3ds"},
                    {"t.zrtrack .3ds", "doesn't end in .3ds"},
                    {"t.zrtrack o.3ds --track-out u", "'u' doesn't end in .zrtrack"},
                    {"t.zrtrack o.3ds third", "not expected: third"},
                    {"t.zrtrack u.zrtrack a/t.zrtrack --output-folder .", "two tracks have the name 't'"},
                    {"t.zrtrack o.3ds --output-folder .", "'o.3ds' doesn't end in .zrtrack"},
                    {"t.zrtrack --output-folder . --track-out x.zrtrack", "excludes"},
                    {"t.zrtrack o.3ds --no-track --track-out x.zrtrack", "excludes"},
                    {"t.zrtrack o.3ds --dim 5 --no-dim", "excludes"},
                    {"t.zrtrack o.3ds --shape s.zrbf --preset box", "excludes"},
                    {"t.zrtrack o.3ds --dim 5x", "--dim: takes 0..100, not '5x'"},
                    {"t.zrtrack o.3ds --dim 101", "not '101'"},
                    {"t.zrtrack o.3ds --color 1,2", "--color: takes R,G,B|#rrggbb, not '1,2'"},
                    {"t.zrtrack o.3ds --color 1,2,256", "not '1,2,256'"},
                    {"t.zrtrack o.3ds --color '#12345'", "not '#12345'"},
                    {"t.zrtrack o.3ds --detail best", "extreme|high|normal|low|poor, not 'best'"}},
                   2);
}

TEST_F(BatchTest, AnOutputThatIsAnInputOrAnotherOutputIsWrongUsage) {
    fs::create_directory(In("d"));
    fs::create_symlink("../t.zrtrack", In("d/u.3ds"));
    fs::create_symlink("u.zrtrack", In("link.zrtrack"));
    fs::create_symlink("s.zrbf", In("s.3ds"));
    fs::create_symlink("s.zrbf", In("s.zrtrack"));
    fs::create_symlink("d/new.3ds", In("d.zrtrack"));
    ExpectRefusals(
        {{"t.zrtrack --output-folder .", "'./t.zrtrack' would replace 't.zrtrack'"},
         {"t.zrtrack u.zrtrack --output-folder d", "'d/u.3ds' would replace 't.zrtrack'"},
         {"t.zrtrack o.3ds --track-out d/../t.zrtrack", "'d/../t.zrtrack' would replace 't.zrtrack'"},
         {"link.zrtrack o.3ds --track-out u.zrtrack", "'u.zrtrack' would replace 'link.zrtrack'"},
         {"t.zrtrack s.3ds --shape s.zrbf", "'s.3ds' would replace 's.zrbf'"},
         {"t.zrtrack o.3ds --shape s.zrbf --track-out s.zrtrack", "'s.zrtrack' would replace 's.zrbf'"},
         {"t.zrtrack a/T.zrtrack --output-folder d", "'d/t.3ds' and 'd/T.3ds' are the same file"},
         {"t.zrtrack a/T.zrtrack --output-folder e", "'e/t.3ds' and 'e/T.3ds' are the same file"}},
        2);
}

TEST_F(BatchTest, MessagesNeverGoIntoAFileWhenAStandardStreamIsClosed) {
    for (const std::string closed : {"0<&-", "1>&-", "2>&-", "0<&- 1>&- 2>&-"}) {
        EXPECT_EQ(Run("(" + kBatch + "t.zrtrack absent/o.3ds " + closed + ")"), 1) << closed;
        EXPECT_EQ(ReadBytes(In("t.zrtrack")), track) << closed;
    }
}

TEST_F(BatchTest, OutputThatCantBeWrittenIsAFailure) {
    for (const std::string arguments : {"--help", "t.zrtrack o.3ds --dry-run"}) {
        EXPECT_EQ(Run("(" + kBatch + arguments + " >/dev/full)"), 1) << arguments;
        EXPECT_TRUE(Contains(Text("err"), "The Output Can't Be Written!"));
    }
}

TEST_F(BatchTest, WarnsOfWhatASavedTrackLoses) {
    track.resize(track.size() + 3);
    WriteBytes(In("t.zrtrack"), track);
    EXPECT_EQ(Batch("t.zrtrack o.3ds --dry-run"), 0);
    EXPECT_EQ(Text("err"),
              "Warning: t.zrtrack has 3 bytes after the last chunk; the saved track won't have them.\n");
    EXPECT_EQ(Batch("t.zrtrack o.3ds --no-track"), 0);
    EXPECT_EQ(Text("err"), "");
}

TEST_F(BatchTest, WarnsOfAShapeThatIsProbablyWrong) {
    MirrorTunnelShape();
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    EXPECT_EQ(Batch("t.zrtrack o.3ds --dry-run --shape s.zrbf"), 0);
    EXPECT_TRUE(Text("err").starts_with("Warning: The inside contour is drawn clockwise"));
    EXPECT_EQ(Batch("t.zrtrack o.3ds --dry-run --shape s.zrbf --double-sided"), 0);
    EXPECT_EQ(Text("err"), "");
}

TEST_F(BatchTest, ANewObjectIsAsPrivateAsItsTrack) {
    fs::permissions(In("t.zrtrack"), fs::perms(0600));
    for (const std::string options : {"a.3ds", "b.3ds --no-track"})
        ASSERT_EQ(Batch("t.zrtrack --keep-tunnel-flags " + options), 0) << Text("err");
    EXPECT_EQ(fs::status(In("a.3ds")).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(In("b.3ds")).permissions(), fs::perms(0600));
}

// tools/campaign tries every limit.
TEST_F(BatchTest, TooLittleMemoryEndsInAMessage) {
    if (kSanitized) GTEST_SKIP() << "the sanitizer's own addresses exceed any limit";
    TunnelShape.InsideNodes.resize(3000);  // for an object that is much larger than the program
    TunnelShape.OutsideNodes.resize(3000);
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    const auto runWithin = [this](int megabytes, const std::string& arguments) {
        return Run("ulimit -v " + std::to_string(1000 * megabytes) + " && " + kBatch + arguments);
    };
    int megabytes = 2;
    while (runWithin(megabytes, "--version") != 0)
        ++megabytes;
    for (int more = 2; more <= 8; more += 2) {
        EXPECT_EQ(runWithin(megabytes + more, "t.zrtrack o.3ds --shape s.zrbf --detail extreme"), 1) << more;
        EXPECT_TRUE(Contains(Text("err"), "emory")) << more;
        EXPECT_EQ(ReadBytes(In("t.zrtrack")), track) << more;
        EXPECT_FALSE(fs::exists(In("o.3ds"))) << more;
    }
}

}  // namespace boreforge
