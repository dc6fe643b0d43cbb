#include "dialogs/mColorDialog.h"

#include <QColorDialog>
#include <QGuiApplication>
#include <QPalette>

namespace boreforge {

std::array<PackedColor, 16> CustomColors{};
std::int32_t (*ChooseColor)(ColorDialogRecord& record) = ToolkitColorDialog;

namespace {

bool customColorsReady = false;

// The roles of the toolkit's palette for the platform's indices 0 to 15: scroll bar, desktop, active and
// inactive title bar, menu, window, window frame, texts of menu, window and title bar, active and inactive
// border, workspace, highlight and its text, button.
constexpr QPalette::ColorRole kSystemRoles[] = {
    QPalette::Mid,    QPalette::Dark,   QPalette::Highlight,  QPalette::Mid,       QPalette::Window,
    QPalette::Base,   QPalette::Shadow, QPalette::WindowText, QPalette::Text,      QPalette::HighlightedText,
    QPalette::Button, QPalette::Window, QPalette::Dark,       QPalette::Highlight, QPalette::HighlightedText,
    QPalette::Button,
};
constexpr int kButtonDarkShadow = 21;

PackedColor Packed(const QColor& color) { return PackColor(color.red(), color.green(), color.blue()); }

QColor Unpacked(PackedColor color) {
    std::int32_t red = 0, green = 0, blue = 0;
    SplitColor(color, red, green, blue);
    return QColor(red, green, blue);
}

}  // namespace

PackedColor SystemColor(int index) {
    const QPalette palette = QGuiApplication::palette();
    if (index >= 0 && index < 16) return Packed(palette.color(kSystemRoles[index]));
    // The toolkit's shadow is a shade lighter than the platform's dark one.
    return index == kButtonDarkShadow ? Packed(palette.color(QPalette::Shadow).darker(115)) : 0;
}

std::int32_t ToolkitColorDialog(ColorDialogRecord& record) {
    for (int i = 0; i < 16; ++i)
        QColorDialog::setCustomColor(i, Unpacked(CustomColors[static_cast<std::size_t>(i)]));
    QColorDialog dialog(Unpacked(record.Color), record.Owner);
    dialog.setOption(QColorDialog::DontUseNativeDialog);  // others don't offer the custom colours
    const bool chosen = dialog.exec() == QDialog::Accepted;
    for (int i = 0; i < 16; ++i)
        CustomColors[static_cast<std::size_t>(i)] = Packed(QColorDialog::customColor(i));
    if (chosen) record.Color = Packed(dialog.selectedColor());
    return chosen ? 1 : 0;
}

bool ShowColorDialog(PackedColor& Color, bool AnyColor, bool FullOpen, bool PreventFullOpen, QWidget* Owner) {
    if (!customColorsReady) {
        for (int i = 0; i < 16; ++i)
            CustomColors[static_cast<std::size_t>(i)] = SystemColor(i);
        customColorsReady = true;
    }
    ColorDialogRecord record{Color,
                             kStartFromColor | (AnyColor ? kAnyColor : kSolidColor) |
                                 (FullOpen ? kFullOpen : 0) | (PreventFullOpen ? kPreventFullOpen : 0),
                             Owner};
    const bool chosen = ChooseColor(record) == 1;
    Color = chosen ? record.Color : -1;
    return chosen;
}

}  // namespace boreforge
