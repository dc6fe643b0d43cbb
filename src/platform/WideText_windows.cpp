#include "platform/WideText_windows.h"

#include <windows.h>

namespace boreforge {

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

}  // namespace boreforge
