// What every chunk has around its own fields: the tag, the size, the child count.
//
// A chunk's layout is a type with the chunk's tag, the places of its size and child count in the document,
// and the walk over the fields between the two.
#pragma once

#include "trackfile/ChunkWalkers.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// The fields of most chunks: a list of records between reserved bytes.
template <auto RecordsOf>
struct ListFields {
    template <class Walk>
    static void Fields(Walk& walk, In<Walk, TrackDocument>& track) {
        walk.Reserved(16);
        walk.Count(track.*RecordsOf);
        walk.Records(track.*RecordsOf);
        walk.Reserved(16);
    }
};

template <class Layout>
void ReadChunk(ReadCursor& at, TrackDocument& track) {
    track.*Layout::Size = ReadI32(at);
    FieldReader reader(at);
    Layout::Fields(reader, track);
    track.*Layout::Children = ReadI32(at);
}

template <class Layout>
void WriteChunk(Bytes& bytes, const TrackDocument& track) {
    WriteTag(bytes, Layout::Tag);
    WriteI32(bytes, track.*Layout::Size);
    FieldWriter writer(bytes);
    Layout::Fields(writer, track);
    WriteI32(bytes, track.*Layout::Children);
}

template <class Layout>
std::int64_t CountChunk(const TrackDocument& track) {
    FieldCounter counter;
    Layout::Fields(counter, track);
    counter.I32(track.*Layout::Children);
    return counter.count;
}

template <class Walk>
void PointFields(Walk& walk, In<Walk, Vector3D>& point) {
    walk.F32(point.x);
    walk.F32(point.y);
    walk.F32(point.z);
}

}  // namespace boreforge
