#include "editor/ShapeInput.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iterator>

#include "editor/ShapeHistory.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"

namespace boreforge {

MouseAnchor LastMouse;
WheelTurn Wheel;

namespace {

constexpr double kHitRange = 0.3;       // shape units in x and y, at any zoom
constexpr double kUnsnappedStep = 0.1;  // shape units that an arrow key moves a point by if snapping is off
constexpr double kUnsnappedWall = 0.5;  // shape units of an even wall if snapping is off

bool IsHit(const Vector3D& point, const Vector3D& position) {
    return std::fabs(double(position.x) - point.x) < kHitRange &&
           std::fabs(double(position.y) - point.y) < kHitRange;
}

bool SelectPoint(std::int32_t node, bool outside, ShownNodes shown) {
    if (!(outside ? shown.outside : shown.inside)) return false;
    TunnelShape.SelectedNode = node;
    TunnelShape.SelectedIsOutside = ToTruth(outside);
    return true;
}

// Selects the first visible point at `position`; a node's inside point comes before its outside point.
bool SelectPointAt(const Vector3D& position, ShownNodes shown) {
    for (std::int32_t i = 0; i < TunnelShape.NodeCount(); ++i) {
        const auto node = static_cast<std::size_t>(i);
        const bool inside = shown.inside && IsHit(TunnelShape.InsideNodes[node], position);
        const bool outside = !inside && shown.outside && IsHit(TunnelShape.OutsideNodes[node], position);
        if (inside || outside) return SelectPoint(i, outside, shown);
    }
    return false;
}

// The snap interval in a text: the number at its start, or 0 if there is none or it is too large for a 32-bit
// float. Independent of the locale.
float SnapInterval(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    const bool number = text.find_first_of("0123456789.-") == 0;  // from_chars takes "inf", too
    double value = 0;
    if (number) std::from_chars(text.data(), text.data() + text.size(), value);
    const auto interval = static_cast<float>(value);
    return std::isfinite(interval) ? interval : 0;
}

// 0 when snapping is off.
float ActiveInterval(const EditorControls& controls) {
    const float interval = SnapInterval(controls.snapText);
    return controls.snapTo && interval > 0 ? interval : 0;
}

// A point of the selected node.
Vector3D& SelectedPoint(bool outside) {
    return (outside ? TunnelShape.OutsideNodes : TunnelShape.InsideNodes)[TunnelShape.SelectedNode];
}

float RoundToInterval(float value, double interval) {
    const float raised = static_cast<float>(value + interval / 2);
    return static_cast<float>(std::floor(raised / interval) * interval);
}

void Pan(float x, float y, const EditorControls& controls) {
    ShapeView.PanX = static_cast<float>(ShapeView.PanX - (double(LastMouse.LastMouseX) - x));
    ShapeView.PanY = static_cast<float>(ShapeView.PanY - (double(LastMouse.LastMouseY) - y));
    LastMouse = {x, y};
    ClampPan();
    UpdateViewOrigin(controls.canvasWidth, controls.canvasHeight);
}

void Zoom(float scale, const EditorControls& controls) {
    TunnelShape.ZoomScale = std::clamp(scale, kMinZoom, kMaxZoom);
    ClampPan();
    UpdateViewOrigin(controls.canvasWidth, controls.canvasHeight);
}

// Inserts a node after the selected one, midway to the next point of the inside contour even if an outside
// point is selected.
void InsertMidway() {
    const auto selected = static_cast<std::size_t>(TunnelShape.SelectedNode);
    const std::size_t next = selected + 1 < TunnelShape.InsideNodes.size() ? selected + 1 : 0;
    const Vector3D a = TunnelShape.InsideNodes[selected];
    const Vector3D b = TunnelShape.InsideNodes[next];
    const auto midway = [](double from, double to) { return static_cast<float>(from - (from - to) / 2); };
    InsertShapeNode(TunnelShape.SelectedNode, {midway(a.x, b.x), midway(a.y, b.y), 0});
}

// All changes while a mouse button is down are one step, which ends with its release.
void EndStepUnlessDragging(const EditorControls& controls) {
    if (!controls.buttonDown) EndShapeStep();
}

bool ApplyTool(ShapeTool tool, const EditorControls& controls) {
    switch (tool) {
        case ShapeTool::New:
            ResetTunnelShape();
            return true;
        case ShapeTool::Insert:
            if (TunnelShape.SelectedNode < 0) return false;
            InsertMidway();
            return true;
        case ShapeTool::Delete:
            if (TunnelShape.SelectedNode < 0) return false;
            DeleteShapeNode(TunnelShape.SelectedNode);
            TunnelShape.SelectedNode = -1;
            return true;
        case ShapeTool::ZoomIn:
            Zoom(TunnelShape.ZoomScale + kZoomStep, controls);
            return true;
        case ShapeTool::ZoomOut:
            Zoom(TunnelShape.ZoomScale - kZoomStep, controls);
            return true;
        case ShapeTool::ZoomReset:
            Zoom(kDefaultZoom, controls);
            return true;
        case ShapeTool::Mirror:
            MirrorTunnelShape();
            return true;
        case ShapeTool::Flip:
            FlipTunnelShape();
            return true;
        case ShapeTool::EvenWall: {
            const float interval = ActiveInterval(controls);
            return MakeWallEven(interval > 0 ? interval : kUnsnappedWall);
        }
        case ShapeTool::Reverse:
            ReverseTunnelShape();
            return true;
        case ShapeTool::Undo:
            return !controls.buttonDown && UndoShapeStep();
        case ShapeTool::Redo:
            return !controls.buttonDown && RedoShapeStep();
        case ShapeTool::Open:
        case ShapeTool::Save:
            break;
    }
    return false;
}

// Selects the next or previous point of the contour. If nothing is selected, starts with the first or last
// point of the contour that had the last selection, or of the other contour if that one is hidden.
bool SelectAlongContour(bool forward, ShownNodes shown) {
    const std::int32_t count = TunnelShape.NodeCount(), node = TunnelShape.SelectedNode;
    const bool outside = TunnelShape.SelectedIsOutside;
    if (count == 0) return false;
    if (node >= 0) return SelectPoint((node + (forward ? 1 : count - 1)) % count, outside, shown);
    const std::int32_t end = forward ? 0 : count - 1;
    return SelectPoint(end, outside, shown) || SelectPoint(end, !outside, shown);
}

bool SelectByKey(KeyCode code, ShownNodes shown) {
    const std::int32_t node = TunnelShape.SelectedNode;
    const bool forward = code == KeyCode::Right;
    if (forward || code == KeyCode::Left) return SelectAlongContour(forward, shown);
    return node >= 0 && SelectPoint(node, !TunnelShape.SelectedIsOutside, shown);
}

void MovePoint(Vector3D& point, double x, double y) {
    point = {static_cast<float>(point.x + x), static_cast<float>(point.y + y), 0};
}

bool MoveByKey(const KeyPress& key, const EditorControls& controls) {
    if (TunnelShape.SelectedNode < 0) return false;
    const float interval = ActiveInterval(controls);
    const double step = interval > 0 ? interval : kUnsnappedStep;
    const int right = (key.code == KeyCode::Right) - (key.code == KeyCode::Left);
    const int up = (key.code == KeyCode::Up) - (key.code == KeyCode::Down);
    const bool outside = TunnelShape.SelectedIsOutside;
    MovePoint(SelectedPoint(outside), right * step, up * step);
    if (key.alt) MovePoint(SelectedPoint(!outside), right * step, up * step);
    return true;
}

struct ToolKey {
    KeyCode code;
    ShapeTool tool;
};
constexpr ToolKey kToolKeys[] = {
    {KeyCode::I, ShapeTool::Insert},
    {KeyCode::Delete, ShapeTool::Delete},
    {KeyCode::PadPlus, ShapeTool::ZoomIn},
    {KeyCode::Plus, ShapeTool::ZoomIn},
    {KeyCode::PadMinus, ShapeTool::ZoomOut},
    {KeyCode::Minus, ShapeTool::ZoomOut},
    {KeyCode::PadSlash, ShapeTool::ZoomReset},
    {KeyCode::M, ShapeTool::Mirror},
    {KeyCode::F, ShapeTool::Flip},
    {KeyCode::W, ShapeTool::EvenWall},
    {KeyCode::R, ShapeTool::Reverse},
};

std::optional<ShapeTool> ToolOfShortcut(const KeyPress& key) {
    if (!key.control || key.alt || key.super) return {};
    if (key.code == KeyCode::Z) return key.shift ? ShapeTool::Redo : ShapeTool::Undo;
    if (key.code == KeyCode::Y && !key.shift) return ShapeTool::Redo;
    return {};
}

}  // namespace

Vector3D Snapped(const Vector3D& position, const EditorControls& controls) {
    const float interval = ActiveInterval(controls);
    if (interval == 0) return position;
    return {RoundToInterval(position.x, interval), RoundToInterval(position.y, interval), position.z};
}

std::string FormatPosition(float value) {
    // A float times 100 is exact in 64 bits, so that round sees exact halves. Floats from 2^23 on have no
    // fraction.
    constexpr float kWhole = 1 << 23;
    const double rounded = std::fabs(value) < kWhole ? std::round(value * 100.0) / 100 : value;
    char digits[64];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), rounded, std::chars_format::fixed, 2).ptr;
    std::string text(digits, end);
    if (text.ends_with('0')) text.pop_back();
    return text == "-0.0" ? "0.0" : text;
}

bool PressMouse(MouseButton button, float x, float y, const EditorControls& controls) {
    EndStepUnlessDragging(controls);
    LastMouse = {x, y};
    if (button != MouseButton::Left) return false;
    TunnelShape.SelectedNode = -1;
    const Vector3D position = ShapePositionAt(x, y);
    const bool anyShown = controls.shown.inside || controls.shown.outside;
    if (!SelectPointAt(position, controls.shown) && anyShown) {
        AddShapeNode(Snapped(position, controls));
        TunnelShape.SelectedNode = TunnelShape.NodeCount() - 1;
    }
    return true;
}

bool MoveMouse(MouseState state, float x, float y, const EditorControls& controls) {
    if (state == MouseState::Right) {
        Pan(x, y, controls);
        return true;
    }
    if (state != MouseState::Left || TunnelShape.SelectedNode < 0) return false;
    const Vector3D position = Snapped(ShapePositionAt(x, y), controls);
    SelectedPoint(TunnelShape.SelectedIsOutside) = {position.x, position.y, 0};
    return true;
}

bool ReleaseMouse(MouseButton button, const EditorControls& controls) {
    if (button == MouseButton::Right) TunnelShape.SelectedNode = -1;
    EndStepUnlessDragging(controls);
    return true;
}

bool RunShapeTool(ShapeTool tool, const EditorControls& controls) {
    EndStepUnlessDragging(controls);
    const bool done = ApplyTool(tool, controls);
    EndStepUnlessDragging(controls);
    return done;
}

bool TurnWheel(int eighths, const EditorControls& controls) {
    constexpr int kNotch = 120;
    if (controls.buttonDown) {
        Wheel = {};
        return false;
    }
    // A remainder from the other direction would cancel a part of this turn.
    if ((eighths < 0) != (Wheel.eighths < 0)) Wheel = {};
    Wheel.eighths += eighths;
    const int notches = Wheel.eighths / kNotch;
    Wheel.eighths %= kNotch;
    for (int i = 0; i < std::abs(notches); ++i)
        RunShapeTool(notches > 0 ? ShapeTool::ZoomIn : ShapeTool::ZoomOut, controls);
    return notches != 0;
}

void UsePreset(PresetShape preset, const EditorControls& controls) {
    EndStepUnlessDragging(controls);
    MakePresetShape(preset);
    EndStepUnlessDragging(controls);
}

Outcome OpenShapeFile(const std::string& path, const EditorControls& controls) {
    EndStepUnlessDragging(controls);
    const Outcome loaded = LoadTunnelShape(path);
    EndStepUnlessDragging(controls);
    return loaded;
}

std::optional<ShapeTool> ToolOfKey(const KeyPress& key) {
    const auto found = std::ranges::find(kToolKeys, key.code, &ToolKey::code);
    return found == std::end(kToolKeys) ? ToolOfShortcut(key) : found->tool;
}

bool PressKey(const KeyPress& key, bool onCanvas, const EditorControls& controls) {
    const bool acts = onCanvas && !key.super && !controls.buttonDown;
    const bool arrow = key.code >= KeyCode::Left && key.code <= KeyCode::Down;
    if (acts && arrow && !key.control) return MoveByKey(key, controls);
    EndStepUnlessDragging(controls);
    if (!acts || key.alt) return false;
    if (arrow) return SelectByKey(key.code, controls.shown);
    if (key.code != KeyCode::Escape || TunnelShape.SelectedNode < 0) return false;
    TunnelShape.SelectedNode = -1;
    return true;
}

bool SnapCharacterPasses(std::string_view text, char32_t character) {
    constexpr char32_t kBackspace = 8;
    if (character == kBackspace) return true;
    if (text.size() >= 4) return false;
    if (character == U'.') return true;
    if (text.size() == 1) return false;
    return character >= U'0' && character <= U'9';
}

}  // namespace boreforge
