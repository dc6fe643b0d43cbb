#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <array>
#include <limits>
#include <new>
#include <string_view>

#include "platform/OutputFile.h"
#include "trackfile/TrackChunks.h"

namespace boreforge {

TrackDocument TrackFile;
TrackFileOnDisk TrackOnDisk;

namespace {

constexpr std::string_view kExtension = ".zrtrack";
constexpr std::int32_t kTagAndSizeBytes = 8;
// A chunk of a kind that isn't known is skipped to its end: as many bytes behind its size field as that says.
constexpr std::int32_t kForeignChunkExtraBytes = 0;

// One row for each chunk kind, in the order and the nesting of a saved file.
struct ChunkKind {
    std::string_view tag;
    int depth;
    void (*read)(ReadCursor&, TrackDocument&);
    void (*write)(Bytes&, const TrackDocument&);
    std::int64_t (*count)(const TrackDocument&);
    std::int32_t TrackDocument::*size;
    std::int32_t TrackDocument::*children;
};

using D = TrackDocument;
constexpr std::array<ChunkKind, 15> kChunkTree{{
    {"ZPHR", 0, ReadZphrChunk, WriteZphrChunk, CountZphrChunk, &D::ZphrSize, &D::ZphrChildren},
    {"TRCK", 1, ReadTrckChunk, WriteTrckChunk, CountTrckChunk, &D::TrckSize, &D::TrckChildren},
    {"INFO", 2, ReadInfoChunk, WriteInfoChunk, CountInfoChunk, &D::InfoSize, &D::InfoChildren},
    {"BEZR", 2, ReadBezrChunk, WriteBezrChunk, CountBezrChunk, &D::BezrSize, &D::BezrChildren},
    {"SEGM", 2, ReadSegmChunk, WriteSegmChunk, CountSegmChunk, &D::SegmSize, &D::SegmChildren},
    {"SUPP", 2, ReadSuppChunk, WriteSuppChunk, CountSuppChunk, &D::SuppSize, &D::SuppChildren},
    {"FUND", 3, ReadFundChunk, WriteFundChunk, CountFundChunk, &D::FundSize, &D::FundChildren},
    {"RASC", 3, ReadRascChunk, WriteRascChunk, CountRascChunk, &D::RascSize, &D::RascChildren},
    {"FREN", 3, ReadFrenChunk, WriteFrenChunk, CountFrenChunk, &D::FrenSize, &D::FrenChildren},
    {"TUBE", 3, ReadTubeChunk, WriteTubeChunk, CountTubeChunk, &D::TubeSize, &D::TubeChildren},
    {"CATW", 3, ReadCatwChunk, WriteCatwChunk, CountCatwChunk, &D::CatwSize, &D::CatwChildren},
    {"SCEN", 1, ReadScenChunk, WriteScenChunk, CountScenChunk, &D::ScenSize, &D::ScenChildren},
    {"SCOB", 2, ReadScobChunk, WriteScobChunk, CountScobChunk, &D::ScobSize, &D::ScobChildren},
    {"TERA", 1, ReadTeraChunk, WriteTeraChunk, CountTeraChunk, &D::TeraSize, &D::TeraChildren},
    {"ENVC", 1, ReadEnvcChunk, WriteEnvcChunk, CountEnvcChunk, &D::EnvcSize, &D::EnvcChildren},
}};

// Every chunk is written in every case, except the terrain of a track that has none.
bool IsWritten(const ChunkKind& kind) { return kind.tag != "TERA" || TrackFile.HasTerrain; }

bool HasTrackExtension(const std::string& path) {
    return path.size() >= kExtension.size() &&
           ToLowerAscii(path.substr(path.size() - kExtension.size())) == kExtension;
}

// The kind of the chunk with this tag, or nullptr. The root opens a file and stands nowhere else.
const ChunkKind* KindBelowRoot(std::string_view tag) {
    for (std::size_t i = 1; i < kChunkTree.size(); ++i)
        if (kChunkTree[i].tag == tag) return &kChunkTree[i];
    return nullptr;
}

void SkipForeignChunk(ReadCursor& at) {
    const std::int32_t size = ReadI32(at);
    SkipBytes(at, size);
    SkipBytes(at, kForeignChunkExtraBytes);
}

// Walks the chunks of a file from its first byte. The nesting shows in nothing but the number of chunks still
// to come, to which each chunk adds its children; sizes of known chunks are not needed.
bool ReadChunks(ReadCursor& at) {
    if (ReadTag(at) != kChunkTree[0].tag) return false;
    ReadZphrChunk(at, TrackFile);
    std::int64_t remaining = TrackFile.ZphrChildren;
    if (remaining < 0) return false;
    while (remaining >= 1 && !at.failed) {
        const ChunkKind* const kind = KindBelowRoot(ReadTag(at));
        if (kind) {
            kind->read(at, TrackFile);
            const std::int32_t children = TrackFile.*kind->children;
            if (children < 0) return false;
            remaining += children;
        } else {
            SkipForeignChunk(at);
        }
        --remaining;
    }
    return !at.failed;
}

}  // namespace

bool ReadTrackFile(const std::string& path) {
    if (path.empty() || !FileExists(path) || !HasTrackExtension(path)) return false;
    ResetTrackFile();
    bool good = false;
    try {
        FileState state;
        if (ReadWholeFile(path, TrackBytes, kTrackBeginning, &state)) {
            ReadCursor at{TrackBytes};
            good = ReadChunks(at);
        }
        TrackOnDisk = {path, state};
    } catch (const std::bad_alloc&) {
        good = false;
    }
    if (good)
        TrackBytes.resize(
            1);  // the memory stays for the save: to touch new memory would take longer than the save
    else
        ResetTrackFile();
    return good;
}

bool WriteTrackFile(const std::string& path, const HeldFile* held) {
    if (!ComputeChunkSizes()) return Fail(FileProblem::TooLarge);
    bool good = false;
    try {
        TrackBytes.clear();
        TrackBytes.reserve(static_cast<std::size_t>(TrackFile.ZphrSize) + kTagAndSizeBytes);
        for (const ChunkKind& kind : kChunkTree)
            if (IsWritten(kind)) kind.write(TrackBytes, TrackFile);
        good = SaveWholeFile(TrackSavePath(path), FileKind::Track, TrackBytes, held,
                             TrackOnDisk.Path.empty() ? nullptr : &TrackOnDisk.State);
    } catch (const std::bad_alloc&) {
        good = false;
    }
    TrackBytes.resize(1);
    return good;
}

std::string TrackSavePath(const std::string& path) {
    return HasTrackExtension(path) ? path : path + std::string(kExtension);
}

void ResetTrackFile() {
    TrackFile = TrackDocument();
    TrackOnDisk = {};
    TrackBytes = Bytes(1);
}

bool ComputeChunkSizes() {
    std::array<std::int64_t, kChunkTree.size()> size{};
    for (std::size_t i = kChunkTree.size(); i-- > 0;) {
        const ChunkKind& kind = kChunkTree[i];
        if (!IsWritten(kind)) continue;
        size[i] = kind.count(TrackFile);
        std::int32_t children = 0;
        for (std::size_t j = i + 1; j < kChunkTree.size() && kChunkTree[j].depth > kind.depth; ++j) {
            if (kChunkTree[j].depth != kind.depth + 1 || !IsWritten(kChunkTree[j])) continue;
            size[i] += kTagAndSizeBytes + size[j];
            ++children;
        }
        TrackFile.*kind.children = children;
        TrackFile.*kind.size = static_cast<std::int32_t>(size[i]);
    }
    return size[0] <= std::numeric_limits<std::int32_t>::max() - kTagAndSizeBytes;
}

}  // namespace boreforge
