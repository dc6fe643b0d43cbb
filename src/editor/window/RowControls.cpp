#include "editor/window/RowControls.h"

#include <QStyleOptionToolButton>

#include "dialogs/QtColor.h"

namespace boreforge {

void RowButton::initStyleOption(QStyleOptionToolButton* option) const {
    QToolButton::initStyleOption(option);
    if (!(option->state & (QStyle::State_On | QStyle::State_Sunken)) || !IsDark(option->palette)) return;
    constexpr float kLight = 0.7f;  // 0: the button's colour, 1: its text's
    const QColor button = option->palette.color(QPalette::Button);
    const QColor text = option->palette.color(QPalette::ButtonText);
    const auto between = [](float from, float to) { return from + kLight * (to - from); };
    option->palette.setColor(QPalette::Button, QColor::fromRgbF(between(button.redF(), text.redF()),
                                                                between(button.greenF(), text.greenF()),
                                                                between(button.blueF(), text.blueF())));
}

// A text passed to QLabel's constructor would be announced as a plain label's.
ReadOut::ReadOut(const QString& text, QWidget* parent) : QLabel(parent) { setText(text); }

}  // namespace boreforge
