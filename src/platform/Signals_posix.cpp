#include "platform/Signals.h"

#include <fcntl.h>
#include <limits.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>

namespace boreforge {

namespace {

struct UnfinishedFile {
    int folder = -1;
    char name[NAME_MAX + 1] = "";  // empty: no file
};

UnfinishedFile unfinished[kMaxUnfinished];
pthread_t mainThread;
sigset_t caught;     // the signals with our handler
sigset_t before;     // those blocked before the outermost BlockedSignals
int blockDepth = 0;  // BlockedSignals that exist

// SIGKILL and SIGSTOP can't be caught anyway.
bool EndsProgram(int signal) {
    constexpr int kHarmless[] = {SIGCHLD, SIGCONT, SIGURG, SIGWINCH, SIGTSTP, SIGTTIN, SIGTTOU};
    return std::find(std::begin(kHarmless), std::end(kHarmless), signal) == std::end(kHarmless);
}

// Calls only what POSIX allows in a signal handler.
void EndBySignal(int signal) {
    // Only the main thread writes files, and only it can hold the signals back.
    if (!::pthread_equal(::pthread_self(), mainThread)) {
        (void)::pthread_kill(mainThread, signal);
        return;
    }
    for (const UnfinishedFile& file : unfinished)
        if (file.name[0] != 0) (void)::unlinkat(file.folder, file.name, 0);
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    (void)::sigaction(signal, &byDefault, nullptr);
    (void)::raise(signal);
}

}  // namespace

void RemoveUnfinishedOnSignals() {
    mainThread = ::pthread_self();
    ::sigemptyset(&caught);
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        struct sigaction now {};
        const bool known = ::sigaction(signal, nullptr, &now) == 0;
        if (known && now.sa_handler == SIG_DFL && EndsProgram(signal)) ::sigaddset(&caught, signal);
    }
    struct sigaction ours {};
    ours.sa_handler = EndBySignal;
    ours.sa_mask = caught;
    for (int signal = 1; signal <= SIGRTMAX; ++signal)
        if (::sigismember(&caught, signal) == 1) (void)::sigaction(signal, &ours, nullptr);
}

BlockedSignals::BlockedSignals() {
    if (blockDepth++ == 0) (void)::pthread_sigmask(SIG_BLOCK, &caught, &before);
}

BlockedSignals::~BlockedSignals() {
    if (--blockDepth == 0) (void)::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void NoteUnfinished(int folder, const std::string& name) {
    for (UnfinishedFile& file : unfinished) {
        if (file.name[0] != 0) continue;
        file.folder = folder;
        file.name[name.copy(file.name, NAME_MAX)] = 0;
        return;
    }
}

void ForgetUnfinished(int folder, const std::string& name) {
    for (UnfinishedFile& file : unfinished)
        if (file.folder == folder && file.name == name) file.name[0] = 0;
}

}  // namespace boreforge
