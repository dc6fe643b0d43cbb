#include "platform/Files.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <thread>

#include "base/Values.h"
#include "platform/FileRights.h"

namespace boreforge {

namespace {

constexpr std::int64_t kMaxFileSize = 0x7FFFFFFF;  // positions in a file are signed 32-bit numbers
constexpr std::size_t kPiece = std::size_t{1} << 18;

// A fast hash, not a cryptographic one. Each step is one-to-one in the sum and in the word (xor, then a
// product with an odd number), so that a single changed word always changes the hash.
class ContentHash {
  public:
    // Every piece but the last must be a multiple of 32 bytes long.
    void Add(const std::uint8_t* bytes, std::size_t count) {
        length_ += count;
        for (; count >= 32; bytes += 32, count -= 32)
            for (std::size_t lane = 0; lane < 4; ++lane)
                lanes_[lane] = Step(lanes_[lane], bytes + 8 * lane, 8);
        for (; count > 0; bytes += std::min<std::size_t>(count, 8), count -= std::min<std::size_t>(count, 8))
            lanes_[0] = Step(lanes_[0], bytes, std::min<std::size_t>(count, 8));
    }
    std::uint64_t Value() const {
        std::uint64_t value = length_;
        for (const std::uint64_t lane : lanes_)
            value = std::rotl((value ^ lane) * kFactor, 31);
        return value;
    }

  private:
    static constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio, odd
    static std::uint64_t Step(std::uint64_t sum, const std::uint8_t* bytes, std::size_t count) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, count);
        return std::rotl((sum ^ word) * kFactor, 29);
    }
    std::uint64_t lanes_[4] = {1, 2, 3, 4};
    std::uint64_t length_ = 0;
};

bool SameTimes(const FileInfo& a, const FileInfo& b) {
    return a.modified == b.modified && a.changed == b.changed;
}

bool IsUntouched(const FileInfo& a, const FileInfo& b) {
    return IsSameFile(a, b) && a.size == b.size && SameTimes(a, b);
}

// FAT, the coarsest common file system, stores times in steps of two seconds.
bool TimesTell(const FileInfo& info) {
    using namespace std::chrono;
    const auto now = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
    return now - std::max(info.modified, info.changed) > nanoseconds(seconds(2)).count();
}

bool BeginsWith(std::string_view beginning, const Bytes& content) {
    const std::string start(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(beginning.size()));
    return ToUpperAscii(start) == beginning;
}

enum class ReadResult { Good, Failed, Changed };

// One attempt to read a file, which may change meanwhile.
ReadResult ReadOnce(const std::string& path, Bytes& content, std::string_view beginning, FileInfo& before,
                    bool& hasAccessList) {
    const auto failed = [](FileProblem problem) {
        problem == FileProblem::System ? FailBySystem() : Fail(problem);
        return ReadResult::Failed;
    };
    content.clear();
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Reading));
    if (!file) return failed(errno == ENOENT ? FileProblem::Missing : FileProblem::System);
    if (fileCalls.inspect(file.Get(), &before) != 0) return failed(FileProblem::System);
    if (!before.isRegular) return failed(FileProblem::NotRegular);
    if (before.size > kMaxFileSize) return failed(FileProblem::TooLarge);

    const auto size = static_cast<std::size_t>(before.size);
    const std::size_t head = beginning.size();
    if (size < head) return failed(FileProblem::WrongBeginning);
    content.resize(head);
    if (!ReadFully(file.Get(), content.data(), head)) return failed(FileProblem::System);
    if (!BeginsWith(beginning, content)) return failed(FileProblem::WrongBeginning);
    content.reserve(size + 1);
    content.resize(size);
    if (!ReadFully(file.Get(), content.data() + head, size - head))
        return errno == 0 ? ReadResult::Changed : failed(FileProblem::System);

    FileInfo after;
    if (fileCalls.inspect(file.Get(), &after) != 0) return failed(FileProblem::System);
    hasAccessList = HasAccessList(file.Get());
    return IsUntouched(before, after) ? ReadResult::Good : ReadResult::Changed;
}

// True if the open file still has the content that `state` describes.
bool HasContent(int file, const FileState& state) {
    const auto piece = std::make_unique_for_overwrite<std::uint8_t[]>(kPiece);
    ContentHash hash;
    for (std::int64_t left = state.info.size; left > 0;) {
        const auto count = static_cast<std::size_t>(std::min<std::int64_t>(left, kPiece));
        if (!ReadFully(file, piece.get(), count)) return false;
        hash.Add(piece.get(), count);
        left -= static_cast<std::int64_t>(count);
    }
    return hash.Value() == state.hash;
}

// Waits for another instance to finish its save.
bool WaitForLock(int file) {
    using namespace std::chrono;
    const auto end = steady_clock::now() + seconds(2);
    while (fileCalls.lock(file) != 0) {
        if (errno == EINTR) continue;
        if (errno != EWOULDBLOCK) return true;  // this file system has no locks
        if (steady_clock::now() >= end) return Fail(FileProblem::InUse);
        std::this_thread::sleep_for(milliseconds(20));
    }
    return true;
}

bool InspectPath(const std::string& path, FileInfo& info) {
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Reading));
    return file && fileCalls.inspect(file.Get(), &info) == 0;
}

}  // namespace

bool ReadFully(int file, void* bytes, std::size_t count) {
    auto* place = static_cast<std::uint8_t*>(bytes);
    while (count > 0) {
        errno = 0;
        const std::int64_t got = fileCalls.read(file, place, count);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        place += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

bool WriteFully(int file, const void* bytes, std::size_t count) {
    const auto* place = static_cast<const std::uint8_t*>(bytes);
    while (count > 0) {
        // Hashing pieces that are still in the cache is several times as fast as hashing everything at the
        // end.
        const std::int64_t written = fileCalls.write(file, place, std::min(count, kPiece));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        place += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

bool ReadWholeFile(const std::string& path, Bytes& content, std::string_view beginning, FileState* state) {
    FileInfo info;
    bool hasAccessList = false;
    ReadResult result = ReadResult::Changed;
    for (int attempt = 0; attempt < 3 && result == ReadResult::Changed; ++attempt)
        result = ReadOnce(path, content, beginning, info, hasAccessList);
    if (result != ReadResult::Good) {
        content.clear();
        return result == ReadResult::Changed ? Fail(FileProblem::KeepsChanging) : false;
    }
    if (state) {
        ContentHash hash;
        hash.Add(content.data(), content.size());
        *state = {info, hash.Value(), TimesTell(info), hasAccessList};
    }
    return true;
}

bool HeldFile::Hold(const std::string& path, const FileState& asRead) {
    asRead_ = asRead;
    FileInfo held, now;
    do {
        file_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::ReadingAndWriting));
        if (!file_) return errno == ENOENT ? Fail(FileProblem::Changed) : FailBySystem();
        if (!WaitForLock(file_.Get())) return false;
        if (fileCalls.inspect(file_.Get(), &held) != 0) return FailBySystem();
        // While we waited, the other instance may have replaced the file.
    } while (InspectPath(path, now) && !IsSameFile(held, now));
    return IsUnchanged(file_.Get());
}

bool HeldFile::IsUnchanged(int target) const {
    FileInfo held, replaced;
    if (fileCalls.inspect(file_.Get(), &held) != 0 || fileCalls.inspect(target, &replaced) != 0)
        return FailBySystem();
    if (!IsSameFile(held, replaced) || held.size != asRead_.info.size) return Fail(FileProblem::Changed);
    if (asRead_.timesTell && IsUntouched(asRead_.info, held)) return true;
    if (fileCalls.rewind(file_.Get()) != 0) return FailBySystem();
    return HasContent(file_.Get(), asRead_) || Fail(FileProblem::Changed);
}

}  // namespace boreforge
