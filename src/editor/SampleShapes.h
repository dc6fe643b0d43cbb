// The sample shapes of the folder elements/, which are part of the program, so that they are there wherever
// it is installed.
#pragma once

#include <string_view>
#include <vector>

namespace boreforge {

struct SampleShape {
    std::string_view name;  // of the file, without .zrbf
    std::string_view file;  // its bytes
};

// In alphabetical order. Written by cmake/SampleShapes.cmake.
extern const std::vector<SampleShape> kSampleShapes;

// Replaces the shape with a sample shape, or empties it if there is none of this name.
void LoadSampleShape(std::string_view name);

}  // namespace boreforge
