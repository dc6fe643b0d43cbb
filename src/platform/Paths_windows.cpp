#include <windows.h>

#include "platform/FileCalls.h"
#include "platform/Paths.h"
#include "platform/WideText_windows.h"

namespace boreforge {

namespace {

// Opened like a folder, only for its attributes.
bool Inspect(const std::string& path, FileInfo& info) {
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Folder));
    return file && fileCalls.inspect(file.Get(), &info) == 0;
}

bool Exists(const std::string& path) {
    return ::GetFileAttributesW(ToSystemPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool HaveSameName(const std::string& one, const std::string& other) {
    const std::wstring a = ToWide(one), b = ToWide(other);
    return ::CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

Place PlaceOf(const std::string& path) {
    const std::size_t last = path.find_last_of("/\\:");
    if (last == std::string::npos) return {".", path};
    const std::string folder = path.substr(0, last + 1);
    // "C:" alone could be the drive itself; with a dot it is its current folder.
    return {folder.ends_with(':') ? folder + "." : folder, path.substr(last + 1)};
}

bool FileExists(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesW(ToSystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool SameFile(const std::string& one, const std::string& other) {
    FileInfo a, b;
    const bool oneExists = Exists(one), otherExists = Exists(other);
    if (oneExists && otherExists) return Inspect(one, a) && Inspect(other, b) && IsSameFile(a, b);
    if (oneExists || otherExists) return false;
    const Place onePlace = PlaceOf(one), otherPlace = PlaceOf(other);
    return HaveSameName(onePlace.name, otherPlace.name) && Inspect(onePlace.folder, a) &&
           Inspect(otherPlace.folder, b) && IsSameFile(a, b);
}

}  // namespace boreforge
