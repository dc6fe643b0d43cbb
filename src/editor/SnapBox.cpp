#include "editor/SnapBox.h"

#include <QKeyEvent>
#include <QRegularExpressionValidator>

#include "editor/ShapeInput.h"

namespace boreforge {

SnapBox::SnapBox(QWidget* parent) : QLineEdit("0.5", parent) {
    setMaxLength(5);
    // What is pasted or dropped comes in one piece and not by keys; of that nothing but digits and points.
    setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9.]*"), this));
    // An input method would put characters in that no key press shows.
    setAttribute(Qt::WA_InputMethodEnabled, false);
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
    selectAll();
}

// The click that brought the focus would put the cursor between two characters and drop the selection.
void SnapBox::mousePressEvent(QMouseEvent* event) {
    if (!focusByMouse_) QLineEdit::mousePressEvent(event);
}

void SnapBox::mouseReleaseEvent(QMouseEvent* event) {
    if (!focusByMouse_) QLineEdit::mouseReleaseEvent(event);
    focusByMouse_ = false;
}

}  // namespace boreforge
