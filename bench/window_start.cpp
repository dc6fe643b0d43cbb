// Shows one window on no display and ends once it is painted. The argument "boreforge" shows the main window,
// "empty" a bare window of the same size.
#include <QApplication>
#include <QTimer>

#include <memory>
#include <string_view>

#include "editor/window/frmMain.h"

namespace {

constexpr int kWidth = 11880 / 15, kHeight = 8490 / 15;  // the main window's, in pixels

// Ends the program after the first round of events that paints anything: a window and its contents are
// painted in one round.
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
