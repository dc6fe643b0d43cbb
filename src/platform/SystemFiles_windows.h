// Open files as Windows knows them.
#pragma once

#include <windows.h>

#include <string>

namespace boreforge {

HANDLE HandleOf(int file);

// Its absolute path without links, in the form that ToSystemPath returns. Where the system doesn't know it,
// as on some virtual drives, the path by which it was opened.
std::wstring PathOf(int file);

// The path of a name in an open folder.
std::wstring PathIn(int folder, const std::string& name);

}  // namespace boreforge
