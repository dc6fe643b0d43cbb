#include "trackfile/mZephyrail_TrackIO_1_3.h"

#include <array>
#include <cerrno>
#include <limits>
#include <span>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/FileTags.h"
#include "base/Text.h"
#include "platform/Paths.h"
#include "trackfile/HeaderChunks.h"
#include "trackfile/PathChunks.h"
#include "trackfile/SceneryChunks.h"
#include "trackfile/StructureChunks.h"

namespace boreforge {

TrackDocument TrackFile;
TrackFileOnDisk TrackOnDisk;

namespace {

constexpr std::int32_t kTagAndSizeBytes = 8;

// A chunk's entry in the tree, made from its layout.
struct ChunkKind {
    int depth;
    std::string_view tag;
    std::int32_t TrackDocument::*size;
    std::int32_t TrackDocument::*children;
    void (*read)(ReadCursor&, TrackDocument&);
    void (*write)(WriteCursor&, const TrackDocument&);
    std::int64_t (*measure)(const TrackDocument&);
};

template <class Layout>
constexpr ChunkKind AtDepth(int depth) {
    return {depth,
            Layout::Tag,
            Layout::Size,
            Layout::Children,
            ReadChunk<Layout>,
            WriteChunk<Layout>,
            MeasureChunk<Layout>};
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

// The kind with this tag, or nullptr. The root is only known at the start of a file.
const ChunkKind* KindBelowRoot(std::string_view tag) {
    for (const ChunkKind& kind : std::span(kChunkTree).subspan(1))
        if (kind.tag == tag) return &kind;
    return nullptr;
}

void SkipForeignChunk(ReadCursor& at) {
    const std::int32_t size = ReadI32(at);
    SkipBytes(at, size);
}

// Why the chunk that begins at byte `start` can't be read. A known chunk's size field is otherwise ignored;
// here it shows whether the file was cut short or is damaged.
Failure ChunkFailure(const std::string& tag, std::ptrdiff_t start, const ReadCursor& at) {
    const std::ptrdiff_t available = std::ssize(TrackBytes) - start;
    const std::string ofChunk = " of chunk \"" + ToOneLine(tag) + "\".";
    if (tag.empty())
        return {.reason = "It ends at byte " + std::to_string(start) + ", where another chunk is due."};
    if (available < kTagAndSizeBytes ||
        BigEndianAt(TrackBytes.data() + start + 4) > available - kTagAndSizeBytes)
        return {.reason = "It ends at byte " + std::to_string(available) + ofChunk};
    return {.reason = "It is damaged at byte " + std::to_string(at.position - start) + ofChunk};
}

// Reads the chunks of a file from its first byte. The nesting isn't checked: each chunk only adds its child
// count to the number of chunks still to read.
Outcome ReadChunks(ReadCursor& at) {
    if (ReadTag(at) != ZphrLayout::Tag) return Failure{.reason = "It is not a track."};
    ReadZphrChunk(at, TrackFile);
    std::int64_t remaining = TrackFile.ZphrChildren;
    if (at.failed || remaining < 0) return ChunkFailure("ZPHR", 0, at);
    for (; remaining >= 1; --remaining) {
        const std::ptrdiff_t start = at.position;
        const std::string tag = ReadTag(at);
        const ChunkKind* const kind = KindBelowRoot(tag);
        if (kind)
            kind->read(at, TrackFile);
        else
            SkipForeignChunk(at);
        const std::int32_t children = kind ? TrackFile.*kind->children : 0;
        if (at.failed || children < 0) return ChunkFailure(tag, start, at);
        remaining += children;
        TrackOnDisk.foreignChunks += kind ? 0 : 1;
        if (tag == TeraLayout::Tag) TrackFile.HasTerrain = kTrue;
    }
    TrackOnDisk.bytesAfterEnd = at.Remaining();
    return {};
}

// Fills TrackBytes. Needs the Size fields that ComputeChunkSizes sets.
void FillTrackBytes() {
    TrackBytes.clear();
    TrackBytes.resize(TrackFile.ZphrSize + kTagAndSizeBytes);
    WriteCursor at{TrackBytes};
    for (const ChunkKind& kind : kChunkTree)
        if (IsWritten(kind)) kind.write(at, TrackFile);
}

}  // namespace

Outcome ReadTrackFile(const std::string& path) {
    if (path.empty()) return Failure{.reason = "There is no such file."};
    if (!HasExtension(path, kTrackExtension)) return Failure{.reason = "Its name has the wrong extension."};
    const Failure noMemory = SystemFailure(ENOMEM);
    Bytes content;
    FileState state;
    const Outcome read = CatchingOutOfMemory([&] { return ReadWholeFile(path, content, &state); }, noMemory);
    if (!read) return read;
    ResetTrackFile();
    TrackBytes = std::move(content);
    TrackOnDisk.path = path;
    TrackOnDisk.state = state;
    ReadCursor at{TrackBytes};
    const Outcome parsed = CatchingOutOfMemory([&] { return ReadChunks(at); }, noMemory);
    if (!parsed) ResetTrackFile();
    TrackBytes.resize(1);  // keeps the capacity for the save
    return parsed;
}

Outcome WriteTrackFile(const std::string& path) {
    TrackWriter save;
    return save.Open(path).Then([&] { return save.Write(); }).Then([&] { return save.PutInPlace(); });
}

Outcome TrackWriter::Open(const std::string& path) {
    const std::string savePath = TrackSavePath(path);
    const bool wasRead = !TrackOnDisk.path.empty();
    replacesReadFile_ = wasRead && (savePath == TrackOnDisk.path || SameFile(savePath, TrackOnDisk.path));
    SaveRules rules;
    rules.mayReplace = [](std::string_view beginning) { return MayReplace(beginning, kTrackTag); };
    rules.expectedState = replacesReadFile_ ? &TrackOnDisk.state : nullptr;
    rules.permissionsOf = wasRead ? &TrackOnDisk.state : nullptr;
    return file_.Open(savePath, rules);
}

Outcome TrackWriter::Write() {
    if (!ComputeChunkSizes()) return Failure{.reason = "It would be too large."};
    FillTrackBytes();
    size_ = std::ssize(TrackBytes);
    hash_ = HashOf(TrackBytes);
    file_.Write(TrackBytes);
    TrackBytes.resize(1);
    return file_.Complete();
}

Outcome TrackWriter::PutInPlace() {
    if (Outcome placed = file_.PutInPlace(); !placed) return placed;
    std::ignore = file_.FlushFolder();  // too late to fail: the new track is in its place
    if (!replacesReadFile_) return {};
    TrackOnDisk.state.info.size = size_;
    TrackOnDisk.state.hash = hash_;
    return {};
}

std::string TrackSavePath(const std::string& path) {
    return HasExtension(path, kTrackExtension) ? path : path + std::string(kTrackExtension);
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
    std::array<Chunks, kChunkTree.size() + 1> counted;  // by depth: the chunks whose parent comes next
    // NOLINTNEXTLINE(modernize-loop-convert): clang 14 can't compile a reversed view
    for (auto kind = kChunkTree.rbegin(); kind != kChunkTree.rend(); ++kind) {
        if (!IsWritten(*kind)) continue;
        const Chunks children = std::exchange(counted[kind->depth + 1], {});
        const std::int64_t size = kind->measure(TrackFile) + children.bytes;
        TrackFile.*kind->size = static_cast<std::int32_t>(size);
        TrackFile.*kind->children = children.count;
        counted[kind->depth].bytes += kTagAndSizeBytes + size;
        ++counted[kind->depth].count;
    }
    return counted[0].bytes <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace boreforge
