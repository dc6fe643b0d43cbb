#include "support/KnownTrack.h"

namespace boreforge {

namespace {

TrackSegment Segment(std::int32_t kind, bool ownColors, bool tunnel) {
    TrackSegment segment;
    segment.SegmentKind = kind;
    segment.UseOwnColors = ToTruth(ownColors);
    segment.IsTunnel = ToTruth(tunnel);
    // Fields of other kinds than the segment's own: a save drops them.
    segment.K1Float1 = segment.K2Float1 = segment.K3Float1 = segment.K4Float1 = 1;
    segment.K1Float2 = segment.K2Float2 = segment.K3Float2 = segment.K4Float2 = 2;
    segment.K1Float3 = segment.K2Float3 = segment.K3Float3 = segment.K4Float3 = 3;
    segment.K1Float4 = segment.K4Float4 = 4;
    segment.K1Float5 = segment.K4Float5 = 5;
    segment.K1Float6 = segment.K4Float6 = 6;
    segment.K1Float7 = segment.K4Float7 = 7;
    segment.K1Float8 = 8;
    segment.K1Float9 = 9;
    segment.K1Float10 = 10;
    segment.K1Float11 = 11;
    segment.K1Byte1 = 1;
    segment.K1Byte2 = 2;
    segment.K1Byte3 = 3;
    segment.K2Byte1 = 1;
    segment.K3Byte1 = 0x80;
    segment.K1Flag1 = segment.K1Flag2 = segment.K2Flag1 = segment.K3Flag2 = kTrue;
    segment.K4Flag1 = segment.K4Flag4 = kTrue;
    return segment;
}

void FillPath(TrackDocument& track) {
    track.BezierNodes.resize(2);
    track.BezierNodes[0] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, -0.5f, kTrue, kFalse, kFalse};
    track.BezierNodes[1] = {{-1, -2, -3}, {-4, -5, -6}, {-7, -8, -9}, 0.25f, kFalse, kTrue, kFalse};
    track.SegmentListFlag = kTrue;
    track.Segments = {Segment(0, true, false), Segment(1, false, true),  Segment(2, false, false),
                      Segment(3, false, true), Segment(4, false, false), Segment(9, true, true)};
    const auto paint = [&](std::size_t i, PackedColor c1, PackedColor c2, PackedColor c3) {
        track.Segments[i].Color1 = c1;
        track.Segments[i].Color2 = c2;
        track.Segments[i].Color3 = c3;
    };
    paint(0, 0x010101, 0x020202, 0x030303);
    paint(1, 0x112233, 0x445566, 0x778899);
    paint(5, 0xFFFFFF, 0xFEFDFC, 0x808080);
}

void FillStructure(TrackDocument& track) {
    track.FundRecords = {{{3, 4, 5}, kTrue, 1, kFalse, 2}};
    track.RascRecords = {{{{7, 1}, {-1, 2}}}, {}};
    track.FrenRecords = {{{1, 2, 3}}};
    track.TubeRecords = {{1, 2, 3, 4, 5, 6, 7, 8, 9}};
    track.CatwRecords = {{1, 2, 3, 4, 5, 6, 0}, {11, 12, 13, 14, 15, 16, 10}};
}

void FillSurroundings(TrackDocument& track) {
    track.SceneryPoints = {{1, 2, 3, 4, 5}};
    track.SceneryObjects = {
        {"oak.3ds", "tree", {1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12}, {0.5f, 0.25f, 0.125f}}, {}};
    track.HasTerrain = kTrue;
    track.TerrainWidth = 2;
    track.TerrainDepth = 3;
    track.TerrainFloat1 = 1;
    track.TerrainFloat2 = 2;
    track.TerrainFloat3 = 3;
    track.TerrainFloat4 = 4;
    track.TerrainFloat5 = 5;
    track.TerrainText1 = "grass";
    track.TerrainText3 = "rock";
    track.TerrainByte = 1;
    track.TerrainFlag = kTrue;
    track.TerrainGrid = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
    track.EnvironmentText1 = "sky";
}

}  // namespace

TrackDocument KnownDocument() {
    TrackDocument track;
    track.FormatVersion = {9, 9, 9, 9};
    track.TrackValueA = 0x11;
    track.TrackValueB = -2;
    track.ColorSets = {{kTrue, 0x010203, 0x040506, 0x070809, 0x0A0B0C, "Red"},
                       {kFalse, 0x111213, 0x141516, 0x171819, 0x1A1B1C, ""}};
    track.DefaultColor1 = 0x7F202122;  // the top byte is no part of a colour
    track.DefaultColor2 = 0x232425;
    track.DefaultColor3 = 0x262728;
    track.ExtraColor1 = 0x303132;
    track.ExtraColor2 = 0x333435;
    track.ExtraColor3 = 0x363738;
    track.ExtraColor4 = 0x393A3B;
    track.ExtraColor5 = 0x3C3D3E;
    track.InfoText = "info\xFF";
    FillPath(track);
    FillStructure(track);
    FillSurroundings(track);
    return track;
}

}  // namespace boreforge
