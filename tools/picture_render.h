// Draws a scene: which surface is nearest in each sample of the picture, and what colour the pixels take from
// it.
#pragma once

#include <cstdint>
#include <vector>

#include "picture_shade.h"

namespace boreforge {

// The pixels, row by row from the top, each as red, green and blue.
std::vector<std::uint8_t> RenderPicture(const PictureScene& scene);

}  // namespace boreforge
