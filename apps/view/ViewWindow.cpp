#include "view/ViewWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QUrl>
#include <QWheelEvent>

namespace boreforge {

namespace {

// The first file of those that are dragged, or nothing.
QString FileOf(const QMimeData& dragged) {
    const QList<QUrl> urls = dragged.urls();
    return urls.empty() ? QString() : urls.first().toLocalFile();
}

}  // namespace

ViewWindow::ViewWindow(ViewScene& scene) : scene_(scene) {
    constexpr int kSettled = 200;  // milliseconds without a change
    settled_.setSingleShot(true);
    settled_.setInterval(kSettled);
    connect(&settled_, &QTimer::timeout, this, &ViewWindow::Reload);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &settled_, qOverload<>(&QTimer::start));
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settled_, qOverload<>(&QTimer::start));
    setResizeMode(SizeRootObjectToView);
    setMinimumSize({320, 240});
    setInitialProperties({{"scene", QVariant::fromValue<QObject*>(&scene)}});
    setSource(QUrl(QStringLiteral("qrc:/view/Viewer.qml")));
    ShowTitle();
    Watch();
}

void ViewWindow::Open(const QString& path) {
    if (path.endsWith(QLatin1String(".zrtrack"), Qt::CaseInsensitive))
        scene_.OpenTrackFile(path.toStdString());
    else
        scene_.OpenObject(path.toStdString());
    ShowTitle();
    Watch();
}

void ViewWindow::AskForFile() {
    const QString path =
        QFileDialog::getOpenFileName(nullptr, tr("Open Object"), QString(),
                                     tr("Objects and tracks (*.3ds *.3DS *.zrtrack);;All files (*)"));
    if (!path.isEmpty()) Open(path);
}

// A new export replaces the file, so that the folder is what changes.
void ViewWindow::Watch() {
    const QFileInfo object(QString::fromStdString(scene_.ObjectPath()));
    const QStringList before = watcher_.files() + watcher_.directories();
    if (!before.empty()) watcher_.removePaths(before);
    if (scene_.ObjectPath().empty()) return;
    watcher_.addPath(object.absolutePath());
    if (object.exists()) watcher_.addPath(object.absoluteFilePath());
}

void ViewWindow::Reload() {
    scene_.Reload();
    Watch();
}

void ViewWindow::ShowTitle() {
    const QString name = QFileInfo(QString::fromStdString(scene_.ObjectPath())).fileName();
    setTitle(name.isEmpty() ? tr("Boreforge View") : tr("%1 - Boreforge View").arg(name));
}

void ViewWindow::mousePressEvent(QMouseEvent* event) { last_ = event->position().toPoint(); }

void ViewWindow::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) return;
    const QPoint here = event->position().toPoint();
    const QPoint way = here - last_;
    last_ = here;
    const bool pans = event->buttons() & Qt::RightButton || event->modifiers() & Qt::ShiftModifier;
    scene_.Drag(way.x(), way.y(), pans);
}

void ViewWindow::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    scene_.Scroll(event->angleDelta().y() / kNotch);
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
    constexpr double kStep = 20;  // pixels that an arrow key turns or moves by
    const bool pans = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
        case Qt::Key_F:
        case Qt::Key_Home:
            scene_.Fit();
            break;
        case Qt::Key_B:
            scene_.SetBackFaces(!scene_.backFaces());
            break;
        case Qt::Key_Space:
            scene_.StartOrStopRide();
            break;
        case Qt::Key_Escape:
            scene_.help() ? scene_.SetHelp(false) : scene_.LeaveRide();
            break;
        case Qt::Key_F1:
            scene_.SetHelp(!scene_.help());
            break;
        case Qt::Key_O:
            AskForFile();
            break;
        case Qt::Key_Left:
            scene_.Drag(-kStep, 0, pans);
            break;
        case Qt::Key_Right:
            scene_.Drag(kStep, 0, pans);
            break;
        case Qt::Key_Up:
            scene_.IsRiding() ? scene_.Scroll(1) : scene_.Drag(0, -kStep, pans);
            break;
        case Qt::Key_Down:
            scene_.IsRiding() ? scene_.Scroll(-1) : scene_.Drag(0, kStep, pans);
            break;
        case Qt::Key_Plus:
            scene_.Scroll(1);
            break;
        case Qt::Key_Minus:
            scene_.Scroll(-1);
            break;
        case Qt::Key_Q:
            if (event->modifiers() & Qt::ControlModifier) close();
            break;
        default:
            QQuickView::keyPressEvent(event);
    }
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    scene_.SetSize(event->size().width(), event->size().height());
}

bool ViewWindow::event(QEvent* event) {
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
        auto* const drag = static_cast<QDragMoveEvent*>(event);
        drag->setAccepted(!FileOf(*drag->mimeData()).isEmpty());
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* const drop = static_cast<QDropEvent*>(event);
        drop->acceptProposedAction();
        Open(FileOf(*drop->mimeData()));
        return true;
    }
    return QQuickView::event(event);
}

}  // namespace boreforge
