#include "editor/window/RowControls.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpressionValidator>
#include <QStyleOptionToolButton>

#include "dialogs/QtColor.h"
#include "editor/ShapeInput.h"

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

SnapBox::SnapBox(QWidget* parent) : QLineEdit("0.5", parent) {
    setMaxLength(5);
    // Pasted and dropped text bypasses keyPressEvent: allow digits and points only.
    setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9.]*"), this));
    // Its menu would offer Ctrl+Z, which here undoes the shape.
    setContextMenuPolicy(Qt::PreventContextMenu);
    // An input method would bypass keyPressEvent, too.
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

// Text may be dropped here. Dragged files are left to the window: file managers send their names as text,
// too.
void SnapBox::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QLineEdit::dragEnterEvent(event);
}

void SnapBox::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    const bool character = !typed.isEmpty() && typed.at(0).isPrint();
    if (character && !SnapCharacterPasses(text().toStdString(), typed.at(0).unicode())) return;
    QLineEdit::keyPressEvent(event);
}

void SnapBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    focusByMouse_ = event->reason() == Qt::MouseFocusReason;
    // When the window is activated again, keep the selection.
    if (event->reason() != Qt::ActiveWindowFocusReason) selectAll();
}

// QLineEdit would move the cursor to the click that brought the focus, and so drop the selection.
void SnapBox::mousePressEvent(QMouseEvent* event) {
    if (!focusByMouse_) QLineEdit::mousePressEvent(event);
}

void SnapBox::mouseReleaseEvent(QMouseEvent* event) {
    if (!focusByMouse_) QLineEdit::mouseReleaseEvent(event);
    focusByMouse_ = false;
}

}  // namespace boreforge
