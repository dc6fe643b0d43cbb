// Translates Qt's events into the editor's buttons and key codes.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>

#include "editor/ShapeInput.h"

namespace boreforge {

KeyPress KeyPressOf(const QKeyEvent& event);
MouseButton ButtonOf(const QMouseEvent& event);
MouseState StateOf(const QMouseEvent& event);

}  // namespace boreforge
