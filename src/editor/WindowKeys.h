// Which keys of a real keyboard are the keys of the editor.
#pragma once

#include <QKeyEvent>

#include "editor/ShapeInput.h"

namespace boreforge {

KeyPress KeyPressOf(const QKeyEvent& event);

}  // namespace boreforge
