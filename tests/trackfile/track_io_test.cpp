#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <sys/resource.h>

#include <cstdint>
#include <filesystem>
#include <functional>

#include "support/CoreTest.h"
#include "support/KnownTrack.h"

namespace boreforge {
namespace {

using TrackIOTest = CoreTest;

void Put32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

std::uint32_t Get32(const Bytes& bytes, std::size_t at) {
    return std::uint32_t{bytes.at(at)} << 24 | std::uint32_t{bytes.at(at + 1)} << 16 |
           std::uint32_t{bytes.at(at + 2)} << 8 | bytes.at(at + 3);
}

Bytes Saved(const std::string& path) {
    EXPECT_TRUE(WriteTrackFile(path));
    return ReadBytes(path);
}

bool Loads(const std::string& path, const Bytes& file) {
    WriteBytes(path, file);
    return ReadTrackFile(path);
}

// True when nothing of a track is left in memory.
bool IsReset() {
    const TrackDocument& t = TrackFile;
    return t.ZphrSize == 0 && t.FormatVersion[0] == 0 && t.TrackValueA == 0 && t.ColorSets.empty() &&
           t.InfoText.empty() && t.BezierNodes.empty() && t.Segments.empty() && t.FundRecords.empty() &&
           t.CatwRecords.empty() && t.SceneryObjects.empty() && !t.HasTerrain && t.EnvironmentText1.empty();
}

TEST_F(TrackIOTest, EveryFieldOfEveryChunkIsSavedAtItsPlace) {
    TrackFile = KnownDocument();
    const Bytes saved = Saved(In("t.zrtrack"));
    EXPECT_EQ(saved.size(), 1973u);
    std::size_t at = 0;
    for (const std::string_view chunk : kKnownChunks) {
        const Bytes expected = Unfold(chunk);
        ASSERT_LE(at + expected.size(), saved.size());
        EXPECT_EQ(Bytes(saved.begin() + at, saved.begin() + at + expected.size()), expected) << chunk;
        at += expected.size();
    }
}

TEST_F(TrackIOTest, EachFlagHasAByteOfItsOwn) {
    using S = TrackSegment;
    const struct {
        std::int32_t kind;
        Truth S::* flag;
        std::size_t offset;  // from the segment's start
    } cases[] = {{0, &S::UseOwnColors, 4}, {0, &S::IsTunnel, 17}, {1, &S::K1Flag1, 55}, {1, &S::K1Flag3, 65},
                 {1, &S::K1Flag2, 86},     {2, &S::K2Flag1, 57},  {2, &S::K2Flag2, 58}, {3, &S::K3Flag1, 53},
                 {3, &S::K3Flag2, 54},     {4, &S::K4Flag1, 57},  {4, &S::K4Flag3, 58}, {4, &S::K4Flag4, 71},
                 {4, &S::K4Flag5, 72},     {4, &S::K4Flag2, 73}};
    for (const auto& [kind, flag, offset] : cases) {
        TrackFile.Segments.assign(1, {});
        TrackFile.Segments[0].SegmentKind = kind;
        Bytes expected = Saved(In("t.zrtrack"));
        TrackFile.Segments[0].*flag = kTrue;
        expected.at(184 + 29 + offset) = 0xFF;
        EXPECT_EQ(Saved(In("t.zrtrack")), expected) << "kind " << kind << ", offset " << offset;
        ASSERT_TRUE(ReadTrackFile(In("t.zrtrack")));
        EXPECT_EQ(TrackFile.Segments[0].*flag, kTrue) << "kind " << kind << ", offset " << offset;
    }
}

TEST_F(TrackIOTest, EmptyDocumentIsAFileOf665Bytes) {
    const struct {
        const char* tag;
        std::size_t offset;
        std::uint32_t size;
    } chunks[] = {{"ZPHR", 0, 657},   {"TRCK", 32, 477},  {"INFO", 104, 24}, {"BEZR", 136, 40}, {"SEGM", 184, 41},
                  {"SUPP", 233, 276}, {"FUND", 277, 40},  {"RASC", 325, 40}, {"FREN", 373, 40}, {"TUBE", 421, 40},
                  {"CATW", 469, 40},  {"SCEN", 517, 88},  {"SCOB", 565, 40}, {"ENVC", 613, 44}};
    Bytes expected(665, 0);
    for (const auto& [tag, offset, size] : chunks) {
        std::copy(tag, tag + 4, expected.begin() + offset);
        Put32(expected, offset + 4, size);
    }
    Put32(expected, 8, 0x01030000);
    for (const auto& [childCountAt, children] : {std::pair{28, 3}, {100, 4}, {273, 5}, {561, 1}})
        Put32(expected, static_cast<std::size_t>(childCountAt), static_cast<std::uint32_t>(children));
    EXPECT_EQ(Saved(In("t.zrtrack")), expected);

    expected[128 + 3] = 7;  // a length of the information text, with no text behind it
    EXPECT_FALSE(Loads(In("t.zrtrack"), Bytes(expected.begin(), expected.begin() + 132)));
    Put32(expected, 28, 0);  // a root without children ends the file
    ASSERT_TRUE(Loads(In("t.zrtrack"), expected));
    EXPECT_EQ(TrackFile.ZphrSize, 657);
    EXPECT_EQ(TrackFile.TrckSize, 0);
}

TEST_F(TrackIOTest, WhatOthersWriteComesBackInTheFormOfASave) {
    const Disguise loud{true, "01020000", "7FFFFFFF", "EE", "01", "FF"};
    const Disguise quiet{true, "00000000", "FFFFFFFF", "01", "80", "01"};
    const auto insert = [](Bytes& file, std::size_t at, std::string_view chunk) {
        const Bytes bytes = Unfold(chunk);
        file.insert(file.begin() + at, bytes.begin(), bytes.end());
    };
    Bytes followed = KnownFile(loud);
    followed.insert(followed.end(), 100, 0x55);
    Bytes foreign = KnownFile();
    foreign[31] = 7;
    insert(foreign, 32, "@XYZW 00000010 @SEGM 00000000 FFFFFFFF 00000001 @ZPHR 00000000 @NONE 00000004 00000009");
    Bytes doubled = KnownFile();
    doubled[32 + 123 + 8 - 1] = 6;
    insert(doubled, 32 + 123 + 8,
           "@INFO 00000000 z16 00000002 'no' 00000000 @SEGM 00000000 00000001 00 z16 "
           "00000009 00 CFFFFFF CFFFFFF CFFFFFF 00 z15 z16 00000000");
    Bytes negative = KnownFile();
    for (const std::size_t at : MarkedFields('M'))
        if (Get32(negative, at) == 0) Put32(negative, at, 0xFFFFFFFF);
    const struct {
        const char* name;
        Bytes file;
    } cases[] = {{"loud", followed},
                 {"quiet", KnownFile(quiet)},
                 {"in another order", UnfoldFile({0, 14, 13, 11, 12, 1, 5, 10, 9, 8, 7, 6, 4, 3, 2})},
                 {"foreign chunks", foreign},
                 {"doubled chunks", doubled},
                 {"negative lengths", negative}};
    for (const auto& [name, file] : cases) {
        ASSERT_TRUE(Loads(In("t.ZRtrack"), file)) << name;
        EXPECT_EQ(TrackFile.Segments.at(3).IsTunnel, kTrue) << name;
        EXPECT_EQ(TrackFile.Segments.at(3).K1Float1, 0) << name;
        EXPECT_EQ(TrackFile.DefaultColor1, 0x202122) << name;
        EXPECT_EQ(Saved(In("t.ZRtrack")), KnownFile()) << name;
        EXPECT_EQ(Listing(), std::vector<std::string>{"t.ZRtrack"}) << name;
    }
}

TEST_F(TrackIOTest, NoPrefixIsATrack) {
    const Bytes file = KnownFile();
    for (std::size_t length = 0; length < file.size(); ++length) {
        TrackFile = KnownDocument();
        ASSERT_FALSE(Loads(In("t.zrtrack"), Bytes(file.begin(), file.begin() + length))) << length;
        ASSERT_TRUE(IsReset()) << length;
    }
    EXPECT_TRUE(Loads(In("t.zrtrack"), file));
}

TEST_F(TrackIOTest, NumbersThatTheFileRefutesAreRefusedWithoutAskingForMemory) {
    const auto peakKilobytes = [] {
        struct rusage usage;
        ::getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const auto refuse = [&](std::size_t at, std::uint32_t value) {
        Bytes file = KnownFile();
        Put32(file, at, value);
        EXPECT_FALSE(Loads(In("t.zrtrack"), file)) << std::hex << value << " at " << at;
        EXPECT_TRUE(IsReset()) << at;
    };
    const long before = peakKilobytes();
    ASSERT_EQ(MarkedFields('N').size(), 36u);
    for (const std::size_t at : MarkedFields('N'))
        for (const std::uint32_t value : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 2'000'000u})
            refuse(at, value);
    for (const std::size_t at : MarkedFields('M'))
        for (const std::uint32_t value : {0x7FFFFFFFu, 2'000'000u})
            refuse(at, value);
    EXPECT_LT(peakKilobytes() - before, 32 * 1024);

    Bytes foreign = Unfold("@ZPHR 00000000 01030000 z16 00000001 @XYZW FFFFFFF8");
    EXPECT_FALSE(Loads(In("t.zrtrack"), foreign));
}

TEST_F(TrackIOTest, PathsDecideBeforeTheOpenTrackIsGone) {
    std::filesystem::create_directory(In("folder.zrtrack"));
    WriteBytes(In("track.zrt"), KnownFile());
    WriteBytes(In("zrtrack"), KnownFile());
    WriteBytes(In("other.zrtrack"), Unfold("@ZPHS 00000000 01030000 z16 00000000"));
    for (const std::string& path :
         {std::string(), In("absent.zrtrack"), In("track.zrt"), In("zrtrack"), In("folder.zrtrack")}) {
        TrackFile = KnownDocument();
        const std::uint32_t serial = TrackFileSerial();
        EXPECT_FALSE(ReadTrackFile(path)) << path;
        EXPECT_EQ(TrackFile.InfoText, "info\xFF") << path;
        EXPECT_EQ(TrackFileSerial(), serial) << path;
    }
    EXPECT_FALSE(ReadTrackFile(In("other.zrtrack")));
    EXPECT_TRUE(IsReset());
    EXPECT_EQ(TrackBytes.size(), 1u);

    ASSERT_TRUE(WriteTrackFile(In("track.zrt")));  // gets the extension, and is then the shorter file
    EXPECT_EQ(ReadBytes(In("track.zrt.zrtrack")).size(), 665u);
    EXPECT_EQ(ReadBytes(In("track.zrt")).size(), 1973u);
    EXPECT_EQ(TrackSavePath("a"), "a.zrtrack");
    EXPECT_EQ(TrackSavePath("A.ZRTRACK"), "A.ZRTRACK");
    EXPECT_FALSE(WriteTrackFile(In("folder.zrtrack")));
    EXPECT_FALSE(WriteTrackFile(In("absent/t.zrtrack")));
}

}  // namespace
}  // namespace boreforge
