// SCEN and its child SCOB, what stands beside the track; TERA, the terrain; ENVC, two texts.
#include "trackfile/ChunkFrame.h"
#include "trackfile/TrackChunks.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackSceneryPoint>& point) {
    walk.F32(point.ScenFloat1);
    walk.F32(point.ScenFloat2);
    walk.F32(point.ScenFloat3);
    walk.I32(point.ScenValue);
    walk.F32(point.ScenFloat4);
    walk.Reserved(44);
}

// The class comes first in the file. The floats stand there as the rows of a 4-by-4 matrix.
template <class Walk>
void Fields(Walk& walk, In<Walk, TrackScenery>& object) {
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

namespace {

struct ScenLayout : ListFields<&TrackDocument::SceneryPoints> {
    static constexpr char Tag[] = "SCEN";
    static constexpr auto Size = &TrackDocument::ScenSize;
    static constexpr auto Children = &TrackDocument::ScenChildren;
};

struct ScobLayout : ListFields<&TrackDocument::SceneryObjects> {
    static constexpr char Tag[] = "SCOB";
    static constexpr auto Size = &TrackDocument::ScobSize;
    static constexpr auto Children = &TrackDocument::ScobChildren;
};

struct TeraLayout {
    static constexpr char Tag[] = "TERA";
    static constexpr auto Size = &TrackDocument::TeraSize;
    static constexpr auto Children = &TrackDocument::TeraChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.I32(track.TerrainWidth);
        walk.I32(track.TerrainDepth);
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

struct EnvcLayout {
    static constexpr char Tag[] = "ENVC";
    static constexpr auto Size = &TrackDocument::EnvcSize;
    static constexpr auto Children = &TrackDocument::EnvcChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Text(track.EnvironmentText1);
        walk.Text(track.EnvironmentText2);
        walk.Reserved(16);
    }
};

}  // namespace

void ReadScenChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<ScenLayout>(at, track); }
void WriteScenChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<ScenLayout>(bytes, track); }
std::int64_t CountScenChunk(const TrackDocument& track) { return CountChunk<ScenLayout>(track); }

void ReadScobChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<ScobLayout>(at, track); }
void WriteScobChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<ScobLayout>(bytes, track); }
std::int64_t CountScobChunk(const TrackDocument& track) { return CountChunk<ScobLayout>(track); }

void ReadTeraChunk(ReadCursor& at, TrackDocument& track) {
    ReadChunk<TeraLayout>(at, track);
    track.HasTerrain = kTrue;
}
void WriteTeraChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<TeraLayout>(bytes, track); }
std::int64_t CountTeraChunk(const TrackDocument& track) { return CountChunk<TeraLayout>(track); }

void ReadEnvcChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<EnvcLayout>(at, track); }
void WriteEnvcChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<EnvcLayout>(bytes, track); }
std::int64_t CountEnvcChunk(const TrackDocument& track) { return CountChunk<EnvcLayout>(track); }

}  // namespace boreforge
