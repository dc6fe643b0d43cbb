#include "dialogs/mColorDialog.h"

#include <QGuiApplication>
#include <QPalette>

#include "dialogs/Desktop.h"
#include "dialogs/QtColor.h"

namespace boreforge {

std::array<PackedColor, kCustomColors> CustomColors{};
bool CustomColorsReady = false;
std::int32_t (*ChooseColor)(ColorDialogArguments& record) = DesktopColorDialog;

namespace {

// The roles of Qt's palette for the platform's indices 0 to 15: scroll bar, desktop, active and inactive
// title bar, menu, window, window frame, texts of menu, window and title bar, active and inactive border,
// workspace, highlight and its text, button.
constexpr QPalette::ColorRole kSystemRoles[] = {
    QPalette::Mid,    QPalette::Dark,   QPalette::Highlight,  QPalette::Mid,       QPalette::Window,
    QPalette::Base,   QPalette::Shadow, QPalette::WindowText, QPalette::Text,      QPalette::HighlightedText,
    QPalette::Button, QPalette::Window, QPalette::Dark,       QPalette::Highlight, QPalette::HighlightedText,
    QPalette::Button,
};

std::int32_t FlagsOf(const ColorDialogArguments& arguments) {
    return kStartFromColor | (arguments.AnyColor ? kAnyColor : kSolidColor) |
           (arguments.FullOpen ? kFullOpen : 0) | (arguments.PreventFullOpen ? kPreventFullOpen : 0);
}

}  // namespace

PackedColor SystemColor(int index) {
    const QPalette palette = QGuiApplication::palette();
    if (index >= 0 && index < 16) return ToPackedColor(palette.color(kSystemRoles[index]));
    // Qt's shadow is a shade lighter than the platform's dark one.
    constexpr int kDarker = 115;  // percent
    return index == kButtonDarkShadow ? ToPackedColor(palette.color(QPalette::Shadow).darker(kDarker)) : 0;
}

bool ShowColorDialog(ColorDialogArguments& arguments) {
    if (!CustomColorsReady) {
        for (int i = 0; i < kCustomColors; ++i)
            CustomColors[i] = SystemColor(i);
        CustomColorsReady = true;
    }
    arguments.Flags = FlagsOf(arguments);
    const bool chosen = ChooseColor(arguments) == 1;
    if (!chosen) arguments.Color = -1;
    return chosen;
}

}  // namespace boreforge
