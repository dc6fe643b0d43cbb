#include "platform/Signals.h"

#include <map>
#include <mutex>
#include <utility>

#include "platform/System_windows.h"

namespace boreforge {

namespace {

// Held by whoever changes the record or the files in it.
std::recursive_mutex recordLock;
// The path of each unfinished file, from its folder and name.
std::map<std::pair<int, std::string>, std::wstring> unfinished;

// The system calls it in a thread of its own.
BOOL WINAPI EndByConsole(DWORD) {
    recordLock.lock();
    for (const auto& [file, path] : unfinished)
        (void)::DeleteFileW(path.c_str());
    RestoreConsole();
    ::ExitProcess(static_cast<UINT>(STATUS_CONTROL_C_EXIT));
}

}  // namespace

void RemoveUnfinishedOnSignals() { (void)::SetConsoleCtrlHandler(EndByConsole, TRUE); }

BlockedSignals::BlockedSignals() { recordLock.lock(); }

BlockedSignals::~BlockedSignals() { recordLock.unlock(); }

void NoteUnfinished(int folder, const std::string& name) {
    unfinished[{folder, name}] = PathIn(folder, name);
}

void ForgetUnfinished(int folder, const std::string& name) { unfinished.erase({folder, name}); }

}  // namespace boreforge
