// A reader of .3ds files of its own, which tests what must hold for every object.
#pragma once

#include <cstdint>
#include <vector>

namespace boreforge {

// Stops the fuzzer unless the chunks fill each other exactly, every face names vertices of its own mesh,
// every mesh names a material that is there, and no two objects have one name.
void RequireSoundObject(const std::vector<std::uint8_t>& file);

}  // namespace boreforge
