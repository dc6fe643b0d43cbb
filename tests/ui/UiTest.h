// What the tests of the windows share: the main window with the box, on a canvas of 792 by 534 pixels with
// the origin at (396, 267), and dialogs that the test answers instead of the user.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "dialogs/mColorDialog.h"
#include "dialogs/mFileDialog.h"
#include "editor/ShapeView.h"
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

// What a message box showed.
struct Message {
    QMessageBox::Icon icon;
    QString title, text;
    bool operator==(const Message&) const = default;
};
inline void PrintTo(const Message& message, std::ostream* out) {
    *out << "icon " << message.icon << ", " << (message.title + ": " + message.text).toStdString();
}

// Reads the messages instead of the user: presses OK as soon as one opens. Questions have no such button.
class MessageReader : public QObject {
  public:
    MessageReader() { qApp->installEventFilter(this); }

    std::vector<Message> read;

  private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const box = event->type() == QEvent::Show ? dynamic_cast<QMessageBox*>(watched) : nullptr;
        if (auto* const ok = box ? box->button(QMessageBox::Ok) : nullptr) {
            read.push_back({box->icon(), box->windowTitle(), box->text()});
            QTimer::singleShot(0, ok, &QAbstractButton::click);
        }
        return false;
    }
};

class UiTest : public CoreTest {
  protected:
    UiTest() {
        file.clear();
        ShapeView = {};
        fileDialogCalls.GetOpenFileName = fileDialogCalls.GetSaveFileName = [](FileDialogArguments& record) {
            asked = record;
            if (!file.empty()) record.FileName = QString::fromStdString(file);
            return std::exchange(file, "").empty() ? 0 : 1;
        };
        ChooseColor = [](ColorDialogArguments& record) {
            askedColor = record;
            return QtColorDialog(record);
        };
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
    // Of the last file dialog: title, filter with "/" for zero characters, extension, folder, file and flags.
    static QString Asked() {
        const QStringList fields = {asked.DialogTitle, asked.Filter, asked.DefaultExtension,
                                    QDir(asked.InitialFolder).dirName(), asked.FileName};
        return fields.join(", ").replace(QChar(0), '/') + ", " + QString::number(asked.Flags, 16);
    }
    // Runs `act` on the modal window of this class that opens next.
    template <class Window>
    void OnModal(std::function<void(Window&)> act) {
        QTimer::singleShot(0, &window, [=, this] {
            auto* const opened = dynamic_cast<Window*>(QApplication::activeModalWidget());
            opened ? act(*opened) : OnModal<Window>(act);
        });
    }

    // Chooses a colour in the colour dialog that opens next, or cancels it.
    void OnColorDialog(std::optional<QColor> color) {
        OnModal<QColorDialog>([=](QColorDialog& dialog) {
            dialog.setCurrentColor(color.value_or(Qt::white));
            color ? dialog.accept() : dialog.reject();
        });
    }

    static inline std::string file;                 // the answer to one file dialog; an empty one cancels it
    static inline FileDialogArguments asked;        // what the last of them was given
    static inline ColorDialogArguments askedColor;  // what the last colour dialog was given
    frmMain window;
    MessageReader messages;
};

}  // namespace boreforge
