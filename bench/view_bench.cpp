// The time until the viewer's first picture. Needs a display.
#include <QApplication>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>

#include "Measure.h"
#include "editor/TunnelShapeFile.h"
#include "job/mMain.h"
#include "view/ViewWindow.h"

using namespace boreforge;

namespace {

// Makes the object of a sample track with a sample shape.
bool MakeObject(const std::string& path) {
    return LoadTunnelShape(BOREFORGE_PROJECT "/elements/horseshoe.zrbf") &&
           OpenTrack(BOREFORGE_PROJECT "/tracks/small-circuit.zrtrack") &&
           RunTunnelJob(DeriveJobSettings({}, path), {.track = true});
}

// Runs this program with an argument.
void MeasureStart(benchmark::State& state, const std::string& what) {
    const QStringList arguments(QString::fromStdString(what));
    Measure(state, [&] { return QProcess::execute(QApplication::applicationFilePath(), arguments) == 0; });
}

int ShowUntilDrawn(QQuickWindow& window) {
    window.resize(1280, 720);
    QObject::connect(&window, &QQuickWindow::frameSwapped, qApp, &QApplication::quit, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}

// Shows the viewer with an object, or a Qt Quick window without content.
int Show(const std::string& what) {
    if (what == "empty") {
        QQuickView window;
        window.setResizeMode(QQuickView::SizeRootObjectToView);
        QQmlComponent component(window.engine());
        component.setData("import QtQuick\nItem {}", QUrl());
        window.setContent(QUrl(), &component, component.create());
        return ShowUntilDrawn(window);
    }
    ViewScene scene;
    if (!scene.OpenObject(what)) return 1;
    ViewWindow window(scene);
    return ShowUntilDrawn(window);
}

}  // namespace

int main(int count, char** arguments) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    const QApplication application(count, arguments);
    if (count == 2 && *arguments[1] != '-') return Show(arguments[1]);
    const std::string object = WorkFile("view.3ds");
    if (!MakeObject(object)) return 1;
    AddCase("start of the viewer to its first picture", MeasureStart, object);
    AddCase("start to an empty Quick window", MeasureStart, "empty");
    return RunCases(count, arguments);
}
