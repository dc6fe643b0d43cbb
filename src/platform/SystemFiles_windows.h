// Open files as Windows knows them.
#pragma once

#include <windows.h>

#include <string>

namespace boreforge {

HANDLE HandleOf(int file);

// Its absolute path without links, in the form that ToSystemPath returns. Empty if there is none.
std::wstring PathOf(HANDLE file);

// The path of a name in an open folder.
std::wstring PathIn(int folder, const std::string& name);

}  // namespace boreforge
