// Draws pictures without showing a window, and saves them.
#pragma once

#include <QImage>

#include <string>

#include "base/Outcome.h"
#include "view/ViewScene.h"

namespace boreforge {

// The scene in a picture of this size, in pixels; null if it can't be drawn.
QImage DrawPicture(ViewScene& scene, const QSize& size);

// Writes a picture as PNG. Fails if it is null. A failure leaves an existing file unchanged.
Outcome SavePicture(const std::string& path, QImage image);

}  // namespace boreforge
