// Translates Qt's key events into the editor's key codes.
#pragma once

#include <QKeyEvent>

#include "editor/ShapeInput.h"

namespace boreforge {

KeyPress KeyPressOf(const QKeyEvent& event);

}  // namespace boreforge
