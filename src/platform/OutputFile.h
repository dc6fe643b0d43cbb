// How every file is written: beside the old one, flushed to the disk, renamed over it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/Outcome.h"
#include "platform/FileCalls.h"
#include "platform/Files.h"

namespace boreforge {

// The conditions of a save. Null: not checked.
struct SaveRules {
    // Whether an old file may be replaced. `beginning` is its first four bytes, or all of a shorter file.
    std::function<Outcome(std::string_view beginning)> mayReplace = {};
    // The old file must be there and still have the content that it had when it was read, and no other of our
    // programs may be saving it. It is locked against them until the save is over.
    const FileState* expectedState = nullptr;
    // If there is no old file, the new one gets only permissions that this file has.
    const FileState* permissionsOf = nullptr;
};

// A new file that replaces the old one all at once.
//
// It is written under a hidden name in the same folder, flushed, and renamed. It has exactly the owner,
// group, permissions and access list of the old file. Links are followed, and the file that they lead to is
// replaced. A file that another program changed or made since Open is never replaced.
//
// A failure leaves the old file as it was and removes the new one. The steps below come in this order; after
// a failure only Open may be called.
class OutputFile {
  public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // Removes an unfinished file.
    ~OutputFile();

    // Checks everything that could prevent the save, and creates the new file. Fails if what is at `path`
    // isn't a regular file, can't be opened for reading and writing, or breaks the rules; if a link leads
    // nowhere; if the folder takes no new file; and if the old file's rights can't be kept.
    Outcome Open(const std::string& path, const SaveRules& rules = {});

    // Appends `count` bytes, at most kBufferSize, and returns where they are. The caller must fill them
    // before the next call.
    std::uint8_t* Claim(std::size_t count) {
        if (kBufferSize - used_ < count) FlushBuffer();
        std::uint8_t* const start = buffer_.get() + used_;
        used_ += count;
        return start;
    }
    void Write(std::span<const std::uint8_t> bytes);

    // Completes the new file on the disk. Also fails if a write since Open failed.
    Outcome Complete();

    // Puts the new file in its place.
    Outcome PutInPlace();

    // Flushes the folder, after which the file is found under its name even if the power fails.
    Outcome FlushFolder() const;

    static constexpr std::size_t kBufferSize = std::size_t{1} << 18;

  private:
    Outcome FindTarget(const std::string& path);
    Outcome CheckTarget();
    Outcome CheckBeginning() const;
    Outcome CheckContent() const;
    Outcome CheckTargetAgain() const;
    Outcome OpenTemporary();
    Outcome SetRights() const;
    void FlushBuffer();
    void Close();

    SaveRules rules_;
    OpenFile folder_;
    std::string name_;     // in that folder
    OpenFile oldFile_;     // the old file, if there is one
    FileInfo oldInfo_;     // of the old file when it was opened
    OpenFile newFile_;     // the new one
    std::string newName_;  // its name; empty if there is none
    std::unique_ptr<std::uint8_t[]> buffer_;
    std::size_t used_ = 0;
    Outcome writeOutcome_;  // the first failed write
};

// Replaces or creates the file at `path`, in the steps above, with what `write` writes. A folder that can't
// be flushed is no failure.
Outcome SaveFile(const std::string& path, const SaveRules& rules,
                 const std::function<Outcome(OutputFile&)>& write);
Outcome SaveWholeFile(const std::string& path, std::span<const std::uint8_t> content,
                      const SaveRules& rules = {});

}  // namespace boreforge
