// Asks the user for a colour.
#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

#include "base/Values.h"

namespace boreforge {

// The dialog's 16 slots for the user's own colours. The first call fills them with the first 16 system
// colours; from then on the user's changes last as long as the program runs.
extern std::array<PackedColor, 16> CustomColors;

// Dialog flags, with the values that callers of the platform's own dialog know.
enum ColorDialogFlag : std::int32_t {
    kStartFromColor = 0x1,
    kFullOpen = 0x2,
    kPreventFullOpen = 0x4,
    kSolidColor = 0x80,
    kAnyColor = 0x100,
};

// What a dialog is told and what it answers. Color is the colour to start with; then the colour chosen, or -1
// if none was. The next three are about screens with few colours and about a dialog that unfolds: Qt's dialog
// always shows everything. Flags are derived from them.
struct ColorDialogArguments {
    PackedColor Color = 0;
    bool AnyColor = false;
    bool FullOpen = false;
    bool PreventFullOpen = false;
    QWidget* Owner = nullptr;
    std::int32_t Flags = 0;
};

// Runs the dialog; true if the user chose a colour.
bool ShowColorDialog(ColorDialogArguments& arguments);

// The call that runs the dialog: 1 if the user chose a colour, else 0; it reads and writes CustomColors. A
// test may answer for the user here.
std::int32_t QtColorDialog(ColorDialogArguments& record);
extern std::int32_t (*ChooseColor)(ColorDialogArguments& record);

// The platform's index of a button's dark shadow among its system colours.
inline constexpr int kButtonDarkShadow = 21;

// The colour of a part of the desktop by its platform index, 0 to 15 or kButtonDarkShadow; black for others.
PackedColor SystemColor(int index);

}  // namespace boreforge
