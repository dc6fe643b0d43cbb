// The speed of what the user sees: the canvas and the program's start. Needs no display.
#include <QApplication>
#include <QProcess>
#include <QTimer>

#include <memory>

#include "Measure.h"
#include "editor/ShapeDrawing.h"
#include "editor/window/ImageSurface.h"
#include "editor/window/frmMain.h"

using namespace boreforge;

namespace {

// A large canvas that shows a circle of 200 nodes.
void MeasurePaint(benchmark::State& state, void (*paint)(ImageSurface&)) {
    const QSize size(2560, 1440);
    QImage image(size, QImage::Format_RGB32);
    MakeRoundShape(200, 10);
    ShapeView = {};
    UpdateViewOrigin(size.width(), size.height());
    Measure(state, [&] {
        ImageSurface surface(image, size, 1);
        paint(surface);
        return true;
    });
}

void PaintCanvas(ImageSurface& surface) { DrawTunnelShape(surface, {true, true}); }

// The minimum for any canvas: clearing it and drawing the grid's 404 lines, most of which are outside the
// canvas.
void PaintGrid(ImageSurface& surface) {
    surface.Clear();
    drawing::DrawGrid(surface);
}

// Runs this program with an argument.
void MeasureStart(benchmark::State& state, const char* window) {
    Measure(state, [&] { return QProcess::execute(QApplication::applicationFilePath(), {window}) == 0; });
}

// Ends the program after the first round of events that paints anything: a window and its contents are
// painted in one round.
struct UntilPainted : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return false;
    }
};

// Shows the main window, or an empty one of the same size.
int Show(const std::string& what) {
    UntilPainted untilPainted;
    qApp->installEventFilter(&untilPainted);
    const std::unique_ptr<QWidget> window(what == "boreforge" ? new frmMain : new QWidget);
    if (what == "empty") window->resize(11880 / 15, 8490 / 15);
    window->show();
    return QApplication::exec();
}

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    if (count == 2 && *arguments[1] != '-') return Show(arguments[1]);
    AddCase("canvas of 2560 by 1440, 200 nodes", MeasurePaint, PaintCanvas);
    AddCase("clear and 404 lines", MeasurePaint, PaintGrid);
    AddCase("start to the drawn window", MeasureStart, "boreforge");
    AddCase("start to an empty window", MeasureStart, "empty");
    return RunCases(count, arguments);
}
