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

constexpr unsigned kPrivate = 0600, kUsual = 0666;
constexpr std::size_t kBeginning = 4;

Failure Changed() { return {.reason = "It was changed by another program.", .problem = Problem::Changed}; }

// Other programs don't take the lock. Waiting for it would be in vain: whoever has it is about to change the
// file.
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
                               .Then([&] { return rules_.asRead ? Lock(target_.Get()) : Outcome(); })
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
    target_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::ReadingAndWriting));
    if (!target_ && errno != ENOENT) return SystemFailure(errno);
    if (!target_ && rules_.asRead) return Changed();
    const std::string real = target_ ? RealPath(path) : path;
    if (real.empty()) return SystemFailure(target_ ? errno : ENOENT);
    const SplitPath split = Split(real);
    name_ = split.name;
    folder_ = OpenFile(fileCalls.open(split.folder.c_str(), OpenFor::Folder));
    return folder_ ? Outcome() : SystemFailure(errno);
}

Outcome OutputFile::CheckTarget() {
    FileInfo named;
    const bool isThere = fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) == 0;
    if (!isThere && errno != ENOENT) return SystemFailure(errno);
    if (!target_ && isThere && named.isLink) return Failure{.reason = "It is a link that leads nowhere."};
    if (isThere != bool(target_)) return Changed();
    if (!target_) return {};
    if (fileCalls.inspect(target_.Get(), &targetInfo_) != 0) return SystemFailure(errno);
    if (!targetInfo_.isRegular) return Failure{.reason = "It is not a regular file."};
    return IsSameFile(targetInfo_, named) ? Outcome() : Changed();
}

Outcome OutputFile::CheckBeginning() const {
    if (!target_ || !rules_.mayReplace) return {};
    char beginning[kBeginning];
    const std::int64_t got = ReadFully(target_.Get(), beginning, kBeginning);
    if (got < 0) return SystemFailure(errno);
    return rules_.mayReplace({beginning, static_cast<std::size_t>(got)});
}

Outcome OutputFile::CheckContent() const {
    if (!rules_.asRead) return {};
    if (targetInfo_.size != rules_.asRead->info.size) return Changed();
    if (fileCalls.rewind(target_.Get()) != 0) return SystemFailure(errno);
    std::size_t hash = 0;
    if (Outcome read = HashOpenFile(target_.Get(), hash); !read) return read;
    return hash == rules_.asRead->hash ? Outcome() : Changed();
}

Outcome OutputFile::OpenTemporary() {
    const BlockedSignals blocked;
    static int number = 0;
    std::string name;
    do {
        name = ".boreforge-" + std::to_string(ProcessId()) + "-" + std::to_string(++number) + ".tmp";
        file_ = OpenFile(
            fileCalls.createIn(folder_.Get(), name.c_str(), target_ || rules_.like ? kPrivate : kUsual));
    } while (!file_ && errno == EEXIST);
    if (file_) {
        temporary_ = std::move(name);
        NoteUnfinished(folder_.Get(), temporary_);
        buffer_ = std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize);
        return {};
    }
    Failure failure = SystemFailure(errno);
    if (failure.problem == Problem::NoAccess) failure.reason = "Its folder takes no new files.";
    return failure;
}

Outcome OutputFile::SetRights() const {
    if (target_) return CopyRights(file_.Get(), target_.Get());
    return rules_.like ? LimitRights(file_.Get(), rules_.like->info, rules_.like->hasAccessList) : Outcome();
}

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), kBufferSize);
        std::memcpy(Claim(count), bytes.data(), count);
        bytes = bytes.subspan(count);
    }
}

void OutputFile::EmptyBuffer() {
    if (written_) written_ = WriteFully(file_.Get(), {buffer_.get(), used_});
    used_ = 0;
}

Outcome OutputFile::Complete() {
    EmptyBuffer();
    if (!written_) return written_;
    // Once more, since a write takes set-id bits away.
    if (Outcome kept = SetRights(); !kept) return kept;
    if (fileCalls.flush(file_.Get()) != 0) return SystemFailure(errno);
    return file_.Close() ? Outcome() : SystemFailure(errno);
}

Outcome OutputFile::CheckTargetAgain() const {
    if (!target_) return {};  // the rename fails if there is a file now
    FileInfo now, named;
    if (fileCalls.inspect(target_.Get(), &now) != 0) return SystemFailure(errno);
    if (fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) != 0)
        return errno == ENOENT ? Changed() : SystemFailure(errno);
    return IsSameFile(now, named) && IsUnchanged(targetInfo_, now) ? CheckContent() : Changed();
}

Outcome OutputFile::PutInPlace() {
    if (Outcome same = CheckTargetAgain(); !same) return same;
    const BlockedSignals blocked;
    const auto rename = target_ ? fileCalls.replaceIn : fileCalls.renameIn;
    if (!fileCalls.replacesOpenFiles) (void)target_.Close();
    if (rename(folder_.Get(), temporary_.c_str(), name_.c_str()) != 0)
        return errno == EEXIST ? Changed() : SystemFailure(errno);
    ForgetUnfinished(folder_.Get(), temporary_);
    temporary_.clear();
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
    if (!temporary_.empty()) {
        (void)file_.Close();  // Windows doesn't remove a file that is open
        (void)fileCalls.removeIn(folder_.Get(), temporary_.c_str());
        ForgetUnfinished(folder_.Get(), temporary_);
        temporary_.clear();
    }
    file_ = OpenFile();
    target_ = OpenFile();
    folder_ = OpenFile();
    used_ = 0;
    written_ = {};
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
