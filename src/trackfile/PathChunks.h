// BEZR, the nodes of the path; SEGM, the segments along it.
#pragma once

#include "trackfile/ChunkLayout.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackBezierNode>& node) {
    PointFields(walk, node.Position);
    PointFields(walk, node.ControlIn);
    PointFields(walk, node.ControlOut);
    walk.F32(node.Roll);
    walk.Flag(node.NodeFlagA);
    walk.Flag(node.NodeFlagB);
    walk.Flag(node.RollFlag);
    walk.Reserved(17);
}

template <class Walk>
void Kind1Fields(Walk& walk, RecordFor<Walk, TrackSegment>& segment) {
    walk.F32(segment.K1Float1);
    walk.F32(segment.K1Float2);
    walk.F32(segment.K1Float3);
    walk.F32(segment.K1Float4);
    walk.U8(segment.K1Byte1);
    walk.U8(segment.K1Byte2);
    walk.Flag(segment.K1Flag1);
    walk.U8(segment.K1Byte3);
    walk.F32(segment.K1Float5);
    walk.Reserved(4);
    walk.Flag(segment.K1Flag3);
    walk.F32(segment.K1Float9);
    walk.Reserved(4);
    walk.F32(segment.K1Float10);
    walk.F32(segment.K1Float11);
    walk.Reserved(4);
    walk.Flag(segment.K1Flag2);
    walk.F32(segment.K1Float6);
    walk.F32(segment.K1Float7);
    walk.F32(segment.K1Float8);
    walk.Reserved(64);
}

template <class Walk>
void Kind2Fields(Walk& walk, RecordFor<Walk, TrackSegment>& segment) {
    walk.Reserved(3);
    walk.U8(segment.K2Byte1);
    walk.F32(segment.K2Float1);
    walk.F32(segment.K2Float2);
    walk.F32(segment.K2Float3);
    walk.Reserved(4);
    walk.Flag(segment.K2Flag1);
    walk.Flag(segment.K2Flag2);
    walk.Reserved(14);
}

template <class Walk>
void Kind3Fields(Walk& walk, RecordFor<Walk, TrackSegment>& segment) {
    walk.F32(segment.K3Float1);
    walk.F32(segment.K3Float2);
    walk.F32(segment.K3Float3);
    walk.Reserved(3);
    walk.U8(segment.K3Byte1);
    walk.Flag(segment.K3Flag1);
    walk.Flag(segment.K3Flag2);
    walk.Reserved(10);
}

template <class Walk>
void Kind4Fields(Walk& walk, RecordFor<Walk, TrackSegment>& segment) {
    walk.F32(segment.K4Float1);
    walk.F32(segment.K4Float2);
    walk.F32(segment.K4Float3);
    walk.Reserved(4);
    walk.F32(segment.K4Float7);
    walk.Flag(segment.K4Flag1);
    walk.Flag(segment.K4Flag3);
    walk.F32(segment.K4Float4);
    walk.F32(segment.K4Float5);
    walk.F32(segment.K4Float6);
    walk.Flag(segment.K4Flag4);
    walk.Flag(segment.K4Flag5);
    walk.Flag(segment.K4Flag2);
    walk.Reserved(13);
}

// An unknown kind has no block, not even a length.
template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackSegment>& segment) {
    walk.I32(segment.SegmentKind);
    walk.Flag(segment.UseOwnColors);
    walk.Color(segment.Color1);
    walk.Color(segment.Color2);
    walk.Color(segment.Color3);
    walk.Flag(segment.IsTunnel);
    walk.Reserved(15);
    switch (segment.SegmentKind) {
        case 0:
            walk.Block([](auto&) {});
            break;
        case 1:
            walk.Block([&](auto& block) { Kind1Fields(block, segment); });
            break;
        case 2:
            walk.Block([&](auto& block) { Kind2Fields(block, segment); });
            break;
        case 3:
            walk.Block([&](auto& block) { Kind3Fields(block, segment); });
            break;
        case 4:
            walk.Block([&](auto& block) { Kind4Fields(block, segment); });
            break;
        default:
            break;
    }
}

template <>
inline TrackSegment SmallestRecord<TrackSegment>() {
    TrackSegment segment;
    segment.SegmentKind = -1;
    return segment;
}

using BezrLayout =
    ListLayout<"BEZR", &TrackDocument::BezrSize, &TrackDocument::BezrChildren, &TrackDocument::BezierNodes>;
inline constexpr auto ReadBezrChunk = ReadChunk<BezrLayout>;
inline constexpr auto WriteBezrChunk = WriteChunk<BezrLayout>;

struct SegmLayout : ChunkLayout<"SEGM", &TrackDocument::SegmSize, &TrackDocument::SegmChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Count(track.Segments);  // before the reserved bytes, unlike in other lists
        walk.Flag(track.SegmentListFlag);
        walk.Reserved(16);
        Records(walk, track.Segments);
        walk.Reserved(16);
    }
};
inline constexpr auto ReadSegmChunk = ReadChunk<SegmLayout>;
inline constexpr auto WriteSegmChunk = WriteChunk<SegmLayout>;

}  // namespace boreforge
