#include "platform/Paths.h"

#include "platform/FileCalls.h"
#include "platform/System_windows.h"

namespace boreforge {

namespace {

// Opened like a folder, only for its attributes, which no other program can prevent.
bool Inspect(const std::string& path, FileInfo& info) {
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Folder));
    return file && fileCalls.inspect(file.Get(), &info) == 0;
}

// In lower case, whatever the user's language is.
std::string ToLower(const std::string& text) {
    const std::wstring wide = ToWide(text);
    std::wstring lower = wide;
    const int size = static_cast<int>(wide.size());
    (void)::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, wide.data(), size, lower.data(), size,
                          nullptr, nullptr, 0);
    return ToUtf8(lower);
}

}  // namespace

std::wstring ToWide(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int count = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(count));
    return wide;
}

std::string ToUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size()), most = 3 * length;
    std::string utf8(static_cast<std::size_t>(most), '\0');
    const int count =
        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), most, nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(count));
    return utf8;
}

std::wstring ToSystemPath(std::string_view path) {
    const std::wstring wide = ToWide(path);
    std::wstring full(::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    if (full.empty()) return wide;
    full.resize(::GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (full.starts_with(LR"(\\?\)") || full.starts_with(LR"(\\.\)")) return full;
    if (full.starts_with(LR"(\\)")) return LR"(\\?\UNC\)" + full.substr(2);
    return LR"(\\?\)" + full;
}

SplitPath Split(const std::string& path) {
    const std::size_t last = path.find_last_of("/\\:");
    if (last == std::string::npos) return {".", path};
    const std::string folder = path.substr(0, last + 1);
    // "C:" alone could be the drive itself; with a dot it is its current folder.
    return {folder.ends_with(':') ? folder + "." : folder, path.substr(last + 1)};
}

std::string RealPath(const std::string& path) {
    const OpenFile file(fileCalls.open(path.c_str(), OpenFor::Folder));
    return file ? ToUtf8(PathOf(file.Get())) : "";
}

FileIdentity IdentityOf(const std::string& path) {
    FileInfo info;
    if (Inspect(path, info)) return {info.device, info.number, ""};
    // The system ignores dots and spaces at the end of a name; the full path is without them.
    const SplitPath split = Split(ToUtf8(ToSystemPath(path)));
    if (!Inspect(split.folder, info)) return {0, 0, ToLower(split.folder + split.name)};
    return {info.device, info.number, ToLower(split.name)};
}

}  // namespace boreforge
