// The chunks of a .zrtrack file, one by one.
//
// Envelope of each, big-endian: tag (4 bytes), size (the bytes behind this field up to the chunk's end,
// children included), the chunk's own fields, of which the child count is the last, then the children.
//
// ReadXxxxChunk starts behind the tag and stores the size, the own fields and the child count in the
// document; it stands on the next tag afterwards. WriteXxxxChunk writes the chunk with its tag and without
// its children. CountXxxxChunk gives the bytes of its own fields, the child count included.
#pragma once

#include <cstdint>

#include "trackfile/TrackBytes.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

// Header and info: HeaderChunks.cpp.
void ReadZphrChunk(ReadCursor& at, TrackDocument& track);
void WriteZphrChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountZphrChunk(const TrackDocument& track);
void ReadTrckChunk(ReadCursor& at, TrackDocument& track);
void WriteTrckChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountTrckChunk(const TrackDocument& track);
void ReadInfoChunk(ReadCursor& at, TrackDocument& track);
void WriteInfoChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountInfoChunk(const TrackDocument& track);

// Path and segments: PathChunks.cpp.
void ReadBezrChunk(ReadCursor& at, TrackDocument& track);
void WriteBezrChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountBezrChunk(const TrackDocument& track);
void ReadSegmChunk(ReadCursor& at, TrackDocument& track);
void WriteSegmChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountSegmChunk(const TrackDocument& track);

// Structure: StructureChunks.cpp.
void ReadSuppChunk(ReadCursor& at, TrackDocument& track);
void WriteSuppChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountSuppChunk(const TrackDocument& track);
void ReadFundChunk(ReadCursor& at, TrackDocument& track);
void WriteFundChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountFundChunk(const TrackDocument& track);
void ReadRascChunk(ReadCursor& at, TrackDocument& track);
void WriteRascChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountRascChunk(const TrackDocument& track);
void ReadFrenChunk(ReadCursor& at, TrackDocument& track);
void WriteFrenChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountFrenChunk(const TrackDocument& track);
void ReadTubeChunk(ReadCursor& at, TrackDocument& track);
void WriteTubeChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountTubeChunk(const TrackDocument& track);
void ReadCatwChunk(ReadCursor& at, TrackDocument& track);
void WriteCatwChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountCatwChunk(const TrackDocument& track);

// Surroundings: SceneryChunks.cpp. ReadTeraChunk alone sets HasTerrain.
void ReadScenChunk(ReadCursor& at, TrackDocument& track);
void WriteScenChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountScenChunk(const TrackDocument& track);
void ReadScobChunk(ReadCursor& at, TrackDocument& track);
void WriteScobChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountScobChunk(const TrackDocument& track);
void ReadTeraChunk(ReadCursor& at, TrackDocument& track);
void WriteTeraChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountTeraChunk(const TrackDocument& track);
void ReadEnvcChunk(ReadCursor& at, TrackDocument& track);
void WriteEnvcChunk(Bytes& bytes, const TrackDocument& track);
std::int64_t CountEnvcChunk(const TrackDocument& track);

}  // namespace boreforge
