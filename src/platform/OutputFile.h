// The one way in which a file is written: beside its place, flushed to the disk, renamed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/FileCalls.h"
#include "platform/Files.h"

namespace boreforge {

// A track replaces no shape, a shape no track, and anything else neither of them.
enum class FileKind { Track, Shape, Other };

// A new file that takes its place all at once: at every moment the old file or the new one is there, whole.
//
// It is written beside its place under a hidden name, flushed, renamed, and the folder is flushed. Links are
// followed by the system, and what they lead to is replaced. An old file's owner, permissions and access list
// are kept. Where the folder takes no new file, an old file that is neither track nor shape is overwritten in
// place; a failure can then leave a part of it.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // A file that was not finished is removed.
    ~OutputFile();

    // Starts a file of about `length` bytes, for which room is set aside. A file that is new gets no
    // permission that the file `like` lacks. False, with the reason in lastFileFailure, when there is
    // something at `path` that is no regular file, can't be opened for reading and writing, or is a file of
    // the user's that this one may not replace; when the old file's rights can't be kept; and when the file
    // can't be made.
    [[nodiscard]] bool Create(const std::string& path, FileKind kind, std::int64_t length = 0,
                              const FileState* like = nullptr);

    // `count` bytes of the buffer to be filled at once; they count as written. At most kBufferSize.
    std::uint8_t* Claim(std::size_t count) {
        if (kBufferSize - used_ < count) Flush();
        std::uint8_t* const place = buffer_.get() + used_;
        used_ += count;
        return place;
    }

    void Write(std::span<const std::uint8_t> bytes);

    // Puts the file in its place. With `held` the file there must still be as it was read. False, with the
    // reason in lastFileFailure, when this or any write since Create failed; the old file is then as it was.
    [[nodiscard]] bool Finish(const HeldFile* held = nullptr);

    static constexpr std::size_t kBufferSize = std::size_t{1} << 18;

  private:
    bool OpenTarget(const std::string& path);
    bool CheckTarget(FileKind kind);
    bool OpenTemporary(FileKind kind);
    bool Reserve(std::int64_t length);
    bool PutInPlace(const HeldFile* held);
    bool IsTargetUnchanged() const;
    void Flush();
    void Discard();

    OpenFile folder_;
    std::string name_;         // in that folder
    OpenFile target_;          // the old file, if there is one
    bool madeTarget_ = false;  // for a link that led nowhere
    OpenFile file_;
    std::string temporary_;  // its name; empty while an old file is overwritten in place
    std::int64_t written_ = 0;
    std::unique_ptr<std::uint8_t[]> buffer_;
    std::size_t used_ = 0;
    bool good_ = false;
};

// Replaces the file at `path`, or makes it. False as OutputFile says: the old file is then as it was.
[[nodiscard]] bool SaveWholeFile(const std::string& path, FileKind kind,
                                 std::span<const std::uint8_t> content, const HeldFile* held = nullptr,
                                 const FileState* like = nullptr);

// True when a file of this kind may be written at `path`; else the problem is IsTrack or IsShape. A file that
// can't be read is left to the writer.
[[nodiscard]] bool MayReplace(const std::string& path, FileKind kind);

}  // namespace boreforge
