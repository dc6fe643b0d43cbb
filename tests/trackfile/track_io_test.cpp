#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <filesystem>

#include "support/CoreTest.h"
#include "support/KnownTrack.h"
#include "trackfile/PathChunks.h"

namespace boreforge {

class TrackIOTest : public CoreTest {
  protected:
    const std::string path = In("t.ZRtrack");
    Bytes Saved() {
        EXPECT_TRUE(WriteTrackFile(path));
        return ReadBytes(path);
    }
    Outcome Loads(const Bytes& file) {
        WriteBytes(path, file);
        return ReadTrackFile(path);
    }
};

void ExpectReset() {
    EXPECT_EQ(TrackFile.ZphrSize, 0);
    EXPECT_EQ(TrackFile.FormatVersion[0], 0);
    EXPECT_TRUE(TrackFile.ColorSets.empty());
    EXPECT_TRUE(TrackFile.BezierNodes.empty());
    EXPECT_TRUE(TrackFile.Segments.empty());
    EXPECT_TRUE(TrackFile.SceneryObjects.empty());
    EXPECT_FALSE(TrackFile.HasTerrain);
}

// The fields of the known file that the program uses.
void ExpectFieldsInUse() {
    const TrackBezierNode& node = TrackFile.BezierNodes.at(1);
    EXPECT_EQ(node.Position, (Vector3D{-1, -2, -3}));
    EXPECT_EQ(node.ControlIn, (Vector3D{-4, -5, -6}));
    EXPECT_EQ(node.ControlOut, (Vector3D{-7, -8, -9}));
    EXPECT_EQ(node.Roll, 0.25f);
    EXPECT_EQ(node.RollFlag, kTrue);
    const TrackSegment& segment = TrackFile.Segments.at(1);
    EXPECT_EQ(segment.IsTunnel, kTrue);
    EXPECT_EQ(segment.UseOwnColors, kFalse);
    EXPECT_EQ(segment.Color2, 0x445566);
    EXPECT_EQ(TrackFile.DefaultColor3, 0x262728);
}

// The fields that have another order in the file than in memory.
void ExpectFieldsInAnotherOrder() {
    const TrackSegment& segment = TrackFile.Segments.at(1);
    EXPECT_EQ(segment.K1Float6, 6);
    EXPECT_EQ(segment.K1Float9, 9);
    EXPECT_EQ(segment.K1Flag2, kTrue);
    EXPECT_EQ(segment.K1Flag3, kFalse);
    const TrackTubeRecord& tube = TrackFile.TubeRecords.at(0);
    EXPECT_EQ(tube.TubeValue2, 2);
    EXPECT_EQ(tube.TubeValue3, 3);
    EXPECT_EQ(tube.TubeValue5, 5);
    EXPECT_EQ(tube.TubeValue6, 6);
    const TrackScenery& object = TrackFile.SceneryObjects.at(0);
    EXPECT_EQ(object.ObjectFile, "oak.3ds");
    EXPECT_EQ(object.Transform[5], 6);
    EXPECT_EQ(object.Offset[1], 11);
    EXPECT_EQ(object.LastRow[1], 0.25f);
}

TEST_F(TrackIOTest, AnEmptyDocumentIsAFileOf665Bytes) {
    std::string text = "'ZPHR' 00000291 01030000" + Zeros(16) + "00000003 'TRCK' 000001DD" + Zeros(60) +
                       "00000004 'INFO' 00000018" + Zeros(24) + "'BEZR' 00000028" + Zeros(40) +
                       "'SEGM' 00000029" + Zeros(41) + "'SUPP' 00000114" + Zeros(32) + "00000005";
    for (const std::string tag : {"FUND", "RASC", "FREN", "TUBE", "CATW"})
        text += "'" + tag + "' 00000028" + Zeros(40);
    text += "'SCEN' 00000058" + Zeros(36) + "00000001 'SCOB' 00000028" + Zeros(40);
    text += "'ENVC' 0000002C" + Zeros(44);
    EXPECT_EQ(Saved(), FromHex(text));
    EXPECT_EQ(Saved().size(), 665u);
}

TEST_F(TrackIOTest, ARootWithoutChildrenEndsTheFile) {
    EXPECT_TRUE(Loads(FromHex("'ZPHR' 00000291 01030000" + Zeros(16) + "00000000 'TRCK' 000001DD")));
    EXPECT_EQ(TrackFile.ZphrSize, 0x291);
    EXPECT_EQ(TrackFile.TrckSize, 0);
}

Bytes WithNegativeTextLengths(KnownTrack track) {
    for (const std::size_t at : track.textLengths)
        if (track.bytes[at + 3] == 0) Put32(track.bytes, at, 0xFFFFFFFF);
    return track.bytes;
}

Bytes WithMoreAtTheEnd() {
    Bytes file = KnownFile();
    file.resize(file.size() + 27, 0x55);
    return file;
}

// The known file with more chunks at `at`, of a parent whose number of children ends there.
Bytes WithMoreChunks(std::size_t at, std::uint8_t children, const std::string& chunks) {
    Bytes file = KnownFile();
    file[at - 1] = children;
    const Bytes bytes = FromHex(chunks);
    file.insert(file.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin(), bytes.end());
    return file;
}

TEST_F(TrackIOTest, ASaveWritesWhatOtherProgramsWroteInItsOwnForm) {
    const KnownTrack known = MakeKnownTrack();
    const KnownTrackStyle foreignStyle{.lowerCaseTags = true,
                                       .size = 0x7FFFFFFF,
                                       .version = 0x00FF0000,
                                       .reserved = 0xEE,
                                       .trueFlag = 0x01,
                                       .colorTop = 0xFF};
    const struct {
        const char* name;
        Bytes file;
        std::int64_t foreignChunks = 0, bytesAfterEnd = 0;
    } cases[] = {
        {"our own form", known.bytes},
        {"another style", KnownFile(foreignStyle)},
        {"negative text lengths", WithNegativeTextLengths(known)},
        {"more after the last chunk", WithMoreAtTheEnd(), 0, 27},
        {"another order", known.InOrder({"ZPHR", "ENVC", "TERA", "SCEN", "SCOB", "TRCK", "SUPP", "CATW",
                                         "TUBE", "FREN", "RASC", "FUND", "SEGM", "BEZR", "INFO"})},
        {"unknown chunks, one of them with another inside",
         WithMoreChunks(known.chunks[1], 6,
                        "'XYZW' 00000010 'SEGM' 00000000 FFFFFFFF 00000001 'ZPHR' 00000000"),
         2},
        {"a chunk that comes twice",
         WithMoreChunks(known.chunks[2], 5, "'FREN' 00000000" + Zeros(16) + "00000001" + Zeros(48))}};
    for (const auto& [name, file, foreignChunks, bytesAfterEnd] : cases) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(Loads(file));
        EXPECT_EQ(TrackOnDisk.ForeignChunks, foreignChunks);
        EXPECT_EQ(TrackOnDisk.BytesAfterEnd, bytesAfterEnd);
        ExpectFieldsInUse();
        ExpectFieldsInAnotherOrder();
        EXPECT_EQ(Saved(), known.bytes);
    }
}

TEST_F(TrackIOTest, NoPrefixOfATrackIsATrack) {
    EXPECT_TRUE(Loads(KnownFile()));
    for (std::size_t length = KnownFile().size(); length-- > 0;) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        ASSERT_FALSE(ReadTrackFile(path));
        ExpectReset();
    }
}

TEST_F(TrackIOTest, ANegativeWidthOfATerrainIsReportedWhereItIs) {
    const KnownTrack known = MakeKnownTrack();
    const std::size_t terrain = known.chunks.at(13);
    Bytes file = known.bytes;
    Put32(file, terrain + 8, 0xFFFFFFFF);  // after the tag and the size
    EXPECT_EQ(TextOf(Loads(file)), "It is damaged at byte 12 of chunk \"TERA\".");
}

TEST_F(TrackIOTest, APathThatCantBeATrackLeavesTheOpenTrack) {
    std::filesystem::create_directory(In("folder.zrtrack"));
    for (const char* name : {"track.zrt", "zrtrack"})
        WriteBytes(In(name), KnownFile());
    ASSERT_TRUE(Loads(KnownFile()));
    for (const char* name : {"absent.zrtrack", "track.zrt", "zrtrack", "folder.zrtrack"})
        EXPECT_FALSE(ReadTrackFile(In(name))) << name;
    EXPECT_FALSE(ReadTrackFile(""));
    ExpectFieldsInUse();
}

TEST_F(TrackIOTest, AFileThatIsNoTrackClearsTheOpenTrack) {
    for (const std::string& file : {"'ZPHS' 00000000 01030000" + Zeros(20),
                                    "'ZPHR' 00000000 01030000" + Zeros(16) + "00000001 'XYZW' FFFFFFF8"}) {
        ASSERT_TRUE(Loads(KnownFile()));
        EXPECT_FALSE(Loads(FromHex(file))) << file;
        ExpectReset();
    }
}

TEST_F(TrackIOTest, ASaveAddsTheExtensionAndReplacesALongerFile) {
    WriteBytes(In("track.zrt"), KnownFile());
    WriteBytes(In("track.zrt.zrtrack"), KnownFile());
    EXPECT_TRUE(WriteTrackFile(In("track.zrt")));
    EXPECT_EQ(ReadBytes(In("track.zrt.zrtrack")).size(), 665u);
    EXPECT_EQ(ReadBytes(In("track.zrt")), KnownFile());
}

}  // namespace boreforge
