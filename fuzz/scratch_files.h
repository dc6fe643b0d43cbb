// Files of a fuzzer in a folder of its own, in memory where the system has such a place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace boreforge {

// The path of a file of this name in the process's scratch folder, which is made when it is first asked for
// and removed at the end.
std::string ScratchPath(const std::string& name);

void WriteScratch(const std::string& path, std::span<const std::uint8_t> bytes);

// The file's bytes; none when it isn't there.
std::vector<std::uint8_t> ReadScratch(const std::string& path);

// A property that must hold; without it the fuzzer stops with a finding.
inline void Require(bool property) {
    if (!property) __builtin_trap();
}

}  // namespace boreforge
