// How every file is written: beside the old one, flushed to the disk, renamed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/FileCalls.h"
#include "platform/Files.h"

namespace boreforge {

// A track never replaces a shape, nor a shape a track, and other files replace neither.
enum class FileKind { Track, Shape, Other };

// A new file that replaces the old one all at once: at every moment one of the two is there, complete.
//
// It is written under a hidden name in the same folder, flushed and renamed, and the folder is flushed. Links
// are followed, and the file that they lead to is replaced. The old file's owner, permissions and access list
// are kept. If no file can be created in the folder, or the old one can't be replaced there, an old file that
// is neither a track nor a shape is overwritten; a failure can then leave it incomplete.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // Removes an unfinished file.
    ~OutputFile();

    // Starts a file and reserves space for about `length` bytes. A new file gets no permission that the file
    // `like` lacks. False, with the reason in lastFileFailure, if what is at `path` isn't a regular file,
    // can't be opened for reading and writing, or is a track or shape that must not be replaced; if the old
    // file's rights can't be kept; and if the file can't be created.
    [[nodiscard]] bool Create(const std::string& path, FileKind kind, std::int64_t length = 0,
                              const FileState* like = nullptr);

    // `count` bytes of the buffer, at most kBufferSize, for the caller to fill at once; they count as
    // written.
    std::uint8_t* Claim(std::size_t count) {
        if (kBufferSize - used_ < count) Flush();
        std::uint8_t* const place = buffer_.get() + used_;
        used_ += count;
        return place;
    }

    void Write(std::span<const std::uint8_t> bytes);

    // Replaces the old file. With `held`, that file must not have changed since it was read. False, with the
    // reason in lastFileFailure, if this or any write since Create failed; the old file is then unchanged.
    [[nodiscard]] bool Finish(HeldFile* held = nullptr);

    static constexpr std::size_t kBufferSize = std::size_t{1} << 18;

  private:
    [[nodiscard]] bool OpenTarget(const std::string& path);
    [[nodiscard]] bool OpenPlaceholder(const std::string& path);
    [[nodiscard]] bool FindRealPlace();
    [[nodiscard]] bool CheckTarget();
    [[nodiscard]] bool OpenTemporary(bool isPrivate);
    [[nodiscard]] bool MayRename() const;
    [[nodiscard]] bool KeepRights();
    [[nodiscard]] bool Reserve(std::int64_t length);
    [[nodiscard]] bool PutInPlace(HeldFile* held);
    [[nodiscard]] bool IsTargetUnchanged() const;
    [[nodiscard]] bool FlushFolder() const;
    void Flush();
    void Discard();

    FileKind kind_ = FileKind::Other;
    OpenFile folder_;
    std::string name_;         // in that folder
    OpenFile target_;          // the old file, if there is one
    FileInfo rights_;          // of the old file when its rights were copied
    bool madeTarget_ = false;  // an empty placeholder for a link that led nowhere
    OpenFile file_;
    std::string temporary_;  // its name; empty while an old file is overwritten in place
    std::int64_t written_ = 0;
    std::unique_ptr<std::uint8_t[]> buffer_;
    std::size_t used_ = 0;
    bool good_ = false;
};

// Replaces or creates the file at `path`. Fails as OutputFile does; the old file is then unchanged.
[[nodiscard]] bool SaveWholeFile(const std::string& path, FileKind kind,
                                 std::span<const std::uint8_t> content, HeldFile* held = nullptr,
                                 const FileState* like = nullptr);

// False if there is a track or a shape at `path` that a file of this kind must not replace; the problem is
// then IsTrack or IsShape. A file that can't be read is left to the writer to report.
[[nodiscard]] bool MayReplace(const std::string& path, FileKind kind);

}  // namespace boreforge
