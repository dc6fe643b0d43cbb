// What the tests of the windows share: the main window with the box, on a canvas of 792 by 534 pixels with
// the origin at (396, 299) of the window, and a user who answers dialogs.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

#include "dialogs/mFileDialog.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "editor/window/frmMain.h"
#include "support/CoreTest.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }

namespace boreforge {

template <class T = QWidget>
T& Get(const QWidget& window, const char* name) {
    T* const found = window.findChild<T*>(name);
    if (!found) qFatal("There is no %s.", name);
    return *found;
}

inline void Click(const QWidget& window, const char* name) {
    QTest::mouseClick(&Get(window, name), Qt::LeftButton);
}

inline void Show(QWidget& window) {
    window.show();
    while (!window.isActiveWindow())
        QApplication::processEvents();
}

// Chooses files, and presses OK as soon as a message opens. Questions have no such button.
class User : public QObject {
  public:
    User() {
        current = this;
        fileDialogCalls = {ChooseFile, ChooseFile};
        qApp->installEventFilter(this);
    }
    // The title of the last file dialog, its filter with "/" for zero characters, and the rest.
    QString Asked() const {
        const QStringList fields = {asked.DialogTitle, asked.Filter, asked.DefaultExtension,
                                    QDir(asked.InitialFolder).dirName(), asked.FileName};
        return fields.join(", ").replace(QChar(0), '/') + ", " + QString::number(asked.Flags, 16);
    }

    std::string file;           // the answer to the next file dialog; an empty one cancels it
    FileDialogArguments asked;  // what the last one was given
    QStringList messages;       // "warning, Error!: text"

  private:
    static std::int32_t ChooseFile(FileDialogArguments& record) {
        current->asked = record;
        if (current->file.empty()) return 0;
        record.FileName = QString::fromStdString(std::exchange(current->file, ""));
        return 1;
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const box = event->type() == QEvent::Show ? dynamic_cast<QMessageBox*>(watched) : nullptr;
        if (auto* const ok = box ? box->button(QMessageBox::Ok) : nullptr) {
            const char* const icon = box->icon() == QMessageBox::Warning ? "warning" : "information";
            messages += QString("%1, %2: %3").arg(icon, box->windowTitle(), box->text());
            QTimer::singleShot(0, ok, &QAbstractButton::click);
        }
        return false;
    }
    static inline User* current = nullptr;
};

class UiTest : public CoreTest {
  protected:
    UiTest() {
        ShapeView = {};
        Show(window);
    }
    // The window's pixel at a shape position, as long as the view was neither panned nor zoomed.
    static QPoint At(double x, double y) { return QPoint(qRound(396 + 50 * x), qRound(299 - 50 * y)); }
    void Drag(Qt::MouseButton button, QPoint from, QPoint to) {
        QTest::mousePress(window.windowHandle(), button, {}, from);
        QTest::mouseMove(window.windowHandle(), to);
        QTest::mouseRelease(window.windowHandle(), button, {}, to);
    }
    void Key(int key, int modifiers = 0) {
        const Qt::KeyboardModifiers held(modifiers);
        if (held & Qt::ControlModifier)  // types a control character, which QTest::keyClick doesn't know
            QTest::sendKeyEvent(QTest::Click, window.windowHandle(), Qt::Key(key), QChar(key & 0x1F), held);
        else
            QTest::keyClick(window.windowHandle(), Qt::Key(key), held);
    }
    QString Focus() const { return window.focusWidget()->objectName(); }
    QString Text(const char* name) const { return Get(window, name).property("text").toString(); }
    // Runs `act` on the modal window of this class that opens next.
    template <class Window>
    void OnModal(std::function<void(Window&)> act) {
        QTimer::singleShot(0, &window, [=, this] {
            auto* const opened = dynamic_cast<Window*>(QApplication::activeModalWidget());
            opened ? act(*opened) : OnModal<Window>(act);
        });
    }
    User user;
    frmMain window;
};

}  // namespace boreforge
