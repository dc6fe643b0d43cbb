#include "support/FailingCalls.h"

#include <cerrno>

#include "platform/FileCalls.h"

namespace boreforge {

namespace {

const FileCalls kSystem = SystemFileCalls();
int callsBeforeFailure;

bool Fails() {
    if (callsBeforeFailure-- != 0) return false;
    errno = ENOSPC;
    return true;
}

// A call of the same type that may fail instead.
template <auto Call>
struct Failing;
template <class Result, class... Arguments, Result (*FileCalls::*Call)(Arguments...)>
struct Failing<Call> {
    static Result Run(Arguments... arguments) { return Fails() ? -1 : (kSystem.*Call)(arguments...); }
};

template <auto... Calls>
void MakeFail() {
    ((fileCalls.*Calls = Failing<Calls>::Run), ...);
}

}  // namespace

void FailOneCall(int which) {
    callsBeforeFailure = which;
    using F = FileCalls;
    MakeFail<&F::open, &F::createIn, &F::inspect, &F::inspectIn, &F::rewind, &F::setOwner, &F::setMode,
             &F::getAccessList, &F::setAccessList, &F::lock, &F::flush, &F::flushFolder, &F::replaceIn,
             &F::renameIn, &F::removeIn>();
    fileCalls.read = [](int file, void* bytes, std::size_t count) -> std::int64_t {
        return Fails() ? -1 : kSystem.read(file, bytes, count / 2 + 1);
    };
    fileCalls.write = [](int file, const void* bytes, std::size_t count) -> std::int64_t {
        return Fails() ? -1 : kSystem.write(file, bytes, count / 2 + 1);
    };
    fileCalls.close = [](int file) {
        const int result = kSystem.close(file);
        return Fails() ? -1 : result;
    };
}

bool CallHasFailed() { return callsBeforeFailure < 0; }

}  // namespace boreforge
