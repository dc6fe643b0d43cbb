#include "platform/OutputFile.h"

#include <limits.h>

#include <cerrno>
#include <random>
#include <string_view>

#include "base/Values.h"
#include "platform/FileRights.h"
#include "platform/Signals.h"

namespace boreforge {

namespace {

constexpr unsigned kPrivate = 0600, kUsual = 0666;

// A path split into folder and name.
struct Place {
    std::string folder, name;
};

Place PlaceOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

bool IsLink(const Place& place) {
    const OpenFile folder(fileCalls.open(place.folder.c_str(), OpenFor::Folder));
    FileInfo info;
    return folder && fileCalls.inspectIn(folder.Get(), place.name.c_str(), &info) == 0 && info.isLink;
}

std::string RandomName() {
    constexpr char kDigits[] = "0123456789abcdef";
    std::random_device random;
    std::string name = ".boreforge-";
    for (int i = 0; i < 16; ++i)
        name += kDigits[random() % 16];
    return name + ".tmp";
}

bool FolderRefuses() { return errno == EACCES || errno == EPERM; }

// Whether an open file may be replaced, which its first bytes decide.
bool AllowsReplacement(int file, FileKind kind) {
    char tag[4];
    const bool hasTag = ReadFully(file, tag, sizeof tag);
    if (!hasTag && errno != 0) return FailBySystem();
    if (!hasTag) return true;  // the file is shorter
    const std::string beginning = ToUpperAscii(std::string(tag, sizeof tag));
    if (beginning == kTrackBeginning && kind != FileKind::Track) return Fail(FileProblem::IsTrack);
    if (beginning == kShapeBeginning && kind != FileKind::Shape) return Fail(FileProblem::IsShape);
    return true;
}

}  // namespace

bool MayReplace(const std::string& path, FileKind kind) {
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Reading));
    FileInfo info;
    if (!file || fileCalls.inspect(file.Get(), &info) != 0 || !info.isRegular) return true;
    return AllowsReplacement(file.Get(), kind) || lastFileFailure.problem == FileProblem::System;
}

OutputFile::~OutputFile() { Discard(); }

bool OutputFile::Create(const std::string& path, FileKind kind, std::int64_t length, const FileState* like) {
    Discard();
    good_ = OpenTarget(path) && CheckTarget(kind) && OpenTemporary(kind);
    if (good_ && target_) good_ = CopyRights(file_.Get(), target_.Get());
    if (good_ && like && (!target_ || madeTarget_))
        good_ = LimitRights(file_.Get(), like->info, like->hasAccessList);
    good_ = good_ && Reserve(length);
    if (good_)
        buffer_ = std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize);
    else
        Discard();
    return good_;
}

// Opens the file at the path, once, and the folder that it is really in. From then on only names in that
// folder are used, so that nobody can redirect the save by changing a link.
bool OutputFile::OpenTarget(const std::string& path) {
    Place place = PlaceOf(path);
    target_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::ReadingAndWriting));
    if (!target_ && errno != ENOENT) return FailBySystem();
    if (!target_ && IsLink(place)) {
        target_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::Creating));
        if (!target_) return FailBySystem();
        madeTarget_ = true;
    }
    if (target_) {
        char real[PATH_MAX];
        const std::int64_t size = fileCalls.realPath(target_.Get(), real, sizeof real);
        if (size < 0) return FailBySystem();
        place = PlaceOf(std::string(real, static_cast<std::size_t>(size)));
    }
    name_ = place.name;
    folder_ = OpenFile(fileCalls.open(place.folder.c_str(), OpenFor::Folder));
    return folder_ || FailBySystem();
}

bool OutputFile::CheckTarget(FileKind kind) {
    if (!target_) return true;
    FileInfo opened, named;
    if (fileCalls.inspect(target_.Get(), &opened) != 0) return FailBySystem();
    if (!opened.isRegular) return Fail(FileProblem::NotRegular);
    if (fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) != 0) return FailBySystem();
    if (!IsSameFile(opened, named)) return Fail(FileProblem::KeepsChanging);
    return AllowsReplacement(target_.Get(), kind);
}

bool OutputFile::OpenTemporary(FileKind kind) {
    const unsigned mode = target_ ? kPrivate : kUsual;
    const BlockedSignals blocked;
    do {
        temporary_ = RandomName();
        file_ = OpenFile(fileCalls.createIn(folder_.Get(), temporary_.c_str(), mode));
    } while (!file_ && errno == EEXIST);
    if (file_) {
        NoteUnfinished(folder_.Get(), temporary_);
        return true;
    }
    temporary_.clear();
    if (!target_ || kind != FileKind::Other || !FolderRefuses() || fileCalls.rewind(target_.Get()) != 0)
        return FailBySystem();
    file_ = std::move(target_);
    return true;
}

// Reserving space shows a full disk at once and keeps the file in one piece.
bool OutputFile::Reserve(std::int64_t length) {
    if (length <= 0 || fileCalls.reserve(file_.Get(), length) == 0) return true;
    const bool full = errno == ENOSPC || errno == EDQUOT || errno == EFBIG;
    return !full || FailBySystem();
}

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
    Flush();
    if (good_ && !WriteFully(file_.Get(), bytes.data(), bytes.size())) good_ = FailBySystem();
    written_ += static_cast<std::int64_t>(bytes.size());
}

void OutputFile::Flush() {
    if (good_ && !WriteFully(file_.Get(), buffer_.get(), used_)) good_ = FailBySystem();
    written_ += static_cast<std::int64_t>(used_);
    used_ = 0;
}

bool OutputFile::Finish(const HeldFile* held) {
    Flush();
    if (good_ && temporary_.empty() && fileCalls.truncate(file_.Get(), written_) != 0) good_ = FailBySystem();
    if (good_ && fileCalls.flush(file_.Get()) != 0) good_ = FailBySystem();
    if (!file_.Close() && good_) good_ = FailBySystem();
    good_ = good_ && PutInPlace(held);
    const bool good = good_;
    Discard();
    return good;
}

bool OutputFile::PutInPlace(const HeldFile* held) {
    if (temporary_.empty()) return true;
    if (held ? !held->IsUnchanged() : !IsTargetUnchanged()) return false;
    {
        const BlockedSignals blocked;
        if (fileCalls.renameIn(folder_.Get(), temporary_.c_str(), name_.c_str()) != 0) return FailBySystem();
        temporary_.clear();
        madeTarget_ = false;
        ForgetUnfinished();
    }
    (void)fileCalls.flushFolder(folder_.Get());  // not every file system can do it
    return true;
}

// True if the path still leads to what was there at the start.
bool OutputFile::IsTargetUnchanged() const {
    FileInfo opened, named;
    const bool exists = fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) == 0;
    if (!exists && errno != ENOENT) return FailBySystem();
    if (exists != bool(target_)) return Fail(FileProblem::Changed);
    if (!exists) return true;
    if (fileCalls.inspect(target_.Get(), &opened) != 0) return FailBySystem();
    return IsSameFile(opened, named) || Fail(FileProblem::Changed);
}

// Closes everything and removes what is unfinished.
void OutputFile::Discard() {
    {
        const BlockedSignals blocked;
        if (!temporary_.empty()) (void)fileCalls.removeIn(folder_.Get(), temporary_.c_str());
        if (madeTarget_ && IsTargetUnchanged()) (void)fileCalls.removeIn(folder_.Get(), name_.c_str());
        ForgetUnfinished();
    }
    temporary_.clear();
    madeTarget_ = good_ = false;
    file_ = OpenFile();
    target_ = OpenFile();
    folder_ = OpenFile();
    written_ = 0;
    used_ = 0;
}

bool SaveWholeFile(const std::string& path, FileKind kind, std::span<const std::uint8_t> content,
                   const HeldFile* held, const FileState* like) {
    OutputFile file;
    if (!file.Create(path, kind, static_cast<std::int64_t>(content.size()), like)) return false;
    file.Write(content);
    return file.Finish(held);
}

}  // namespace boreforge
