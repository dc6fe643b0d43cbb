// The speed of what the user sees: the canvas, a drag, the program's start. The table continues that of
// engine_bench.
#include <QApplication>
#include <QMouseEvent>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "editor/ShapeDrawing.h"
#include "editor/window/ImageSurface.h"
#include "editor/window/frmMain.h"
#include "inputs.h"
#include "ratio_table.h"

using namespace boreforge;

namespace {

using benchmark::State;

// The time of `paint` on a large canvas that shows a circle of 200 nodes.
template <class Paint>
double TimePaint(State& state, Paint paint) {
    const QSize size(2560, 1440);
    static QImage image(size, QImage::Format_RGB32);
    MakeRoundShape(200, 10);
    ShapeView = {};
    UpdateViewOrigin(size.width(), size.height());
    return Timed(state, [&] {
        ImageSurface surface(image, size, 1);
        paint(surface);
        return true;
    });
}

double TimeCanvas(State& state) {
    return TimePaint(state, [](ImageSurface& surface) { DrawTunnelShape(surface, {true, true}); });
}

// The minimum for any canvas: clearing it and drawing the grid's 404 lines, most of which are outside the
// canvas.
double TimeBareCanvas(State& state) {
    return TimePaint(state, [](ImageSurface& surface) {
        surface.Clear();
        drawing::DrawGrid(surface);
    });
}

class PaintCounter : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
    int paints = 0;
};

// Sends an event of the left button to a widget and lets the program process everything that follows.
void SendMouse(QWidget& to, QEvent::Type type, QPointF at) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, to.mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&to, &event);
    QCoreApplication::processEvents();
}

// Drags a node of the box to and fro, one unit of the shape at each step.
double TimeDrag(State& state) {
    frmMain window;
    window.show();
    QCoreApplication::processEvents();
    auto& canvas = *window.findChild<QWidget*>("pbShape");
    const Vector3D node = TunnelShape.InsideNodes[1];
    const double zoom = TunnelShape.ZoomScale;
    const QPointF start(ShapeView.ViewOriginX + zoom * node.x, ShapeView.ViewOriginY - zoom * node.y);
    SendMouse(canvas, QEvent::MouseButtonPress, start);

    PaintCounter counter;
    canvas.installEventFilter(&counter);
    constexpr int kSteps = 100;
    state.counters[kEach] = kSteps;
    const double seconds = Timed(state, [&] {
        for (int i = 1; i <= kSteps; ++i)
            SendMouse(canvas, QEvent::MouseMove, start + QPointF(zoom * (1 + i % 2), 0));
        return TunnelShape.InsideNodes[1].x == node.x + 1;
    });
    if (counter.paints < kSteps) state.SkipWithError("the canvas does not follow the drag");
    state.counters["repaints for a step of a drag"] = double(counter.paints) / kSteps;
    return seconds;
}

// A whole process, which ends after its first paint.
double TimeStart(State& state, std::string window) {
    std::string program = BOREFORGE_WINDOW_START;
    char* const arguments[] = {program.data(), window.data(), nullptr};
    return Timed(state, [&] {
        pid_t child = 0;
        int status = -1;
        return ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) == 0 &&
               ::waitpid(child, &status, 0) == child && status == 0;
    });
}

constexpr RatioRow kRows[] = {
    {"canvas of 2560 by 1440, 200 nodes", "ms", 1e-3, "clear and 404 lines", 2},
    {"step of a drag through the window", "ms", 1e-3},
    {"repaints for a step of a drag", "", 1, "", 0, 1},
    {"start to the drawn window", "ms", 1e-3, "start to an empty window", 1.5},
};

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");  // also for the processes that are started
    int own = 1;
    QApplication application(own, arguments);
    AddCase("canvas of 2560 by 1440, 200 nodes", TimeCanvas);
    AddCase("clear and 404 lines", TimeBareCanvas);
    AddCase("step of a drag through the window", TimeDrag);
    AddCase("start to the drawn window", [](State& state) { return TimeStart(state, "boreforge"); });
    AddCase("start to an empty window", [](State& state) { return TimeStart(state, "empty"); });
    return RunCases(count, arguments, kRows, {}, false);
}
