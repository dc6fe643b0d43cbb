#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <string_view>

#include "platform/FileRights.h"

namespace boreforge {

FileCalls fileCalls = SystemFileCalls();

namespace {

constexpr std::int64_t kMaxFileSize = 0x7FFFFFFF;  // positions in a file are signed 32-bit numbers

constexpr std::size_t kPieceLength = std::size_t{1} << 16;  // of a file that is hashed

// Adds a piece to a hash. An odd factor loses no bits of the hash.
std::size_t WithPiece(std::size_t hash, std::span<const std::uint8_t> piece) {
    const std::string_view text(reinterpret_cast<const char*>(piece.data()), piece.size());
    return hash * 31 + std::hash<std::string_view>()(text);
}

Failure OpenFailure() {
    if (errno == ENOENT) return {.reason = "There is no such file."};
    return SystemFailure(errno);
}

// The whole content of an open file, whose position must be 0. `after`: as it was afterwards.
Outcome ReadOpenFile(int file, Bytes& content, FileInfo& after) {
    const Failure changes{.reason = "It was being changed while it was read.", .problem = Problem::Changed};
    FileInfo before;
    if (fileCalls.inspect(file, &before) != 0) return SystemFailure(errno);
    if (!before.isRegular) return Failure{.reason = "It is not a regular file."};
    if (before.size > kMaxFileSize) return Failure{.reason = "It is too large to be read."};
    const auto size = static_cast<std::size_t>(before.size);
    content.resize(size);
    const std::int64_t got = ReadFully(file, content.data(), size);
    if (got < 0) return SystemFailure(errno);
    if (got != before.size) return changes;
    if (fileCalls.inspect(file, &after) != 0) return SystemFailure(errno);
    if (!IsUnchanged(before, after)) return changes;
    return {};
}

}  // namespace

std::int64_t ReadFully(int file, void* bytes, std::size_t count) {
    auto* const start = static_cast<std::uint8_t*>(bytes);
    std::size_t done = 0;
    while (done < count) {
        const std::int64_t got = fileCalls.read(file, start + done, count - done);
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(done);
}

Outcome WriteFully(int file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::int64_t written = fileCalls.write(file, bytes.data(), bytes.size());
        if (written < 0) return SystemFailure(errno);
        if (written == 0) return SystemFailure(EIO);  // the system gave no reason
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return {};
}

std::size_t HashOf(std::span<const std::uint8_t> content) {
    std::size_t hash = 0;
    for (; !content.empty(); content = content.subspan(std::min(content.size(), kPieceLength)))
        hash = WithPiece(hash, content.first(std::min(content.size(), kPieceLength)));
    return hash;
}

Outcome HashOpenFile(int file, std::size_t& hash) {
    std::uint8_t piece[kPieceLength];
    hash = 0;
    while (true) {
        const std::int64_t got = ReadFully(file, piece, kPieceLength);
        if (got < 0) return SystemFailure(errno);
        if (got == 0) return {};
        hash = WithPiece(hash, std::span(piece).first(static_cast<std::size_t>(got)));
    }
}

Outcome ReadWholeFile(const std::string& path, Bytes& content, FileState* state) {
    content.clear();
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Reading));
    if (!file) return OpenFailure();
    FileInfo info;
    const Outcome read = ReadOpenFile(file.Get(), content, info);
    if (!read) {
        content.clear();
        return read;
    }
    if (!state) return {};
    state->info = info;
    state->hash = HashOf(content);
    state->hasAccessList = HasAccessList(file.Get());
    return {};
}

}  // namespace boreforge
