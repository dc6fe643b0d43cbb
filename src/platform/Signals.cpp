#include "platform/Signals.h"

#include <limits.h>
#include <unistd.h>

namespace boreforge {

namespace {

constexpr int kCaughtSignals[] = {SIGINT, SIGTERM, SIGHUP};

int unfinishedFolder = -1;
char unfinishedName[NAME_MAX + 1];  // empty if there is none

void EndBySignal(int signal) {
    if (unfinishedName[0] != 0) (void)::unlinkat(unfinishedFolder, unfinishedName, 0);
    (void)std::signal(signal, SIG_DFL);
    (void)std::raise(signal);
}

}  // namespace

void RemoveUnfinishedOnSignals() {
    for (const int signal : kCaughtSignals)
        if (std::signal(signal, EndBySignal) == SIG_IGN) (void)std::signal(signal, SIG_IGN);  // as by nohup
}

BlockedSignals::BlockedSignals() {
    sigset_t caught;
    ::sigemptyset(&caught);
    for (const int signal : kCaughtSignals)
        ::sigaddset(&caught, signal);
    ::sigprocmask(SIG_BLOCK, &caught, &before_);
}

BlockedSignals::~BlockedSignals() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

void NoteUnfinished(int folder, const std::string& name) {
    unfinishedFolder = folder;
    unfinishedName[name.copy(unfinishedName, NAME_MAX)] = 0;
}

void ForgetUnfinished() { unfinishedName[0] = 0; }

}  // namespace boreforge
