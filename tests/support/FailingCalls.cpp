#include "support/FailingCalls.h"

#include <cerrno>
#include <csignal>

#include "platform/FileCalls.h"

namespace boreforge {

namespace {

const FileCalls kSystem = SystemFileCalls();
int callsBefore;      // the one that is chosen
int signalAfter = 0;  // 0: the chosen call fails

// What a call returns that may be the chosen one.
template <class Result, class Call>
Result Try(const Call& call) {
    const bool chosen = callsBefore-- == 0;
    if (chosen && signalAfter == 0) {
        errno = ENOSPC;
        return -1;
    }
    const Result result = call();
    if (chosen) (void)std::raise(signalAfter);
    return result;
}

template <auto Call>
struct Replacement;
template <class Result, class... Arguments, Result (*FileCalls::*Call)(Arguments...)>
struct Replacement<Call> {
    static Result Run(Arguments... arguments) {
        return Try<Result>([&] { return (kSystem.*Call)(arguments...); });
    }
};

template <auto... Calls>
void Replace() {
    ((fileCalls.*Calls = Replacement<Calls>::Run), ...);
}

void Choose(int which, int signal) {
    callsBefore = which;
    signalAfter = signal;
    using F = FileCalls;
    Replace<&F::open, &F::createIn, &F::inspect, &F::inspectIn, &F::rewind, &F::setOwner, &F::setMode,
            &F::getAccessList, &F::setAccessList, &F::lock, &F::flush, &F::flushFolder, &F::replaceIn,
            &F::renameIn, &F::removeIn>();
    fileCalls.read = [](int file, void* bytes, std::size_t count) {
        return Try<std::int64_t>([&] { return kSystem.read(file, bytes, count / 2 + 1); });
    };
    fileCalls.write = [](int file, const void* bytes, std::size_t count) {
        return Try<std::int64_t>([&] { return kSystem.write(file, bytes, count / 2 + 1); });
    };
    fileCalls.close = [](int file) {
        const int result = kSystem.close(file);  // a close that fails has closed the file, too
        return Try<int>([&] { return result; });
    };
}

}  // namespace

void FailOneCall(int which) { Choose(which, 0); }

bool CallHasFailed() { return callsBefore < 0; }

void RaiseAfterCall(int which, int signal) { Choose(which, signal); }

}  // namespace boreforge
