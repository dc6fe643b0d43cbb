// A chunk is a tag (4 bytes), a size (the number of bytes after the size field, including the children), the
// chunk's own fields, a child count, then the children.
//
// A layout is a type with the tag, the document's fields for size and child count, and a function that lists
// the own fields. To add a field, edit the layout; reader, writer and sizes follow from it.
#pragma once

#include <algorithm>
#include <string_view>

#include "trackfile/ChunkWalkers.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// A tag as a template argument.
struct ChunkTag {
    char text[4];
    consteval ChunkTag(const char (&tag)[5]) { std::copy_n(tag, 4, text); }
};

// The base of every layout. The layout itself adds the function Fields.
template <ChunkTag tag, auto size, auto children>
struct ChunkLayout {
    static constexpr std::string_view Tag{tag.text, sizeof tag.text};
    static constexpr auto Size = size;
    static constexpr auto Children = children;
};

// The layout of most chunks: a list of records between reserved bytes.
template <ChunkTag tag, auto size, auto children, auto records>
struct ListLayout : ChunkLayout<tag, size, children> {
    template <class Walk>
    static void Fields(Walk& walk, RecordFor<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Count(track.*records);
        Records(walk, track.*records);
        walk.Reserved(16);
    }
};

// Reads a chunk whose tag has been read, without its children.
template <class Layout>
void ReadChunk(ReadCursor& at, TrackDocument& track) {
    track.*Layout::Size = ReadI32(at);
    FieldReader reader(at);
    Layout::Fields(reader, track);
    track.*Layout::Children = ReadI32(at);
}

// Writes the chunk with its tag but without its children.
template <class Layout>
void WriteChunk(WriteCursor& at, const TrackDocument& track) {
    WriteTag(at, Layout::Tag);
    WriteI32(at, track.*Layout::Size);
    FieldWriter writer(at);
    Layout::Fields(writer, track);
    WriteI32(at, track.*Layout::Children);
}

// The bytes of the chunk's own fields and its child count.
template <class Layout>
std::int64_t MeasureChunk(const TrackDocument& track) {
    FieldMeasurer measurer;
    Layout::Fields(measurer, track);
    measurer.I32(track.*Layout::Children);
    return measurer.length;
}

template <class Walk>
void PointFields(Walk& walk, RecordFor<Walk, Vector3D>& point) {
    walk.F32(point.x);
    walk.F32(point.y);
    walk.F32(point.z);
}

}  // namespace boreforge
