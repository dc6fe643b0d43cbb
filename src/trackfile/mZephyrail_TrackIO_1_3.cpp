#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include "platform/OutputFile.h"
#include "platform/Paths.h"
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
// Bytes to skip after an unknown chunk, in addition to its size. None: sizes count up to the chunk's end.
constexpr std::int32_t kForeignChunkExtraBytes = 0;

// A chunk's entry in the tree, made from its layout.
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

// Records why the chunk that begins at byte `start` can't be read. Only here is a known chunk's size used: it
// tells a file that was cut short from a damaged one.
bool FailInChunk(const std::string& tag, std::ptrdiff_t start, const ReadCursor& at) {
    const std::ptrdiff_t present = std::ssize(TrackBytes) - start;
    const std::string ofChunk = " of chunk \"" + tag + "\".";
    if (tag.empty())
        return FailAsDamaged("It ends at byte " + std::to_string(start) + ", where another chunk is due.");
    if (present < kTagAndSizeBytes || BitsAt(TrackBytes.data() + start + 4) > present - kTagAndSizeBytes)
        return FailAsDamaged("It ends at byte " + std::to_string(present) + ofChunk);
    return FailAsDamaged("It is damaged at byte " + std::to_string(at.position - start) + ofChunk);
}

// Reads the chunks of a file from its first byte. Nesting only determines how many chunks are still to come:
// each chunk adds its children.
bool ReadChunks(ReadCursor& at) {
    if (ReadTag(at) != ZphrLayout::Tag) return Fail(FileProblem::WrongBeginning);
    ReadZphrChunk(at, TrackFile);
    std::int64_t remaining = TrackFile.ZphrChildren;
    if (at.failed || remaining < 0) return FailInChunk("ZPHR", 0, at);
    for (; remaining >= 1; --remaining) {
        const std::ptrdiff_t start = at.position;
        const std::string tag = ReadTag(at);
        const ChunkKind* const kind = KindBelowRoot(tag);
        if (kind)
            kind->read(at, TrackFile);
        else
            SkipForeignChunk(at);
        const std::int32_t children = kind ? TrackFile.*kind->children : 0;
        if (at.failed || children < 0) return FailInChunk(tag, start, at);
        remaining += children;
    }
    return true;
}

bool LoadTrack(const std::string& path) {
    FileState state;
    if (!ReadWholeFile(path, TrackBytes, kTrackBeginning, &state)) return false;
    TrackOnDisk = {path, state};
    ReadCursor at{TrackBytes};
    return ReadChunks(at);
}

// Needs the Size fields that ComputeChunkSizes sets.
bool SaveTrack(const std::string& path, HeldFile* held) {
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
    if (path.empty() || !FileExists(path)) return Fail(FileProblem::Missing);
    if (!HasTrackExtension(path)) return Fail(FileProblem::WrongName);
    ResetTrackFile();
    if (!IfMemorySuffices([&] { return LoadTrack(path); })) {
        ResetTrackFile();
        return false;
    }
    TrackBytes.resize(1);  // keep the capacity for the save: touching new memory takes longer than saving
    return true;
}

bool WriteTrackFile(const std::string& path, HeldFile* held) {
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
    std::array<Chunks, kChunkTree.size() + 1> counted;  // at each depth, the children of the next parent
    // NOLINTNEXTLINE(modernize-loop-convert): clang 14 can't compile a reversed view
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
