// Draws one picture and saves it, without showing a window.
#pragma once

#include <string>

#include "base/Outcome.h"
#include "view/ViewScene.h"

namespace boreforge {

// If the picture can't be drawn or written, an existing file is unchanged.
Outcome SavePicture(const std::string& path, ViewScene& scene, int width, int height);

}  // namespace boreforge
