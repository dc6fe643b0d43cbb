// What mouse, keys and tools do to the shape and its view: plain functions, so that the window only
// translates the toolkit's events. Each tells whether the canvas must be repainted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "editor/ShapeDrawing.h"
#include "tracing/mMath3D.h"

namespace boreforge {

// The state of the window's controls at the moment of an event.
struct EditorControls {
    ShownNodes shown;
    bool snapTo = true;
    std::string snapText = "0.5";
    int canvasWidth = 0, canvasHeight = 0;  // pixels
    bool buttonDown = false;                // a mouse button, other than the one that the event is about
};

enum class MouseButton { Left, Right, Other };

// Which buttons are down during a move; any combination is Other.
enum class MouseState { None, Left, Right, Other };

// Canvas position of the last press of any button and of the last step of a pan.
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

// The snap interval that a text stands for: the number at its start, 0 when there is none or it is too large
// for a 32-bit float. The locale plays no part.
float SnapInterval(std::string_view text);

// A shape position moved to the nearest multiple of the interval in x and y, halves upward; as it was when
// snapping is off or the interval is not above 0.
Vector3D Snapped(const Vector3D& position, const EditorControls& controls);

// A coordinate for the read-out: one or two digits after the point, halves rounded away from zero.
std::string FormatPosition(float value);

// Selects the point under the mouse, or appends a node there, when `button` is the left one.
bool PressMouse(MouseButton button, float x, float y, const EditorControls& controls);

// Drags the selected point (left button) or the view (right button).
bool MoveMouse(MouseState state, float x, float y, const EditorControls& controls);

// The end of a pan drops the selection. All that has changed since the first button was pressed is one step
// to undo.
bool ReleaseMouse(MouseButton button, const EditorControls& controls);

// The tools, by the index of their button. The last two have keys only.
enum ShapeTool : int {
    kToolNew = 0,
    kToolInsert = 1,
    kToolDelete = 2,
    kToolOpen = 3,
    kToolSave = 4,
    kToolZoomIn = 5,
    kToolZoomOut = 6,
    kToolZoomReset = 7,
    kToolMirror = 8,
    kToolFlip = 9,
    kToolUndo = 10,
    kToolRedo = 11,
};

// Runs a tool that needs no dialog, so not the open and the save tool. False when it found nothing to do:
// the canvas is then neither repainted nor given the focus. Nothing is undone while a mouse button is down.
bool RunShapeTool(int tool, const EditorControls& controls);

// Turns the wheel by eighths of a degree: the zoom-in tool for each whole notch away from the user, the
// zoom-out tool for each one back. False while a mouse button is down and when no notch is complete.
bool TurnWheel(int eighths, const EditorControls& controls);

// MakePresetShape and LoadTunnelShape, as a step to undo. A failed load that empties the shape is one, too.
void UsePreset(std::int16_t preset, const EditorControls& controls);
bool OpenShapeFile(const std::string& path, const EditorControls& controls);

// Key codes: 27 Escape, 37 Left, 38 Up, 39 Right, 40 Down, 46 Delete, 70 F, 73 I, 77 M, 89 Y, 90 Z, 107 and
// 187 plus, 109 and 189 minus, 111 the slash of the numeric pad; no other slash has a tool.
struct KeyPress {
    int code = 0;  // 0: any other key
    bool shift = false, control = false;
    bool alt = false;  // or the key of the desktop's menu
};

// The tool of a key, or -1. Shift, Control and Alt matter to Undo and Redo only.
int ToolOfKey(const KeyPress& key);

// A key without a tool. With the focus on the canvas the arrow keys move the selected point by the snap
// interval (by 0.1 with snapping off); Control and Left or Right select the previous or next point of the
// contour, Control and Up or Down the node's other point, but no hidden one; Escape selects nothing. A row of
// moves is one step to undo: any other key ends it, wherever the focus is. No key acts while a mouse button
// is down.
bool PressKey(const KeyPress& key, bool onCanvas, const EditorControls& controls);

// Whether a typed character may go into the box of the snap interval, which shows `text`. It allows a single
// digit, or one with a point and up to two more digits.
bool SnapCharacterPasses(std::string_view text, char32_t character);

}  // namespace boreforge
