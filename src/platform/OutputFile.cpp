#include "platform/OutputFile.h"

#include <cerrno>
#include <random>
#include <string_view>

#include "base/Values.h"
#include "platform/FileRights.h"
#include "platform/Paths.h"
#include "platform/Signals.h"

namespace boreforge {

namespace {

constexpr unsigned kPrivate = 0600, kUsual = 0666, kSticky = 01000;

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
    kind_ = kind;
    good_ = OpenTarget(path) && CheckTarget() && OpenTemporary(target_ || like);
    if (good_ && target_) good_ = KeepRights();
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
    const Place place = PlaceOf(path);
    target_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::ReadingAndWriting));
    if (target_) return FindRealPlace();
    if (errno != ENOENT) return FailBySystem();
    if (IsLink(place)) return OpenPlaceholder(path);
    name_ = place.name;
    folder_ = OpenFile(fileCalls.open(place.folder.c_str(), OpenFor::Folder));
    return folder_ || FailBySystem();
}

// The system makes the file to which a link leads, so that its own protection against planted links works.
bool OutputFile::OpenPlaceholder(const std::string& path) {
    const BlockedSignals blocked;
    target_ = OpenFile(fileCalls.open(path.c_str(), OpenFor::Creating));
    if (!target_) return FailBySystem();
    madeTarget_ = true;
    if (!FindRealPlace()) return false;
    NotePlaceholder(folder_.Get(), name_);
    return true;
}

bool OutputFile::FindRealPlace() {
    std::string real(kMaxPath, '\0');
    const std::int64_t size = fileCalls.realPath(target_.Get(), real.data(), real.size());
    if (size < 0) return FailBySystem();
    real.resize(static_cast<std::size_t>(size));
    const Place place = PlaceOf(real);
    name_ = place.name;
    folder_ = OpenFile(fileCalls.open(place.folder.c_str(), OpenFor::Folder));
    return folder_ || FailBySystem();
}

bool OutputFile::CheckTarget() {
    if (!target_) return true;
    FileInfo opened, named;
    if (fileCalls.inspect(target_.Get(), &opened) != 0) return FailBySystem();
    if (!opened.isRegular) return Fail(FileProblem::NotRegular);
    if (fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) != 0) return FailBySystem();
    if (!IsSameFile(opened, named)) return Fail(FileProblem::KeepsChanging);
    return AllowsReplacement(target_.Get(), kind_);
}

bool OutputFile::OpenTemporary(bool isPrivate) {
    const BlockedSignals blocked;
    do {
        temporary_ = RandomName();
        file_ =
            OpenFile(fileCalls.createIn(folder_.Get(), temporary_.c_str(), isPrivate ? kPrivate : kUsual));
    } while (!file_ && errno == EEXIST);
    if (file_) {
        NoteUnfinished(folder_.Get(), temporary_);
        if (!target_ || MayRename()) return true;
        (void)fileCalls.removeIn(folder_.Get(), temporary_.c_str());
        ForgetUnfinished();
        errno = EPERM;
    }
    temporary_.clear();
    if (!target_ || kind_ != FileKind::Other || !FolderRefuses() || fileCalls.rewind(target_.Get()) != 0)
        return FailBySystem();
    file_ = std::move(target_);
    return true;
}

// In a folder with the sticky bit only the owner of a file, the owner of the folder and root may replace it.
bool OutputFile::MayRename() const {
    FileInfo folder, old, mine;
    if (fileCalls.inspect(folder_.Get(), &folder) != 0 || fileCalls.inspect(target_.Get(), &old) != 0 ||
        fileCalls.inspect(file_.Get(), &mine) != 0)
        return false;
    const unsigned user = mine.owner;
    return (folder.mode & kSticky) == 0 || user == 0 || user == old.owner || user == folder.owner;
}

// Copies the old file's rights if they have changed since they were copied last.
bool OutputFile::KeepRights() {
    FileInfo now;
    if (fileCalls.inspect(target_.Get(), &now) != 0) return FailBySystem();
    if (now.changed == rights_.changed) return true;
    rights_ = now;
    return CopyRights(file_.Get(), target_.Get());
}

// Reserving space shows a full disk at once and keeps the file in one piece.
bool OutputFile::Reserve(std::int64_t length) {
    return length <= 0 || fileCalls.reserve(file_.Get(), length) == 0 || FailBySystem();
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

bool OutputFile::Finish(HeldFile* held) {
    Flush();
    if (good_ && temporary_.empty() && fileCalls.truncate(file_.Get(), written_) != 0) good_ = FailBySystem();
    if (good_ && fileCalls.flush(file_.Get()) != 0) good_ = FailBySystem();
    if (good_ && target_) good_ = KeepRights();
    if (!file_.Close() && good_) good_ = FailBySystem();
    good_ = good_ && PutInPlace(held);
    const bool good = good_;
    Discard();
    return good;
}

bool OutputFile::PutInPlace(HeldFile* held) {
    if (temporary_.empty()) return true;
    if (!IsTargetUnchanged()) return false;
    if (held && !target_) return Fail(FileProblem::Changed);
    if (held && !held->IsUnchanged(target_.Get())) return false;
    {
        const BlockedSignals blocked;
        if (!fileCalls.replacesOpenFiles) {
            target_ = OpenFile();
            if (held) held->Release();
        }
        if (fileCalls.renameIn(folder_.Get(), temporary_.c_str(), name_.c_str()) != 0) return FailBySystem();
        temporary_.clear();
        madeTarget_ = false;
        ForgetUnfinished();
    }
    return FlushFolder();
}

// An object counts as saved only when its folder is on the disk too, because the track that names it comes
// next. For a track it is too late to fail: the new one is already in its place.
bool OutputFile::FlushFolder() const {
    if (fileCalls.flushFolder(folder_.Get()) == 0 || kind_ != FileKind::Other) return true;
    const bool cantFlush = errno == EINVAL || errno == ENOTSUP || errno == EACCES || errno == EPERM;
    return cantFlush || FailBySystem();
}

// True if the path still leads to what was there at the start, and it may still be replaced.
bool OutputFile::IsTargetUnchanged() const {
    FileInfo opened, named;
    const bool exists = fileCalls.inspectIn(folder_.Get(), name_.c_str(), &named) == 0;
    if (!exists && errno != ENOENT) return FailBySystem();
    if (exists != bool(target_)) return Fail(FileProblem::Changed);
    if (!exists) return true;
    if (fileCalls.inspect(target_.Get(), &opened) != 0) return FailBySystem();
    if (!IsSameFile(opened, named)) return Fail(FileProblem::Changed);
    if (fileCalls.rewind(target_.Get()) != 0) return FailBySystem();
    return AllowsReplacement(target_.Get(), kind_);
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
    rights_ = FileInfo();
    written_ = 0;
    used_ = 0;
}

bool SaveWholeFile(const std::string& path, FileKind kind, std::span<const std::uint8_t> content,
                   HeldFile* held, const FileState* like) {
    OutputFile file;
    if (!file.Create(path, kind, static_cast<std::int64_t>(content.size()), like)) return false;
    file.Write(content);
    return file.Finish(held);
}

}  // namespace boreforge
