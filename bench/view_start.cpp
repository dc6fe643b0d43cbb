// Shows one window and ends once its first picture is on the screen. The argument "empty" shows a Qt Quick
// window without content, a file the viewer with this object.
#include <QApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSurfaceFormat>

#include <memory>
#include <string>

#include "view/ViewWindow.h"

int main(int count, char** arguments) {
    const std::string what = count == 2 ? arguments[1] : "";
    if (what.empty()) return 2;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    const QApplication application(count, arguments);
    boreforge::ViewScene scene;
    std::unique_ptr<QQuickView> window;
    if (what == "empty") {
        window = std::make_unique<QQuickView>();
        window->setResizeMode(QQuickView::SizeRootObjectToView);
        QQmlComponent component(window->engine());
        component.setData("import QtQuick\nItem {}", QUrl());
        window->setContent(QUrl(), &component, component.create());
    } else {
        if (!scene.OpenObject(what)) return 1;
        window = std::make_unique<boreforge::ViewWindow>(scene);
    }
    window->resize(1280, 720);
    QObject::connect(window.get(), &QQuickWindow::frameSwapped, &application, &QApplication::quit,
                     Qt::QueuedConnection);
    window->show();
    return QApplication::exec();
}
