// Draws one picture and saves it, without showing a window.
#pragma once

#include <string>

#include "view/ViewScene.h"

namespace boreforge {

// False, with a message, if the picture can't be drawn or written: an existing file is then unchanged.
[[nodiscard]] bool SavePicture(const std::string& path, ViewScene& scene, int width, int height);

}  // namespace boreforge
