#include "editor/SnapBox.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpressionValidator>

#include "editor/ShapeInput.h"

namespace boreforge {

SnapBox::SnapBox(QWidget* parent) : QLineEdit("0.5", parent) {
    setMaxLength(5);
    // Pasted and dropped text doesn't come through key presses: digits and points only.
    setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9.]*"), this));
    // An input method would insert characters without a key press.
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

// Text may be dropped here; a dragged file is the window's, though file managers send its name as text, too.
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
    // When the box's own context menu closes, or the window is activated again, the selection stays: "Cut"
    // would otherwise remove the whole text.
    const bool returns =
        event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
    if (!returns) selectAll();
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
