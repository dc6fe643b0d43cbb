// ZPHR, the root; TRCK, the track-wide values; INFO, one text.
#pragma once

#include "trackfile/ChunkLayout.h"

namespace boreforge {

template <class Walk>
void Fields(Walk& walk, RecordFor<Walk, TrackColorSet>& set) {
    walk.Flag(set.SetFlag);
    walk.Reserved(7);
    walk.Text(set.SetName);
    walk.Color(set.SetColor1);
    walk.Color(set.SetColor2);
    walk.Color(set.SetColor3);
    walk.Color(set.SetColor4);
}

struct ZphrLayout : ChunkLayout<"ZPHR", &TrackDocument::ZphrSize, &TrackDocument::ZphrChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Version(track.FormatVersion);
        walk.Reserved(16);
    }
};
inline constexpr auto ReadZphrChunk = ReadChunk<ZphrLayout>;
inline constexpr auto WriteZphrChunk = WriteChunk<ZphrLayout>;

struct TrckLayout : ChunkLayout<"TRCK", &TrackDocument::TrckSize, &TrackDocument::TrckChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.I32(track.TrackValueA);
        walk.Count(track.ColorSets);
        walk.I32(track.TrackValueB);
        Records(walk, track.ColorSets);
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
inline constexpr auto ReadTrckChunk = ReadChunk<TrckLayout>;
inline constexpr auto WriteTrckChunk = WriteChunk<TrckLayout>;

struct InfoLayout : ChunkLayout<"INFO", &TrackDocument::InfoSize, &TrackDocument::InfoChildren> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Text(track.InfoText);
    }
};
inline constexpr auto ReadInfoChunk = ReadChunk<InfoLayout>;
inline constexpr auto WriteInfoChunk = WriteChunk<InfoLayout>;

}  // namespace boreforge
