#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include "platform/OutputFile.h"
#include "trackfile/HeaderChunks.h"
#include "trackfile/PathChunks.h"
#include "trackfile/SceneryChunks.h"
#include "trackfile/StructureChunks.h"

namespace boreforge {

TrackDocument TrackFile;
TrackFileOnDisk TrackOnDisk;

namespace {

constexpr std::string_view kExtension = ".zrtrack";
constexpr std::int32_t kTagAndSizeBytes = 8;
// A chunk with an unknown tag is skipped by its size and this: our own sizes, too, count up to the chunk's
// end.
constexpr std::int32_t kForeignChunkExtraBytes = 0;

// What the tree needs of a chunk, made from its layout.
struct ChunkKind {
    int depth;
    std::string_view tag;
    std::int32_t TrackDocument::*size;
    std::int32_t TrackDocument::*children;
    void (*read)(ReadCursor&, TrackDocument&);
    void (*write)(WriteCursor&, const TrackDocument&);
    std::int64_t (*count)(const TrackDocument&);
};

template <class Layout>
constexpr ChunkKind AtDepth(int depth) {
    return {depth,
            Layout::Tag,
            Layout::Size,
            Layout::Children,
            ReadChunk<Layout>,
            WriteChunk<Layout>,
            CountChunk<Layout>};
}

// Every chunk, in the order and the nesting of a saved file.
// clang-format off
constexpr std::array kChunkTree{
    AtDepth<ZphrLayout>(0),
        AtDepth<TrckLayout>(1),
            AtDepth<InfoLayout>(2),
            AtDepth<BezrLayout>(2),
            AtDepth<SegmLayout>(2),
            AtDepth<SuppLayout>(2),
                AtDepth<FundLayout>(3),
                AtDepth<RascLayout>(3),
                AtDepth<FrenLayout>(3),
                AtDepth<TubeLayout>(3),
                AtDepth<CatwLayout>(3),
        AtDepth<ScenLayout>(1),
            AtDepth<ScobLayout>(2),
        AtDepth<TeraLayout>(1),
        AtDepth<EnvcLayout>(1),
};
// clang-format on

// Every chunk is always written, except the terrain of a track without one.
bool IsWritten(const ChunkKind& kind) { return kind.tag != TeraLayout::Tag || TrackFile.HasTerrain; }

bool HasTrackExtension(const std::string& path) {
    return path.size() >= kExtension.size() &&
           ToLowerAscii(path.substr(path.size() - kExtension.size())) == kExtension;
}

// The kind with this tag, or nullptr. The root is only known at the start of a file.
const ChunkKind* KindBelowRoot(std::string_view tag) {
    for (const ChunkKind& kind : std::span(kChunkTree).subspan(1))
        if (kind.tag == tag) return &kind;
    return nullptr;
}

void SkipForeignChunk(ReadCursor& at) {
    const std::int32_t size = ReadI32(at);
    SkipBytes(at, size);
    SkipBytes(at, kForeignChunkExtraBytes);
}

// Walks the chunks of a file from its first byte. Nesting matters only for how many chunks are still to come:
// each chunk adds its children. The sizes of known chunks are not needed.
bool ReadChunks(ReadCursor& at) {
    if (ReadTag(at) != ZphrLayout::Tag) return false;
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

bool LoadTrack(const std::string& path) {
    FileState state;
    if (!ReadWholeFile(path, TrackBytes, kTrackBeginning, &state)) return false;
    TrackOnDisk = {path, state};
    ReadCursor at{TrackBytes};
    return ReadChunks(at);
}

// The Size fields are those of a save.
bool SaveTrack(const std::string& path, const HeldFile* held) {
    TrackBytes.clear();
    TrackBytes.resize(TrackFile.ZphrSize + kTagAndSizeBytes);
    WriteCursor at{TrackBytes};
    for (const ChunkKind& kind : kChunkTree)
        if (IsWritten(kind)) kind.write(at, TrackFile);
    return SaveWholeFile(TrackSavePath(path), FileKind::Track, TrackBytes, held,
                         TrackOnDisk.Path.empty() ? nullptr : &TrackOnDisk.State);
}

}  // namespace

bool ReadTrackFile(const std::string& path) {
    if (path.empty() || !FileExists(path) || !HasTrackExtension(path)) return false;
    ResetTrackFile();
    if (!IfMemorySuffices([&] { return LoadTrack(path); })) {
        ResetTrackFile();
        return false;
    }
    TrackBytes.resize(1);  // the capacity stays for the save: touching new memory takes longer than the save
    return true;
}

bool WriteTrackFile(const std::string& path, const HeldFile* held) {
    if (!ComputeChunkSizes()) return Fail(FileProblem::TooLarge);
    const bool saved = IfMemorySuffices([&] { return SaveTrack(path, held); });
    TrackBytes.resize(1);
    return saved;
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
    struct Chunks {
        std::int64_t bytes = 0;
        std::int32_t count = 0;
    };
    std::array<Chunks, kChunkTree.size() + 1> counted;  // at each depth, of the parent that comes next
    for (auto kind = kChunkTree.rbegin(); kind != kChunkTree.rend(); ++kind) {
        if (!IsWritten(*kind)) continue;
        const Chunks children = std::exchange(counted[kind->depth + 1], {});
        const std::int64_t size = kind->count(TrackFile) + children.bytes;
        TrackFile.*kind->size = static_cast<std::int32_t>(size);
        TrackFile.*kind->children = children.count;
        counted[kind->depth].bytes += kTagAndSizeBytes + size;
        ++counted[kind->depth].count;
    }
    return counted[0].bytes <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace boreforge
