// Mouse, key and tool input that edits the shape and its view. No Qt here: the window translates Qt's events
// into calls of these functions. Unless stated otherwise, a bool result tells whether the canvas must be
// repainted.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Outcome.h"
#include "editor/ShapeDrawing.h"
#include "editor/TunnelShape.h"
#include "tracing/mMath3D.h"

namespace boreforge {

// The state of the window's controls at the moment of an event.
struct EditorControls {
    ShownNodes shown;
    bool snapTo = true;
    std::string snapText = "0.5";
    int canvasWidth = 0, canvasHeight = 0;  // pixels
    bool buttonDown = false;                // a mouse button other than the event's own
};

enum class MouseButton { Left, Right, Other };

// Which buttons are down during a move; any combination is Other.
enum class MouseState { None, Left, Right, Other };

// The canvas position of the last button press or pan step, whichever came later.
struct MouseAnchor {
    float LastMouseX = 0, LastMouseY = 0;
};
extern MouseAnchor LastMouse;

// How far the wheel has turned since its last whole notch, in eighths of a degree, positive away from the
// user. Touchpads turn it by less than a notch at a time.
struct WheelTurn {
    int eighths = 0;
};
extern WheelTurn Wheel;

// Moves x and y to the nearest multiple of the snap interval, halves upward. Returns the position unchanged
// if snapping is off or the interval is not above 0.
Vector3D Snapped(const Vector3D& position, const EditorControls& controls);

// Formats a coordinate for the read-out: one or two digits after the point, halves rounded away from zero.
std::string FormatPosition(float value);

// The left button selects the point under the mouse, or appends a node there.
bool PressMouse(MouseButton button, float x, float y, const EditorControls& controls);

// Drags the selected point (left button) or the view (right button).
bool MoveMouse(MouseState state, float x, float y, const EditorControls& controls);

// The end of a pan clears the selection. All changes since the first button was pressed are one undo step.
bool ReleaseMouse(MouseButton button, const EditorControls& controls);

// The tools. EvenWall, Reverse, Undo and Redo have keys but no buttons.
enum class ShapeTool {
    New,
    Insert,
    Delete,
    Open,
    Save,
    ZoomIn,
    ZoomOut,
    ZoomReset,
    Mirror,
    Flip,
    EvenWall,  // as thick as the snap interval, or 0.5 if snapping is off
    Reverse,
    Undo,
    Redo,
};

// Runs any tool except open and save, which need a dialog. Returns false if there was nothing to do: then the
// canvas is neither repainted nor focused. Undo and redo do nothing while a mouse button is down.
bool RunShapeTool(ShapeTool tool, const EditorControls& controls);

// Turns the wheel by eighths of a degree. Runs the zoom-in tool for each whole notch away from the user and
// the zoom-out tool for each notch towards them. Does nothing while a mouse button is down.
bool TurnWheel(int eighths, const EditorControls& controls);

// MakePresetShape and LoadTunnelShape as undo steps. If a failed load empties the shape, that is a step, too.
void UsePreset(PresetShape preset, const EditorControls& controls);
Outcome OpenShapeFile(const std::string& path, const EditorControls& controls);

// The codes of the keys that the editor uses, on every system those of Windows.
enum class KeyCode {
    Other = 0,
    Escape = 27,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Delete = 46,
    F = 70,
    I = 73,
    M = 77,
    R = 82,
    W = 87,
    Y = 89,
    Z = 90,
    PadPlus = 107,
    PadMinus = 109,
    PadSlash = 111,
    Plus = 187,
    Minus = 189,
};

struct KeyPress {
    KeyCode code = KeyCode::Other;
    bool shift = false, control = false;
    bool alt = false, super = false;  // Super is the desktop's menu key
};

// The tool of a key, if it has one. Shift, Control and Alt matter only for undo and redo.
std::optional<ShapeTool> ToolOfKey(const KeyPress& key);

// Handles a key without a tool. If the canvas has the focus, the arrow keys move the selected point by the
// snap interval, or by 0.1 if snapping is off, and with Alt both points of its node. Control+Left and
// Control+Right select the previous and next point of the contour, Control+Up and Control+Down the node's
// other point; hidden points can't be selected. Escape clears the selection. Successive moves are one undo
// step, which any other key ends, wherever the focus is. None of these keys acts while a mouse button is
// down.
bool PressKey(const KeyPress& key, bool onCanvas, const EditorControls& controls);

// Whether the snap box, which shows `text`, accepts a typed character. It takes up to four characters, digits
// or points; the second character must be a point.
bool SnapCharacterPasses(std::string_view text, char32_t character);

}  // namespace boreforge
