#include "platform/Signals.h"

#include <windows.h>

#include "platform/Process_windows.h"
#include "platform/SystemFiles_windows.h"

namespace boreforge {

namespace {

std::wstring temporary, placeholder;

// Held by whoever changes those two or the files. A thread may take it several times.
CRITICAL_SECTION* Lock() {
    static CRITICAL_SECTION* const lock = [] {
        static CRITICAL_SECTION section;
        ::InitializeCriticalSection(&section);
        return &section;
    }();
    return lock;
}

bool IsEmpty(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA found;
    return ::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &found) && found.nFileSizeHigh == 0 &&
           found.nFileSizeLow == 0;
}

// The system calls it in a thread of its own.
BOOL WINAPI EndByConsole(DWORD) {
    ::EnterCriticalSection(Lock());
    if (!temporary.empty()) (void)::DeleteFileW(temporary.c_str());
    if (!placeholder.empty() && IsEmpty(placeholder)) (void)::DeleteFileW(placeholder.c_str());
    RestoreConsole();
    ::ExitProcess(static_cast<UINT>(STATUS_CONTROL_C_EXIT));
}

}  // namespace

void RemoveUnfinishedOnSignals() {
    (void)Lock();
    (void)::SetConsoleCtrlHandler(EndByConsole, TRUE);
}

BlockedSignals::BlockedSignals() : blocked_(1) { ::EnterCriticalSection(Lock()); }

BlockedSignals::~BlockedSignals() {
    if (blocked_ != 0) ::LeaveCriticalSection(Lock());
}

void NoteUnfinished(int folder, const std::string& name) { temporary = PathIn(folder, name); }

void NotePlaceholder(int folder, const std::string& name) { placeholder = PathIn(folder, name); }

void ForgetUnfinished() {
    temporary.clear();
    placeholder.clear();
}

}  // namespace boreforge
