// Asks the user for a colour.
#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

#include "base/Values.h"

namespace boreforge {

// The dialog's 16 slots for the user's own colours. The first dialog fills them with the first 16 system
// colours; the user's changes then last until the program ends.
inline constexpr int kCustomColors = 16;
extern std::array<PackedColor, kCustomColors> CustomColors;
extern bool CustomColorsReady;  // the slots have been filled

// Dialog flags, with the same values as for the platform's own dialog.
enum ColorDialogFlag : std::int32_t {
    kStartFromColor = 0x1,
    kFullOpen = 0x2,
    kPreventFullOpen = 0x4,
    kSolidColor = 0x80,
    kAnyColor = 0x100,
};

// Input and output of the dialog. Color is the initial colour, and afterwards the chosen one, or -1 if none
// was chosen. AnyColor, FullOpen and PreventFullOpen matter only to the dialog of Windows; Qt's always shows
// everything. Flags are derived from them.
struct ColorDialogArguments {
    PackedColor Color = 0;
    bool AnyColor = false;
    bool FullOpen = false;
    bool PreventFullOpen = false;
    QWidget* Owner = nullptr;
    std::int32_t Flags = 0;
};

// Runs the dialog; true if the user chose a colour.
[[nodiscard]] bool ShowColorDialog(ColorDialogArguments& arguments);

// The call that runs the dialog: 1 if the user chose a colour, else 0; it reads and writes CustomColors.
// Tests replace it to answer for the user.
extern std::int32_t (*ChooseColor)(ColorDialogArguments& record);

// The index of a button's dark shadow among the platform's system colours.
inline constexpr int kButtonDarkShadow = 21;

// The system colour with a platform index: 0 to 15 or kButtonDarkShadow. Black for any other.
PackedColor SystemColor(int index);

}  // namespace boreforge
