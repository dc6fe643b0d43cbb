#include "dialogs/MessageBoxes.h"

#include <QApplication>
#include <QCursor>
#include <QMessageBox>

namespace boreforge {

namespace {

// The window that a message belongs to. Just after another dialog has closed, no window is active yet.
QWidget* MessageOwner() {
    if (QWidget* const active = QApplication::activeWindow()) return active;
    if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->isVisible()) return window;
    return nullptr;
}

}  // namespace

void ShowFailure(const Failure& failure) {
    const QString text = QString::fromStdString(failure.Text());
    if (text.isEmpty()) return;
    // During a job the cursor is an hourglass; show an arrow while the box is open.
    const bool waiting = QApplication::overrideCursor() != nullptr;
    if (waiting) QApplication::setOverrideCursor(Qt::ArrowCursor);
    QMessageBox box(failure.isNotice ? QMessageBox::Information : QMessageBox::Warning,
                    failure.isNotice ? "Notice!" : "Error!", text, QMessageBox::Ok, MessageOwner());
    box.setTextFormat(Qt::PlainText);
    box.exec();
    if (waiting) QApplication::restoreOverrideCursor();
}

}  // namespace boreforge
