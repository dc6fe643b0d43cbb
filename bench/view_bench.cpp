// The speed of looking at finished objects: the viewer's start, turning a large object, and the check. Needs
// a display. The table continues that of canvas_bench.
#include <QApplication>
#include <QEventLoop>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "check/Report.h"
#include "editor/TunnelShapeFile.h"
#include "inputs.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "ratio_table.h"
#include "view/ViewWindow.h"

using namespace boreforge;

namespace {

using benchmark::State;

std::string ObjectOf(const std::string& name) { return WorkFile(name + ".3ds"); }

// Makes the object of a sample track with a sample shape.
bool MakeObject(const std::string& name) {
    return LoadTunnelShape(BOREFORGE_PROJECT "/elements/horseshoe.zrbf") &&
           OpenTrack(BOREFORGE_PROJECT "/tracks/" + name + "-circuit.zrtrack") &&
           BuildTunnelObject(DeriveJobSettings({}, ObjectOf(name))) && WriteTunnelObject(ObjectOf(name));
}

// A whole process, which ends after its first picture.
double TimeStart(State& state, std::string what) {
    std::string program = BOREFORGE_VIEW_START;
    char* const arguments[] = {program.data(), what.data(), nullptr};
    return Timed(state, [&] {
        pid_t child = 0;
        int status = -1;
        return ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) == 0 &&
               ::waitpid(child, &status, 0) == child && status == 0;
    });
}

// Waits until the window has drawn what it was last told.
void WaitForFrame(QQuickWindow& window) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}

double TimeTurn(State& state, const std::string& object) {
    ViewScene scene;
    const bool opened{scene.OpenObject(object)};
    ViewWindow window(scene);
    window.resize(1280, 720);
    window.show();
    constexpr int kFrames = 20;
    for (int i = 0; i < 5; ++i) {  // the first ones also prepare what is drawn
        scene.Drag(4, 0, false);
        WaitForFrame(window);
    }
    state.counters[kEach] = kFrames;
    return Timed(state, [&] {
        for (int i = 0; i < kFrames; ++i) {
            scene.Drag(4, 0, false);
            WaitForFrame(window);
        }
        return opened;
    });
}

double TimeCheck(State& state, const std::string& object) {
    return Timed(state, [&] {
        Bytes file;
        return ReadWholeFile(object, file) && Examine(object, file).Result == Verdict::Sound;
    });
}

double TimeRead(State& state, const std::string& object) {
    return Timed(state, [&] {
        Bytes file;
        return ReadWholeFile(object, file) && !file.empty();
    });
}

constexpr RatioRow kRows[] = {
    {"start of the viewer to its first picture", "ms", 1e-3, "start to an empty Quick window", 3},
    {"frame while 250,000 faces turn", "ms", 1e-3, "frame while 6,000 faces turn"},
    {"check of 250,000 faces", "ms", 1e-3, "reading them"},
};

}  // namespace

int main(int count, char** arguments) {
    int own = 1;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QApplication application(own, arguments);
    const std::string small = ObjectOf("small"), large = ObjectOf("long");
    if (!MakeObject("small") || !MakeObject("long")) return 1;
    AddCase("start of the viewer to its first picture",
            [=](State& state) { return TimeStart(state, small); });
    AddCase("start to an empty Quick window", [](State& state) { return TimeStart(state, "empty"); });
    AddCase("frame while 6,000 faces turn", [=](State& state) { return TimeTurn(state, small); });
    AddCase("frame while 250,000 faces turn", [=](State& state) { return TimeTurn(state, large); });
    AddCase("check of 250,000 faces", [=](State& state) { return TimeCheck(state, large); });
    AddCase("reading them", [=](State& state) { return TimeRead(state, large); });
    return RunCases(count, arguments, kRows, {}, false);
}
