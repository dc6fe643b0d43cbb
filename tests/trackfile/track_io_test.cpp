#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "support/CoreTest.h"

namespace boreforge {

// What a load and a save do with each field is in tests/golden.
struct TrackIOTest : CoreTest {
    Outcome Load(const Bytes& file) {
        WriteBytes(path, file);
        return ReadTrackFile(path);
    }
    const std::string path = In("t.ZRtrack");
    const Bytes full = ReadBytes(kFullTrack);
};

TEST_F(TrackIOTest, NoPrefixOfATrackIsATrack) {
    ASSERT_TRUE(Load(full));
    for (std::size_t length = full.size(); length-- > 0;) {
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

TEST_F(TrackIOTest, AFileThatIsNotATrackIsRefusedWithTheReason) {
    const struct {
        std::string file;
        const char* reason;
    } cases[] = {
        {"'ZPHS' 00000000", "It is not a track."},
        {Root("FFFFFFFF"), "It is damaged at byte 32 of chunk \"ZPHR\"."},
        {Root("00000001"), "It ends at byte 32, where another chunk is due."},
        {Root("00000001") + "'INFO' 00000018 0000", "It ends at byte 10 of chunk \"INFO\"."},
        {Root("00000001") + "'INFO' 00000018 00000000 00000000 00000000 00000000 00000000 FFFFFFFF",
         "It is damaged at byte 32 of chunk \"INFO\"."},
        {Root("00000001") + "'XYZW' FFFFFFF8", "It ends at byte 8 of chunk \"XYZW\"."},
        {Root("00000001") + "'TERA' 00000004 FFFFFFFF", "It is damaged at byte 12 of chunk \"TERA\"."}};
    for (const auto& [file, reason] : cases)
        EXPECT_EQ(TextOf(Load(FromHex(file))), reason);
}

TEST_F(TrackIOTest, ATextOfSceneryOrTerrainHasNoNegativeLength) {
    for (const std::string_view text : {"dummy", "tube.3ds", "grass", "rock"}) {
        Bytes file = full;
        const auto at = std::search(file.begin(), file.end(), text.begin(), text.end());
        std::fill(at - 4, at, 0xFF);
        file.erase(at, at + std::ssize(text));
        EXPECT_FALSE(Load(file)) << text;
    }
    Bytes file = full;
    constexpr std::string_view kBefore = "grass";  // then a number, then an empty text
    const auto number = std::search(file.begin(), file.end(), kBefore.begin(), kBefore.end()) + 5;
    std::fill(number + 4, number + 8, 0xFF);
    EXPECT_FALSE(Load(file));
}

TEST_F(TrackIOTest, WhatFollowsTheLastChunkIsCountedAndUnknownChunksAreSkipped) {
    ASSERT_TRUE(Load(FromHex(Root("00000002") + "'XYZW' 00000003 FFFFFF 'abcd' 00000000 'TRCK' 00")));
    EXPECT_EQ(TrackOnDisk.foreignChunks, 2);
    EXPECT_EQ(TrackOnDisk.bytesAfterEnd, 5);
}

TEST_F(TrackIOTest, APathThatCantBeATrackLeavesTheOpenTrack) {
    ASSERT_TRUE(Load(full));
    std::filesystem::create_directory(In("folder.zrtrack"));
    for (const char* name : {"track.zrt", "zrtrack"})
        WriteBytes(In(name), full);
    for (const char* name : {"absent.zrtrack", "track.zrt", "zrtrack", "folder.zrtrack"})
        EXPECT_FALSE(ReadTrackFile(In(name))) << name;
    EXPECT_FALSE(ReadTrackFile(""));
    EXPECT_EQ(TrackFile.BezierNodeCount(), 21);
}

TEST_F(TrackIOTest, ASaveAddsTheExtensionAndReplacesALongerFile) {
    WriteBytes(In("track.zrt.zrtrack"), full);
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
