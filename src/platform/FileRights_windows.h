// What Windows knows of a file's rights, as named attributes for the table of file calls.
#pragma once

#include <cstddef>
#include <cstdint>

namespace boreforge {

inline constexpr char kAccessListAttribute[] = "access list";  // a self-relative security descriptor
inline constexpr char kFlagsAttribute[] = "flags";             // hidden, compressed and so on: a DWORD

std::int64_t GetFileAttribute(int file, const char* name, void* value, std::size_t size);
int SetFileAttribute(int file, const char* name, const void* value, std::size_t size);

}  // namespace boreforge
