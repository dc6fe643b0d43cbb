#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <filesystem>

#include "support/CoreTest.h"
#include "support/KnownTrack.h"

namespace boreforge {

struct TrackIOTest : CoreTest {
    Outcome Load(const Bytes& file) {
        WriteBytes(path, file);
        return ReadTrackFile(path);
    }
    const std::string path = In("t.ZRtrack");
};

TEST_F(TrackIOTest, ASaveHasTheSizesOfTheFormatsTables) {
    ASSERT_TRUE(Load(KnownFile()));
    ASSERT_TRUE(WriteTrackFile(In("saved.zrtrack")));
    EXPECT_EQ(ReadBytes(In("saved.zrtrack")), KnownFile());
}

TEST_F(TrackIOTest, NoPrefixOfATrackIsATrack) {
    ASSERT_TRUE(Load(KnownFile()));
    for (std::size_t length = KnownFile().size(); length-- > 0;) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        ASSERT_FALSE(ReadTrackFile(path));
        EXPECT_EQ(TrackFile.ZphrSize, 0);
        EXPECT_TRUE(TrackFile.BezierNodes.empty());
    }
}

// The root chunk of a track with so many children.
std::string Root(const std::string& children) {
    return "'ZPHR' 00000000 01030000 00000000 00000000 00000000 00000000" + children;
}

TEST_F(TrackIOTest, AFileThatIsNotATrackClearsTheOpenOneAndSaysWhy) {
    const struct {
        std::string file;
        const char* reason;
    } cases[] = {
        {"'ZPHS' 00000000", "It is not a track."},
        {Root("FFFFFFFF"), "It is damaged at byte 32 of chunk \"ZPHR\"."},
        {Root("00000001"), "It ends at byte 32, where another chunk is due."},
        {Root("00000001") + "'INFO' 00000018 0000", "It ends at byte 10 of chunk \"INFO\"."},
        {Root("00000001") + "'XYZW' FFFFFFF8", "It ends at byte 8 of chunk \"XYZW\"."},
        {Root("00000001") + "'TERA' 00000004 FFFFFFFF", "It is damaged at byte 12 of chunk \"TERA\"."}};
    for (const auto& [file, reason] : cases) {
        ASSERT_TRUE(Load(KnownFile()));
        EXPECT_EQ(TextOf(Load(FromHex(file))), reason);
        EXPECT_EQ(TrackFile.ZphrSize, 0);
        EXPECT_TRUE(TrackFile.BezierNodes.empty());
    }
}

TEST_F(TrackIOTest, WhatFollowsTheLastChunkIsCountedAndUnknownChunksAreSkipped) {
    ASSERT_TRUE(Load(FromHex(Root("00000002") + "'XYZW' 00000003 FFFFFF 'abcd' 00000000 'TRCK' 00")));
    EXPECT_EQ(TrackOnDisk.foreignChunks, 2);
    EXPECT_EQ(TrackOnDisk.bytesAfterEnd, 5);
}

TEST_F(TrackIOTest, APathThatCantBeATrackLeavesTheOpenTrack) {
    ASSERT_TRUE(Load(KnownFile()));
    std::filesystem::create_directory(In("folder.zrtrack"));
    for (const char* name : {"track.zrt", "zrtrack"})
        WriteBytes(In(name), KnownFile());
    for (const char* name : {"absent.zrtrack", "track.zrt", "zrtrack", "folder.zrtrack"})
        EXPECT_FALSE(ReadTrackFile(In(name))) << name;
    EXPECT_FALSE(ReadTrackFile(""));
    EXPECT_EQ(TrackFile.BezierNodeCount(), 2);
}

TEST_F(TrackIOTest, ASaveAddsTheExtensionAndReplacesALongerFile) {
    WriteBytes(In("track.zrt.zrtrack"), KnownFile());
    EXPECT_TRUE(WriteTrackFile(In("track.zrt")));
    EXPECT_EQ(ReadBytes(In("track.zrt.zrtrack")).size(), 665u) << "an empty track";
    EXPECT_EQ(Listing(), std::vector<std::string>{"track.zrt.zrtrack"});
}

TEST_F(TrackIOTest, ATrackOfMoreThanTwoGigabytesIsNotSaved) {
    TrackFile.CatwRecords.resize(1);
    TrackFile.CatwRecords[0].CatwTailLength = 0x7FFFFFFF;
    EXPECT_EQ(TextOf(WriteTrackFile(path)), "It would be too large.");
    EXPECT_TRUE(Listing().empty());
}

}  // namespace boreforge
