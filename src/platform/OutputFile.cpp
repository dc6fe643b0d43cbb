#include "platform/OutputFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <tuple>
#include <utility>

#include "platform/FileRights.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "platform/Signals.h"

namespace boreforge {

namespace {

constexpr unsigned kPrivateMode = 0600, kDefaultMode = 0666;
constexpr std::size_t kBeginningLength = 4;

Failure Changed() { return {.reason = "It was changed by another program.", .problem = Problem::Changed}; }

// Only Boreforge takes this lock. Waiting for it would be pointless: its holder is about to replace the file.
Outcome Lock(int file) {
    if (fileCalls.lock(file) == 0 || errno != EWOULDBLOCK) return {};  // or the file system has no locks
    return Failure{.reason = "Another program is saving it right now.", .problem = Problem::InUse};
}

}  // namespace

OutputFile::~OutputFile() { Close(); }

Outcome OutputFile::Open(const std::string& path, const SaveRules& rules) {
    Close();
    rules_ = rules;
    const Outcome opened = FindTarget(path)
                               .Then([&] { return rules_.expectedState ? Lock(oldFile_.Get()) : Outcome(); })
                               .Then([&] { return CheckTarget(); })
                               .Then([&] { return CheckBeginning(); })
                               .Then([&] { return CheckContent(); })
                               .Then([&] { return OpenTemporary(); })
                               .Then([&] { return SetRights(); });
    if (!opened) Close();
    return opened;
}

// Opens the file at the path, once, and the folder that it is really in. From then on only names in that
// folder are used, so that nobody can redirect the save by changing a link.
Outcome OutputFile::FindTarget(const std::string& path) {
    oldFile_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::ReadingAndWriting));
    if (!oldFile_ && errno != ENOENT) return SystemFailure(errno);
    if (!oldFile_ && rules_.expectedState) return Changed();
    const std::string real = oldFile_ ? RealPath(path) : path;
    if (real.empty()) return SystemFailure(oldFile_ ? errno : ENOENT);
    const SplitPath split = Split(real);
    name_ = split.name;
    folder_ = OpenFile(fileCalls.open(split.folder.c_str(), OpenFor::Folder));
    return folder_ ? Outcome() : SystemFailure(errno);
}

Outcome OutputFile::CheckTarget() {
    FileInfo named;
    const bool isThere = fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) == 0;
    if (!isThere && errno != ENOENT) return SystemFailure(errno);
    if (!oldFile_ && isThere && named.isLink) return Failure{.reason = "It is a link that leads nowhere."};
    if (isThere != bool(oldFile_)) return Changed();
    if (!oldFile_) return {};
    if (fileCalls.inspect(oldFile_.Get(), &oldInfo_) != 0) return SystemFailure(errno);
    if (!oldInfo_.isRegular) return Failure{.reason = "It is not a regular file."};
    return IsSameFile(oldInfo_, named) ? Outcome() : Changed();
}

Outcome OutputFile::CheckBeginning() const {
    if (!oldFile_ || !rules_.mayReplace) return {};
    char beginning[kBeginningLength];
    const std::int64_t got = ReadFully(oldFile_.Get(), beginning, kBeginningLength);
    if (got < 0) return SystemFailure(errno);
    return rules_.mayReplace({beginning, static_cast<std::size_t>(got)});
}

Outcome OutputFile::CheckContent() const {
    if (!rules_.expectedState) return {};
    if (oldInfo_.size != rules_.expectedState->info.size) return Changed();
    if (fileCalls.rewind(oldFile_.Get()) != 0) return SystemFailure(errno);
    std::size_t hash = 0;
    if (Outcome read = HashOpenFile(oldFile_.Get(), hash); !read) return read;
    return hash == rules_.expectedState->hash ? Outcome() : Changed();
}

Outcome OutputFile::OpenTemporary() {
    const BlockedSignals blocked;
    static int number = 0;
    std::string name;
    do {
        name = ".boreforge-" + std::to_string(ProcessId()) + "-" + std::to_string(++number) + ".tmp";
        newFile_ = OpenFile(fileCalls.createIn(
            folder_.Get(), name.c_str(), oldFile_ || rules_.permissionsOf ? kPrivateMode : kDefaultMode));
    } while (!newFile_ && errno == EEXIST);
    if (newFile_) {
        newName_ = std::move(name);
        NoteUnfinished(folder_.Get(), newName_);
        buffer_ = std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize);
        return {};
    }
    Failure failure = SystemFailure(errno);
    if (failure.problem == Problem::NoAccess) failure.reason = "Its folder takes no new files.";
    return failure;
}

Outcome OutputFile::SetRights() const {
    if (oldFile_) return CopyRights(newFile_.Get(), oldFile_.Get());
    return rules_.permissionsOf ? LimitRights(newFile_.Get(), *rules_.permissionsOf) : Outcome();
}

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), kBufferSize);
        std::memcpy(Claim(count), bytes.data(), count);
        bytes = bytes.subspan(count);
    }
}

void OutputFile::FlushBuffer() {
    if (writeOutcome_) writeOutcome_ = WriteFully(newFile_.Get(), {buffer_.get(), used_});
    used_ = 0;
}

Outcome OutputFile::Complete() {
    FlushBuffer();
    if (!writeOutcome_) return writeOutcome_;
    // Again, since writing clears the set-id bits.
    if (Outcome kept = SetRights(); !kept) return kept;
    if (fileCalls.flush(newFile_.Get()) != 0) return SystemFailure(errno);
    return newFile_.Close() ? Outcome() : SystemFailure(errno);
}

Outcome OutputFile::CheckTargetAgain() const {
    if (!oldFile_) return {};  // if a file has appeared since, the rename fails
    FileInfo now, named;
    if (fileCalls.inspect(oldFile_.Get(), &now) != 0) return SystemFailure(errno);
    if (fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) != 0)
        return errno == ENOENT ? Changed() : SystemFailure(errno);
    return IsSameFile(now, named) && IsUnchanged(oldInfo_, now) ? CheckContent() : Changed();
}

Outcome OutputFile::PutInPlace() {
    if (Outcome same = CheckTargetAgain(); !same) return same;
    const BlockedSignals blocked;
    const auto rename = oldFile_ ? fileCalls.replaceIn : fileCalls.renameIn;
    if (!fileCalls.canReplaceOpenFiles) (void)oldFile_.Close();
    if (rename(folder_.Get(), newName_.c_str(), name_.c_str()) != 0)
        return errno == EEXIST ? Changed() : SystemFailure(errno);
    ForgetUnfinished(folder_.Get(), newName_);
    newName_.clear();
    return {};
}

Outcome OutputFile::FlushFolder() const {
    if (fileCalls.flushFolder(folder_.Get()) == 0) return {};
    // Some file systems can't, and some folders may not be read.
    const bool cant = errno == EINVAL || errno == ENOTSUP || errno == EACCES || errno == EPERM;
    return cant ? Outcome() : SystemFailure(errno);
}

// Removes what is unfinished and closes everything.
void OutputFile::Close() {
    const BlockedSignals blocked;
    if (!newName_.empty()) {
        (void)newFile_.Close();  // Windows doesn't remove a file that is open
        (void)fileCalls.removeIn(folder_.Get(), newName_.c_str());
        ForgetUnfinished(folder_.Get(), newName_);
        newName_.clear();
    }
    newFile_ = OpenFile();
    oldFile_ = OpenFile();
    folder_ = OpenFile();
    used_ = 0;
    writeOutcome_ = {};
}

Outcome SaveFile(const std::string& path, const SaveRules& rules,
                 const std::function<Outcome(OutputFile&)>& write) {
    OutputFile file;
    const Outcome saved = file.Open(path, rules)
                              .Then([&] { return write(file); })
                              .Then([&] { return file.Complete(); })
                              .Then([&] { return file.PutInPlace(); });
    if (saved) std::ignore = file.FlushFolder();  // too late to fail: the file is in its place
    return saved;
}

Outcome SaveWholeFile(const std::string& path, std::span<const std::uint8_t> content,
                      const SaveRules& rules) {
    return SaveFile(path, rules, [&](OutputFile& file) {
        file.Write(content);
        return Outcome();
    });
}

}  // namespace boreforge
