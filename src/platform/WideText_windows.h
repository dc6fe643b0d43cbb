// Texts and paths as Windows takes them: UTF-16. Ours are UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace boreforge {

std::wstring ToWide(std::string_view text);
std::string ToUtf8(std::wstring_view text);

// An absolute path in the form that may be longer than 260 characters: "\\?\C:\folder\name". Names of devices
// stay as they are.
std::wstring ToSystemPath(std::string_view path);

}  // namespace boreforge
