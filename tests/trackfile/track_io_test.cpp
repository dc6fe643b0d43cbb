#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <filesystem>

#include "support/CoreTest.h"
#include "trackfile/PathChunks.h"

namespace boreforge {

class TrackIOTest : public CoreTest {
  protected:
    const std::string path = In("t.ZRtrack");
    Bytes Saved() {
        EXPECT_TRUE(WriteTrackFile(path));
        return ReadBytes(path);
    }
    bool Loads(const Bytes& file) {
        WriteBytes(path, file);
        return ReadTrackFile(path);
    }
};

// True when nothing of a track is left in memory.
bool IsReset() {
    const TrackDocument& t = TrackFile;
    return t.ZphrSize == 0 && t.FormatVersion[0] == 0 && t.ColorSets.empty() && t.BezierNodes.empty() &&
           t.Segments.empty() && t.SceneryObjects.empty() && !t.HasTerrain;
}

// Fields of the known file that the program uses, or that stand in the file in an order of their own.
void ExpectKnownFields() {
    const TrackBezierNode& n = TrackFile.BezierNodes.at(1);
    const TrackSegment& s = TrackFile.Segments.at(1);
    const TrackTubeRecord& t = TrackFile.TubeRecords.at(0);
    const TrackScenery& o = TrackFile.SceneryObjects.at(0);
    EXPECT_TRUE(n.Position.z == -3 && n.ControlIn.x == -4 && n.ControlOut.y == -8 && n.Roll == 0.25f);
    EXPECT_TRUE(!n.NodeFlagB && n.RollFlag == kTrue && TrackFile.DefaultColor3 == 0x262728);
    EXPECT_TRUE(s.Color2 == 0x445566 && !s.UseOwnColors && s.IsTunnel == kTrue && s.K2Float1 == 0);
    EXPECT_TRUE(s.K1Byte3 == 3 && s.K1Float6 == 6 && s.K1Float9 == 9 && s.K1Flag2 && !s.K1Flag3);
    EXPECT_TRUE(t.TubeValue2 == 2 && t.TubeValue3 == 3 && t.TubeValue5 == 5 && t.TubeValue6 == 6);
    EXPECT_TRUE(o.ObjectFile == "oak.3ds" && o.Transform[5] == 6 && o.Offset[1] == 11 &&
                o.LastRow[1] == 0.25f);
}

TEST_F(TrackIOTest, AnEmptyDocumentIsAFileOf665Bytes) {
    std::string text =
        "@ZPHR 00000291 01030000 z16 00000003 @TRCK 000001DD z60 00000004 @INFO 00000018 z24 "
        "@BEZR 00000028 z40 @SEGM 00000029 z41 @SUPP 00000114 z32 00000005 ";
    for (const std::string tag : {"FUND", "RASC", "FREN", "TUBE", "CATW"})
        text += "@" + tag + " 00000028 z40 ";
    Bytes file = Unfold(text + "@SCEN 00000058 z36 00000001 @SCOB 00000028 z40 @ENVC 0000002C z44");
    EXPECT_EQ(file.size(), 665u);
    EXPECT_EQ(Saved(), file);
    Put32(file, 28, 0);  // a root without children ends the file
    EXPECT_TRUE(Loads(file) && TrackFile.ZphrSize == 657 && TrackFile.TrckSize == 0);
}

TEST_F(TrackIOTest, WhatOthersWriteComesBackInTheFormOfASave) {
    ASSERT_EQ(KnownFile().size(), 1973u);
    const auto inserted = [](std::uint8_t children, std::size_t at, const std::string& chunks) {
        Bytes file = KnownFile();
        file[at - 1] = children;
        const Bytes bytes = Unfold(chunks);
        file.insert(file.begin() + at, bytes.begin(), bytes.end());
        return file;
    };
    const Disguise loud{{'@', "lower"}, {'S', "7FFFFFFF"}, {'z', "EE"}, {'T', "01"}, {'C', "FF"}};
    Bytes negative = KnownFile(loud);
    for (const std::size_t at : MarkedFields('M'))
        if (negative[at + 3] == 0) Put32(negative, at, 0xFFFFFFFF);
    negative.resize(2000, 0x55);
    const std::pair<const char*, Bytes> cases[] = {
        {"loud", KnownFile(loud)},
        {"negative lengths, and something behind", negative},
        {"another version", KnownFile({{'V', "00FF0000"}, {'T', "80"}})},
        {"another order", KnownFile({}, {0, 14, 13, 11, 12, 1, 5, 10, 9, 8, 7, 6, 4, 3, 2})},
        {"foreign", inserted(6, 32, "@XYZW 00000010 @SEGM 00000000 FFFFFFFF 00000001 @ZPHR 00000000")},
        {"doubled", inserted(5, 163, "@FREN 00000000 z16 00000001 z44 00000000")}};
    for (const auto& [name, file] : cases) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(Loads(file));
        ExpectKnownFields();
        EXPECT_EQ(Saved(), KnownFile());
    }
}

TEST_F(TrackIOTest, NoPrefixIsATrack) {
    EXPECT_TRUE(Loads(KnownFile()));
    for (std::size_t length = KnownFile().size(); length-- > 0;) {
        std::filesystem::resize_file(path, length);
        ASSERT_TRUE(!ReadTrackFile(path) && IsReset()) << length;
    }
}

TEST_F(TrackIOTest, ACountTooLargeForTheRestOfTheFileAllocatesNothing) {
    struct Case {
        std::uint8_t count;
        std::int32_t segments;
    };
    for (const Case& c : {Case{100, 100}, Case{101, 0}}) {
        Bytes chunk = Unfold("00000000 00000000 z3300");  // room for 100 segments of 33 bytes, the shortest
        chunk[7] = c.count;
        ReadCursor at{chunk};
        TrackDocument track;
        ReadSegmChunk(at, track);
        EXPECT_EQ(track.SegmentCount(), c.segments);
    }
}

TEST_F(TrackIOTest, PathsDecideBeforeTheOpenTrackIsGone) {
    std::filesystem::create_directory(In("folder.zrtrack"));
    for (const char* name : {"track.zrt", "zrtrack", "track.zrt.zrtrack"})
        WriteBytes(In(name), KnownFile());
    ASSERT_TRUE(Loads(KnownFile()));
    for (const char* bad : {"absent.zrtrack", "track.zrt", "zrtrack", "folder.zrtrack"})
        EXPECT_FALSE(ReadTrackFile(In(bad)) || ReadTrackFile("")) << bad;
    ExpectKnownFields();
    EXPECT_FALSE(WriteTrackFile(In("folder.zrtrack")) || WriteTrackFile(In("absent/t.zrtrack")));
    EXPECT_FALSE(Loads(Unfold("@ZPHR 00000000 01030000 z16 00000001 @XYZW FFFFFFF8")));
    EXPECT_TRUE(!Loads(Unfold("@ZPHS 00000000 01030000 z16 00000000")) && IsReset());
    ASSERT_TRUE(WriteTrackFile(In("track.zrt")));  // gets the extension, and is the shorter file now
    EXPECT_TRUE(ReadBytes(In("track.zrt.zrtrack")).size() == 665 &&
                ReadBytes(In("track.zrt")) == KnownFile());
}

}  // namespace boreforge
