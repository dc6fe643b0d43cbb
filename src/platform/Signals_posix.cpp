#include "platform/Signals.h"

#include <fcntl.h>
#include <limits.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <iterator>

namespace boreforge {

namespace {

constexpr int kCaughtSignals[] = {SIGINT, SIGTERM, SIGHUP};

struct UnfinishedFile {
    int folder = -1;
    char name[NAME_MAX + 1] = "";  // empty when there is no such file
};

UnfinishedFile temporary, placeholder;
pthread_t mainThread;

// Those of the caught signals whose bit is set.
sigset_t SignalSet(unsigned bits) {
    sigset_t set;
    ::sigemptyset(&set);
    for (std::size_t i = 0; i < std::size(kCaughtSignals); ++i)
        if (bits >> i & 1) ::sigaddset(&set, kCaughtSignals[i]);
    return set;
}

// True when nobody has written anything to the file yet.
bool IsEmpty(const UnfinishedFile& file) {
    struct stat found;
    return ::fstatat(file.folder, file.name, &found, AT_SYMLINK_NOFOLLOW) == 0 && found.st_size == 0;
}

void Note(UnfinishedFile& file, int folder, const std::string& name) {
    file.folder = folder;
    file.name[name.copy(file.name, NAME_MAX)] = 0;
}

void EndBySignal(int signal) {
    // Only the main thread writes files, and only it can hold the signals back.
    if (!::pthread_equal(::pthread_self(), mainThread)) {
        (void)::pthread_kill(mainThread, signal);
        return;
    }
    if (temporary.name[0] != 0) (void)::unlinkat(temporary.folder, temporary.name, 0);
    if (placeholder.name[0] != 0 && IsEmpty(placeholder))
        (void)::unlinkat(placeholder.folder, placeholder.name, 0);
    (void)std::signal(signal, SIG_DFL);
    (void)std::raise(signal);
}

}  // namespace

void RemoveUnfinishedOnSignals() {
    mainThread = ::pthread_self();
    for (const int signal : kCaughtSignals)
        if (std::signal(signal, EndBySignal) == SIG_IGN) (void)std::signal(signal, SIG_IGN);  // as by nohup
}

BlockedSignals::BlockedSignals() {
    sigset_t before;
    const sigset_t caught = SignalSet(~0u);
    ::pthread_sigmask(SIG_BLOCK, &caught, &before);
    for (std::size_t i = 0; i < std::size(kCaughtSignals); ++i)
        if (!::sigismember(&before, kCaughtSignals[i])) blocked_ |= 1u << i;
}

BlockedSignals::~BlockedSignals() {
    const sigset_t blocked = SignalSet(blocked_);
    ::pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

void NoteUnfinished(int folder, const std::string& name) { Note(temporary, folder, name); }

void NotePlaceholder(int folder, const std::string& name) { Note(placeholder, folder, name); }

void ForgetUnfinished() { temporary.name[0] = placeholder.name[0] = 0; }

}  // namespace boreforge
