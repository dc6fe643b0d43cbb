// ZPHR, the root; TRCK, the track-wide values; INFO, one text.
#include "trackfile/ChunkFrame.h"
#include "trackfile/TrackChunks.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, In<Walk, TrackColorSet>& set) {
    walk.Flag(set.SetFlag);
    walk.Reserved(7);
    walk.Text(set.SetName);
    walk.Color(set.SetColor1);
    walk.Color(set.SetColor2);
    walk.Color(set.SetColor3);
    walk.Color(set.SetColor4);
}

namespace {

struct ZphrLayout {
    static constexpr char Tag[] = "ZPHR";
    static constexpr auto Size = &TrackDocument::ZphrSize;
    static constexpr auto Children = &TrackDocument::ZphrChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.Version(track.FormatVersion);
        walk.Reserved(16);
    }
};

struct TrckLayout {
    static constexpr char Tag[] = "TRCK";
    static constexpr auto Size = &TrackDocument::TrckSize;
    static constexpr auto Children = &TrackDocument::TrckChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.I32(track.TrackValueA);
        walk.Count(track.ColorSets);
        walk.I32(track.TrackValueB);
        walk.Records(track.ColorSets);
        walk.Color(track.DefaultColor1);
        walk.Color(track.DefaultColor2);
        walk.Color(track.DefaultColor3);
        walk.Color(track.ExtraColor1);
        walk.Color(track.ExtraColor2);
        walk.Color(track.ExtraColor3);
        walk.Color(track.ExtraColor4);
        walk.Color(track.ExtraColor5);
        walk.Reserved(16);
    }
};

struct InfoLayout {
    static constexpr char Tag[] = "INFO";
    static constexpr auto Size = &TrackDocument::InfoSize;
    static constexpr auto Children = &TrackDocument::InfoChildren;
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Text(track.InfoText);
    }
};

}  // namespace

void ReadZphrChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<ZphrLayout>(at, track); }
void WriteZphrChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<ZphrLayout>(bytes, track); }
std::int64_t CountZphrChunk(const TrackDocument& track) { return CountChunk<ZphrLayout>(track); }

void ReadTrckChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<TrckLayout>(at, track); }
void WriteTrckChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<TrckLayout>(bytes, track); }
std::int64_t CountTrckChunk(const TrackDocument& track) { return CountChunk<TrckLayout>(track); }

void ReadInfoChunk(ReadCursor& at, TrackDocument& track) { ReadChunk<InfoLayout>(at, track); }
void WriteInfoChunk(Bytes& bytes, const TrackDocument& track) { WriteChunk<InfoLayout>(bytes, track); }
std::int64_t CountInfoChunk(const TrackDocument& track) { return CountChunk<InfoLayout>(track); }

}  // namespace boreforge
