// The bytes of a file.
#pragma once

#include <cstdint>
#include <vector>

namespace boreforge {

using Bytes = std::vector<std::uint8_t>;

}  // namespace boreforge
