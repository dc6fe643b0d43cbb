// The tool row and the canvas under it: what each button runs, and where each control is.
#pragma once

#include "dialogs/ControlTable.h"
#include "editor/ShapeInput.h"

namespace boreforge {

struct ToolButton {
    ControlGeometry geometry;
    const char* toolTip;
    const char* icon;
};

struct ShapeToolButton {
    ShapeTool tool;
    ToolButton button;
};
inline constexpr ShapeToolButton kShapeTools[] = {
    {ShapeTool::New, {{"btnShapeTools(0)", 0, 0, 435, 435, 11}, "New Tunnel Shape", "new-shape"}},
    {ShapeTool::Insert, {{"btnShapeTools(1)", 4620, 0, 435, 435, 10}, "Insert Node ( I )", "insert-node"}},
    {ShapeTool::Delete, {{"btnShapeTools(2)", 5040, 0, 435, 435, 9}, "Delete Node ( DEL )", "delete-node"}},
    {ShapeTool::Open, {{"btnShapeTools(3)", 420, 0, 435, 435, 8}, "Open Tunnel Shape...", "open-shape"}},
    {ShapeTool::Save, {{"btnShapeTools(4)", 840, 0, 435, 435, 7}, "Save Tunnel Shape...", "save-shape"}},
    {ShapeTool::ZoomIn, {{"btnShapeTools(5)", 6720, 0, 435, 435, 6}, "Zoom In ( + )", "zoom-in"}},
    {ShapeTool::ZoomOut, {{"btnShapeTools(6)", 7140, 0, 435, 435, 5}, "Zoom Out ( - )", "zoom-out"}},
    {ShapeTool::ZoomReset,
     {{"btnShapeTools(7)", 7560, 0, 435, 435, 4}, "Reset Default Zoom ( / )", "zoom-reset"}},
    {ShapeTool::Mirror, {{"btnShapeTools(8)", 3780, 0, 435, 435, 3}, "Mirror Tunnel ( M )", "mirror"}},
    {ShapeTool::Flip, {{"btnShapeTools(9)", 4200, 0, 435, 435, 2}, "Flip Tunnel ( F )", "flip"}},
};
struct PresetButton {
    PresetShape preset;
    ToolButton button;
};
inline constexpr PresetButton kPreShapes[] = {
    {kPresetBox, {{"btnPreShapes(0)", 2820, 0, 435, 435, 14}, "Pre-Shape - Box", "preset-box"}},
    {kPresetRounded, {{"btnPreShapes(1)", 3240, 0, 435, 435, 13}, "Pre-Shape - Rounded", "preset-rounded"}},
};
inline constexpr ToolButton kMakeObject{
    {"btnToolBar(0)", 1320, 0, 435, 435, 20}, "Make 3DS Object for Track...", "make-object"};
inline constexpr ToolButton kShowNodes[] = {
    {{"chkShowNodes(0)", 1860, 0, 435, 435, 21}, "Show Inside Nodes", "show-inside-nodes"},
    {{"chkShowNodes(1)", 2280, 0, 435, 435, 22}, "Show Outside Nodes", "show-outside-nodes"},
};
inline constexpr ToolButton kSnapTo{{"chkSnapTo", 8100, 0, 435, 435, 12}, "Snap", "snap"};

inline constexpr ControlGeometry kSnapBox{"txtSnap", 8640, 150, 615, 285, 1};
inline constexpr ControlGeometry kReadOutFrame{"Label3", 9660, 60, 1875, 315, 19};
inline constexpr ControlGeometry kXLabel{"Label1", 9720, 120, 195, 195, 18};
inline constexpr ControlGeometry kYLabel{"Label2", 10620, 120, 195, 195, 16};
inline constexpr ControlGeometry kMousePos[] = {{"lblMousePos(0)", 9960, 120, 615, 195, 17},
                                                {"lblMousePos(1)", 10860, 120, 615, 195, 15}};
inline constexpr ControlGeometry kCanvas{"pbShape", 0, 480, 11775, 7275, 0};

}  // namespace boreforge
