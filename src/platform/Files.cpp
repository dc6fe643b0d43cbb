#include "platform/Files.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/FileCalls.h"

namespace boreforge {

namespace {

constexpr off_t kLargestFile = 0x7FFFFFFF;  // positions in a file are signed 32-bit numbers

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Where the chain of links at `path` ends; nothing need stand there. Empty for a chain without end.
std::string FollowLinks(std::string path) {
    for (int hop = 0; hop < 40; ++hop) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0) return path;
        if (length == sizeof target) return {};
        const std::string text(target, static_cast<std::size_t>(length));
        path = text.starts_with('/') ? text : FolderOf(path) + "/" + text;
    }
    return {};
}

enum class Standing { Nothing, Writable, Refused };

// What stands at `path`, as far as writing goes. A rename asks for no permission of the file that it
// replaces, so a file that is locked against writing by its mode must be refused here.
Standing LookAt(const std::string& path, struct stat& info) {
    if (::lstat(path.c_str(), &info) != 0) return errno == ENOENT ? Standing::Nothing : Standing::Refused;
    const bool writable = S_ISREG(info.st_mode) && ::access(path.c_str(), W_OK) == 0;
    return writable ? Standing::Writable : Standing::Refused;
}

bool WriteAll(int file, const std::uint8_t* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = fileCalls.write(file, bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

bool ReadAll(int file, std::uint8_t* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t got = fileCalls.read(file, bytes, count);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        bytes += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

constexpr int kCaughtSignals[] = {SIGINT, SIGTERM, SIGHUP};

// The file that would stay unfinished if the program ended now; empty when there is none.
char unfinished[PATH_MAX];

// Keeps the signals waiting while a file and what is known of it come into being or go together.
class SignalsWait {
  public:
    SignalsWait() {
        sigset_t caught;
        ::sigemptyset(&caught);
        for (const int signal : kCaughtSignals)
            ::sigaddset(&caught, signal);
        ::sigprocmask(SIG_BLOCK, &caught, &before_);
    }
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;
    ~SignalsWait() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_;
};

void EndBySignal(int signal) {
    if (unfinished[0] != 0) (void)::unlink(unfinished);
    (void)std::signal(signal, SIG_DFL);
    (void)std::raise(signal);
}

// Opens a file that is new; it is unfinished from now on. -1 when that fails.
int OpenNew(const std::string& path, int flags, mode_t mode) {
    const SignalsWait wait;
    const int file = fileCalls.open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, mode);
    if (file >= 0) unfinished[path.copy(unfinished, sizeof unfinished - 1)] = 0;
    return file;
}

// Opens a new file in `folder` under a name that nothing has yet; -1 when that fails.
int OpenTemporary(const std::string& folder, mode_t mode, std::string& path) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        path = folder + "/.boreforge-" + std::to_string(::getpid()) + "-" + std::to_string(attempt) + ".tmp";
        const int file = OpenNew(path, O_EXCL, mode);
        if (file >= 0 || errno != EEXIST) return file;
    }
    return -1;
}

// Gives the new file the owner and the permissions of the old one. The owner is kept where the user may.
bool TakeOver(int file, const struct stat& old) {
    if (old.st_uid != ::geteuid() || old.st_gid != ::getegid())
        (void)fileCalls.fchown(file, old.st_uid, old.st_gid);
    return fileCalls.fchmod(file, old.st_mode & 07777) == 0;
}

// Makes a rename last through a loss of power. Best effort: not every file system can flush a folder.
void FlushFolder(const std::string& folder) {
    const int file = fileCalls.open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (file < 0) return;
    (void)fileCalls.fsync(file);
    (void)fileCalls.close(file);
}

}  // namespace

bool FileExists(const std::string& path) {
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

bool SameFile(const std::string& one, const std::string& other) {
    struct stat a, b;
    const auto same = [&] { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; };
    const bool oneStands = ::stat(one.c_str(), &a) == 0;
    const bool otherStands = ::stat(other.c_str(), &b) == 0;
    if (oneStands && otherStands) return same();
    if (oneStands || otherStands) return false;
    const auto name = [](const std::string& path) { return path.substr(path.rfind('/') + 1); };
    const std::string oneEnd = FollowLinks(one), otherEnd = FollowLinks(other);
    if (oneEnd.empty() || otherEnd.empty() || name(oneEnd) != name(otherEnd)) return false;
    return ::stat(FolderOf(oneEnd).c_str(), &a) == 0 && ::stat(FolderOf(otherEnd).c_str(), &b) == 0 && same();
}

bool ReadWholeFile(const std::string& path, Bytes& content) {
    content.clear();
    // Without O_NONBLOCK the opening of a named pipe would wait for a writer that may never come.
    const int file = fileCalls.open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC, 0);
    if (file < 0) return false;
    struct stat info;
    bool good = fileCalls.fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_size <= kLargestFile;
    try {
        if (good) content.resize(static_cast<std::size_t>(info.st_size));
    } catch (...) {
        (void)fileCalls.close(file);
        throw;
    }
    good = good && ReadAll(file, content.data(), content.size());
    (void)fileCalls.close(file);
    if (!good) content.clear();
    return good;
}

bool ReplaceFile(const std::string& path, std::span<const std::uint8_t> content) {
    const std::string target = FollowLinks(path);
    if (target.empty()) return false;
    struct stat old;
    const Standing standing = LookAt(target, old);
    if (standing == Standing::Refused) return false;
    // A private track stays private also while its successor is being written.
    const mode_t mode = standing == Standing::Writable ? 0600 : 0666;
    const std::string folder = FolderOf(target);
    std::string temporary;
    const int file = OpenTemporary(folder, mode, temporary);
    if (file < 0) return false;
    bool good = WriteAll(file, content.data(), content.size());
    good = good && (standing == Standing::Nothing || TakeOver(file, old));
    good = good && fileCalls.fsync(file) == 0;
    good = fileCalls.close(file) == 0 && good;
    good = good && fileCalls.rename(temporary.c_str(), target.c_str()) == 0;
    if (good)
        FlushFolder(folder);
    else
        (void)fileCalls.unlink(temporary.c_str());
    unfinished[0] = 0;
    return good;
}

OutputFile::~OutputFile() {
    if (file_ < 0) return;
    good_ = false;
    used_ = 0;
    (void)Finish();
}

bool OutputFile::Create(const std::string& path) {
    path_ = FollowLinks(path);
    struct stat old;
    if (path_.empty() || LookAt(path_, old) == Standing::Refused) return false;
    buffer_ = std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize);
    // A failed deletion is no failure yet: a file that can be opened is then overwritten from its first byte.
    (void)fileCalls.unlink(path_.c_str());
    file_ = OpenNew(path_, O_TRUNC, 0666);
    used_ = 0;
    good_ = file_ >= 0;
    return good_;
}

void OutputFile::Flush() {
    good_ = good_ && WriteAll(file_, buffer_.get(), used_);
    used_ = 0;
}

bool OutputFile::Finish() {
    Flush();
    good_ = fileCalls.close(file_) == 0 && good_;
    file_ = -1;
    if (!good_) (void)fileCalls.unlink(path_.c_str());
    unfinished[0] = 0;
    return good_;
}

void RemoveUnfinishedOnSignals() {
    for (const int signal : kCaughtSignals)
        if (std::signal(signal, EndBySignal) == SIG_IGN) (void)std::signal(signal, SIG_IGN);  // as by nohup
}

}  // namespace boreforge
