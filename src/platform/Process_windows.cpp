#include "platform/Process.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>

#include "platform/System_windows.h"

namespace boreforge {

namespace {

UINT codePage = 0;  // the console's own; 0 if there is no console or it was left alone

// Adds the files that match a pattern, as the shell does on other systems, or the pattern itself if there are
// none. Only the last part of a path may contain "*" or "?".
void AddExpanded(const std::wstring& argument, std::vector<std::string>& arguments) {
    const std::size_t name = argument.find_last_of(L"/\\:") + 1;  // 0 if there is none
    WIN32_FIND_DATAW found;
    const bool isPattern = argument.find_first_of(L"*?", name) != std::wstring::npos;
    const HANDLE search = isPattern ? ::FindFirstFileW(argument.c_str(), &found) : INVALID_HANDLE_VALUE;
    if (search == INVALID_HANDLE_VALUE) {
        arguments.push_back(ToUtf8(argument));
        return;
    }
    do
        arguments.push_back(ToUtf8(argument.substr(0, name) + found.cFileName));
    while (::FindNextFileW(search, &found));
    (void)::FindClose(search);
}

}  // namespace

void RestoreConsole() {
    if (codePage != 0) (void)::SetConsoleOutputCP(codePage);
    codePage = 0;
}

ProcessSetup::ProcessSetup() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (::_get_osfhandle(stream) >= 0) continue;
        const int nul = ::_open("NUL", _O_RDWR);
        if (nul == stream) continue;
        (void)::_dup2(nul, stream);
        (void)::_close(nul);
    }
    codePage = ::GetConsoleOutputCP();
    if (codePage != 0) (void)::SetConsoleOutputCP(CP_UTF8);
    // The same bytes as on other systems.
    (void)::_setmode(::_fileno(stdout), _O_BINARY);
    (void)::_setmode(::_fileno(stderr), _O_BINARY);
}

ProcessSetup::~ProcessSetup() {
    (void)std::fflush(stdout);
    RestoreConsole();
}

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    wchar_t** const arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i)
        AddExpanded(arguments[i], result);
    (void)::LocalFree(arguments);
    return result;
}

unsigned long ProcessId() { return ::GetCurrentProcessId(); }

}  // namespace boreforge
