// Asks the user for a colour.
#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

#include "base/Values.h"

namespace boreforge {

// The dialog's 16 slots for colours of the user's own. The first call fills them with the first 16 system
// colours; from then on the user's changes live as long as the program.
extern std::array<PackedColor, 16> CustomColors;

// Starts with `Color`. On true it is the colour chosen, on false -1. AnyColor, FullOpen and PreventFullOpen
// speak of a screen with few colours and of a dialog that unfolds; the toolkit's dialog shows everything.
bool ShowColorDialog(PackedColor& Color, bool AnyColor, bool FullOpen, bool PreventFullOpen, QWidget* Owner);

// What the dialog is given. Flags have the values that callers of the platform's own dialog know.
enum ColorDialogFlag : std::int32_t {
    kStartFromColor = 0x1,
    kFullOpen = 0x2,
    kPreventFullOpen = 0x4,
    kSolidColor = 0x80,
    kAnyColor = 0x100,
};
struct ColorDialogRecord {
    PackedColor Color = 0;
    std::int32_t Flags = 0;
    QWidget* Owner = nullptr;
};

// The call that runs the dialog: 1 when the user chose a colour, 0 when not; it reads and writes
// CustomColors. A test may answer for the user here.
std::int32_t ToolkitColorDialog(ColorDialogRecord& record);
extern std::int32_t (*ChooseColor)(ColorDialogRecord& record);

// The colour of a part of the desktop, by its platform index; indices from 0 to 15 and 21 are known, black
// stands for others.
PackedColor SystemColor(int index);

}  // namespace boreforge
