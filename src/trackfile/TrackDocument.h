// The open track: the contents of a .zrtrack file in memory. What this program doesn't use is kept only so
// that a save can write it back ("carried through"); such fields are named after their position in the
// record.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Values.h"
#include "tracing/mMath3D.h"

namespace boreforge {

// The length of a list. Files have at most 2^31 - 1 bytes, so it fits.
inline std::int32_t CountOf(const auto& list) { return static_cast<std::int32_t>(list.size()); }

// A named set of colours, carried through.
struct TrackColorSet {
    Truth SetFlag = kFalse;
    PackedColor SetColor1 = 0, SetColor2 = 0, SetColor3 = 0, SetColor4 = 0;
    std::string SetName;
};

// One node of the path, a closed chain of cubic Bezier pieces. A piece has four control points: Position and
// ControlOut of its node, then ControlIn and Position of the next. Node 0 follows the last one.
struct TrackBezierNode {
    Vector3D Position;
    Vector3D ControlIn;   // for the piece that ends here
    Vector3D ControlOut;  // for the piece that starts here
    float Roll = 0;       // radians
    Truth NodeFlagA = kFalse;
    Truth RollFlag = kFalse;  // true: Roll is added to the frame's; false: Roll is the bank at the node
    Truth NodeFlagB = kFalse;
};

// One stretch of the path: the piece that starts at the node of the same index. There are fields for every
// kind; only those of the segment's own kind are in the file, the others are zero after a load.
struct TrackSegment {
    std::int32_t SegmentKind = 0;  // 0 to 4 are known; other kinds have no fields
    PackedColor Color1 = 0, Color2 = 0, Color3 = 0;
    Truth UseOwnColors = kFalse;  // false: the track's default colours apply
    Truth IsTunnel = kFalse;

    float K1Float1 = 0, K1Float2 = 0, K1Float3 = 0, K1Float4 = 0;
    Truth K1Flag1 = kFalse;
    float K1Float5 = 0;
    std::uint8_t K1Byte1 = 0, K1Byte2 = 0, K1Byte3 = 0;
    Truth K1Flag2 = kFalse;
    float K1Float6 = 0, K1Float7 = 0, K1Float8 = 0;
    Truth K1Flag3 = kFalse;
    float K1Float9 = 0, K1Float10 = 0, K1Float11 = 0;

    float K2Float1 = 0, K2Float2 = 0, K2Float3 = 0;
    std::uint8_t K2Byte1 = 0;
    Truth K2Flag1 = kFalse, K2Flag2 = kFalse;

    float K3Float1 = 0, K3Float2 = 0, K3Float3 = 0;
    std::uint8_t K3Byte1 = 0;
    Truth K3Flag1 = kFalse, K3Flag2 = kFalse;

    Truth K4Flag1 = kFalse, K4Flag2 = kFalse;
    float K4Float1 = 0, K4Float2 = 0, K4Float3 = 0;
    Truth K4Flag3 = kFalse;
    float K4Float4 = 0, K4Float5 = 0, K4Float6 = 0;
    float K4Float7 = 0;
    Truth K4Flag4 = kFalse, K4Flag5 = kFalse;
};

// Structure records, all carried through.
struct TrackFundRecord {
    Vector3D FundPoint;
    Truth FundFlag1 = kFalse;
    float FundFloat1 = 0;
    Truth FundFlag2 = kFalse;
    float FundFloat2 = 0;
};

struct TrackRascEntry {
    std::int32_t EntryValue = 0;
    float EntryFloat = 0;
};

struct TrackRascRecord {
    std::vector<TrackRascEntry> Entries;
    std::int32_t EntryCount() const { return CountOf(Entries); }
};

struct TrackFrenRecord {
    Vector3D FrenPoint;
};

struct TrackTubeRecord {
    std::int32_t TubeValue1 = 0, TubeValue2 = 0, TubeValue3 = 0, TubeValue4 = 0;
    std::int32_t TubeValue5 = 0, TubeValue6 = 0, TubeValue7 = 0, TubeValue8 = 0;
    float TubeFloat = 0;
};

struct TrackCatwRecord {
    std::int32_t CatwValue1 = 0, CatwValue2 = 0, CatwValue3 = 0;
    std::int32_t CatwValue4 = 0, CatwValue5 = 0, CatwValue6 = 0;
    std::int32_t CatwTailLength = 0;  // bytes of a tail that a save writes as zeros
};

// A point of the surroundings, carried through.
struct TrackSceneryPoint {
    float ScenFloat1 = 0, ScenFloat2 = 0, ScenFloat3 = 0, ScenFloat4 = 0;
    std::int32_t ScenValue = 0;
};

// An object beside the track. Its 4-by-4 matrix, without the last element, is split into three parts.
struct TrackScenery {
    std::string ObjectFile;  // the object's file name, without folders
    std::string ObjectClass;
    std::array<float, 9> Transform{};  // 3 by 3, row by row
    std::array<float, 3> Offset{};     // the fourth column, one value for each row of Transform
    std::array<float, 3> LastRow{};    // the fourth row, without its last element
};

// Each Size is a chunk's size field and each Children its child count, as last read or written.
struct TrackDocument {
    std::int32_t ZphrSize = 0, ZphrChildren = 0;
    std::array<std::uint8_t, 4> FormatVersion{};  // as read; a save writes 1.3

    std::int32_t TrckSize = 0, TrckChildren = 0;
    std::int32_t TrackValueA = 0;
    std::vector<TrackColorSet> ColorSets;
    std::int32_t TrackValueB = 0;
    PackedColor DefaultColor1 = 0, DefaultColor2 = 0, DefaultColor3 = 0;  // of segments without their own
    PackedColor ExtraColor1 = 0, ExtraColor2 = 0, ExtraColor3 = 0, ExtraColor4 = 0, ExtraColor5 = 0;

    std::int32_t InfoSize = 0, InfoChildren = 0;
    std::string InfoText;

    std::int32_t BezrSize = 0, BezrChildren = 0;
    std::vector<TrackBezierNode> BezierNodes;

    std::int32_t SegmSize = 0, SegmChildren = 0;
    Truth SegmentListFlag = kFalse;
    std::vector<TrackSegment> Segments;

    std::int32_t SuppSize = 0, SuppChildren = 0;
    std::int32_t FundSize = 0, FundChildren = 0;
    std::vector<TrackFundRecord> FundRecords;
    std::int32_t RascSize = 0, RascChildren = 0;
    std::vector<TrackRascRecord> RascRecords;
    std::int32_t FrenSize = 0, FrenChildren = 0;
    std::vector<TrackFrenRecord> FrenRecords;
    std::int32_t TubeSize = 0, TubeChildren = 0;
    std::vector<TrackTubeRecord> TubeRecords;
    std::int32_t CatwSize = 0, CatwChildren = 0;
    std::vector<TrackCatwRecord> CatwRecords;

    std::int32_t ScenSize = 0, ScenChildren = 0;
    std::vector<TrackSceneryPoint> SceneryPoints;
    std::int32_t ScobSize = 0, ScobChildren = 0;
    std::vector<TrackScenery> SceneryObjects;

    std::int32_t TeraSize = 0, TeraChildren = 0;
    Truth HasTerrain = kFalse;  // whether the file had a terrain; a save then writes one
    std::int32_t TerrainWidth = 0, TerrainDepth = 0;
    float TerrainFloat1 = 0, TerrainFloat2 = 0;
    std::string TerrainText1;
    float TerrainFloat3 = 0;
    std::string TerrainText2;
    float TerrainFloat4 = 0;
    std::string TerrainText3;
    float TerrainFloat5 = 0;
    std::uint8_t TerrainByte = 0;
    Truth TerrainFlag = kFalse;
    std::vector<float> TerrainGrid;  // TerrainDepth rows of TerrainWidth values, row by row

    std::int32_t EnvcSize = 0, EnvcChildren = 0;
    std::string EnvironmentText1, EnvironmentText2;

    std::int32_t ColorSetCount() const { return CountOf(ColorSets); }
    std::int32_t BezierNodeCount() const { return CountOf(BezierNodes); }
    std::int32_t SegmentCount() const { return CountOf(Segments); }
    std::int32_t FundCount() const { return CountOf(FundRecords); }
    std::int32_t RascCount() const { return CountOf(RascRecords); }
    std::int32_t FrenCount() const { return CountOf(FrenRecords); }
    std::int32_t TubeCount() const { return CountOf(TubeRecords); }
    std::int32_t CatwCount() const { return CountOf(CatwRecords); }
    std::int32_t SceneryPointCount() const { return CountOf(SceneryPoints); }
    std::int32_t SceneryObjectCount() const { return CountOf(SceneryObjects); }
};

// The one open track.
extern TrackDocument TrackFile;

}  // namespace boreforge
