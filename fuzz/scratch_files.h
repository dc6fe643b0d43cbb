// A fuzzer's files, in a folder of its own; in memory if the system allows that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace boreforge {

// The path of a file in the process's scratch folder, which is made at the first call and removed at the end.
std::string ScratchPath(const std::string& name);

void WriteScratch(const std::string& path, std::span<const std::uint8_t> bytes);

// The file's bytes; empty if it doesn't exist.
std::vector<std::uint8_t> ReadScratch(const std::string& path);

// Stops the fuzzer with a finding unless the property holds, or the operation worked.
template <class Property>
void Require(const Property& property) {
    if (!property) __builtin_trap();
}

}  // namespace boreforge
