// SCEN, a list of points; its child SCOB, the objects beside the track; TERA, the terrain; ENVC, two texts.
#pragma once

#include "trackfile/ChunkLayout.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackSceneryPoint>& point) {
    walk.F32(point.ScenFloat1);
    walk.F32(point.ScenFloat2);
    walk.F32(point.ScenFloat3);
    walk.I32(point.ScenValue);
    walk.F32(point.ScenFloat4);
    walk.Reserved(44);
}

// In the file the class comes first, and the matrix is stored row by row.
template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackScenery>& object) {
    walk.StrictText(object.ObjectClass);
    walk.StrictText(object.ObjectFile);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            walk.F32(object.Transform[3 * row + column]);
        walk.F32(object.Offset[row]);
    }
    for (auto& value : object.LastRow)
        walk.F32(value);
    walk.Reserved(20);
}

using ScenLayout =
    ListLayout<"SCEN", &TrackDocument::ScenSize, &TrackDocument::ScenChildren, &TrackDocument::SceneryPoints>;
inline constexpr auto ReadScenChunk = ReadChunk<ScenLayout>;
inline constexpr auto WriteScenChunk = WriteChunk<ScenLayout>;

using ScobLayout = ListLayout<"SCOB", &TrackDocument::ScobSize, &TrackDocument::ScobChildren,
                              &TrackDocument::SceneryObjects>;
inline constexpr auto ReadScobChunk = ReadChunk<ScobLayout>;
inline constexpr auto WriteScobChunk = WriteChunk<ScobLayout>;

struct TeraLayout : ChunkLayout<"TERA", &TrackDocument::TeraSize, &TrackDocument::TeraChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Extent(track.TerrainWidth);
        walk.Extent(track.TerrainDepth);
        walk.F32(track.TerrainFloat1);
        walk.F32(track.TerrainFloat2);
        walk.StrictText(track.TerrainText1);
        walk.F32(track.TerrainFloat3);
        walk.StrictText(track.TerrainText2);
        walk.F32(track.TerrainFloat4);
        walk.Flag(track.TerrainFlag);
        walk.Reserved(4);
        walk.StrictText(track.TerrainText3);
        walk.F32(track.TerrainFloat5);
        walk.U8(track.TerrainByte);
        walk.Reserved(15);
        walk.Grid(track.TerrainGrid, track.TerrainWidth, track.TerrainDepth);
        walk.Reserved(16);
    }
};
inline constexpr auto ReadTeraChunk = ReadChunk<TeraLayout>;
inline constexpr auto WriteTeraChunk = WriteChunk<TeraLayout>;

struct EnvcLayout : ChunkLayout<"ENVC", &TrackDocument::EnvcSize, &TrackDocument::EnvcChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Text(track.EnvironmentText1);
        walk.Text(track.EnvironmentText2);
        walk.Reserved(16);
    }
};
inline constexpr auto ReadEnvcChunk = ReadChunk<EnvcLayout>;
inline constexpr auto WriteEnvcChunk = WriteChunk<EnvcLayout>;

}  // namespace boreforge
