// What the Windows sources share: texts, paths and open files as the system knows them. Its texts are UTF-16,
// ours UTF-8.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace boreforge {

std::wstring ToWide(std::string_view text);
std::string ToUtf8(std::wstring_view text);

// An absolute path in the form without the limit of 260 characters: "\\?\C:\folder\name". Names of devices
// stay as they are.
std::wstring ToSystemPath(std::string_view path);

// The absolute path of an open file without links, in the same form. Where the system doesn't know it, as on
// some virtual drives, the path by which it was opened.
std::wstring PathOf(int file);

// The path of a name in an open folder.
std::wstring PathIn(int folder, std::string_view name);

// Gives the console the code page that it had before ProcessSetup changed it. More than once does no harm.
void RestoreConsole();

}  // namespace boreforge
