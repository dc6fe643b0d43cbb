// Shows one window, without a display, and ends when that is painted: the program's main window for
// "boreforge", a bare one of the same size for "empty".
#include <QApplication>
#include <QTimer>

#include <memory>
#include <string_view>

#include "editor/frmMain.h"

namespace {

constexpr int kWidth = 11880 / 15, kHeight = 8490 / 15;  // the main window's, in pixels

// Ends the program behind the round of events in which anything is painted first: a window and all that is in
// it are painted in one.
class UntilPainted : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return false;
    }
};

}  // namespace

int main(int count, char** arguments) {
    const std::string_view what = count == 2 ? arguments[1] : "";
    if (what != "boreforge" && what != "empty") return 2;
    QApplication application(count, arguments);
    UntilPainted untilPainted;
    application.installEventFilter(&untilPainted);
    std::unique_ptr<QWidget> window;
    if (what == "boreforge") {
        window = std::make_unique<boreforge::frmMain>();
    } else {
        window = std::make_unique<QWidget>();
        window->resize(kWidth, kHeight);
    }
    window->show();
    return QApplication::exec();
}
