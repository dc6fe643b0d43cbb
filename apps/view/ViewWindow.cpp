#include "view/ViewWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QResizeEvent>
#include <QWheelEvent>

#include <tuple>

#include "base/FileTags.h"
#include "base/Text.h"
#include "base/Values.h"
#include "dialogs/DroppedFiles.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/mFileDialog.h"
#include "view/PictureFile.h"

namespace boreforge {

namespace {

// Milliseconds: how long a file stays unchanged before it is read, and how often a missing one is looked for.
constexpr int kSettled = 200, kAgain = 1000;

constexpr double kStep = 20;  // pixels that an arrow key turns or moves by

FileStamp StampOf(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    return {file.lastModified(), file.size()};
}

}  // namespace

ViewWindow::ViewWindow(ViewScene& scene) : scene_(scene) {
    settled_.setSingleShot(true);
    const auto onChange = [this] { settled_.start(kSettled); };
    connect(&settled_, &QTimer::timeout, this, &ViewWindow::Reload);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, onChange);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, onChange);
    DrawPlainlyWhileMoving();
    setResizeMode(SizeRootObjectToView);
    setMinimumSize({320, 240});
    setInitialProperties({{"scene", QVariant::fromValue<QObject*>(&scene.properties)}});
    setSource(QUrl(QStringLiteral("qrc:/view/Viewer.qml")));
    ShowTitle();
    Watch();
}

// Hiding waits for the render thread. Otherwise QQuickView deletes the materials while that thread may still
// draw with them.
ViewWindow::~ViewWindow() {
    scene_.Moved = [] {};
    hide();
}

void ViewWindow::Open(const QString& path) {
    // The scene shows what failed.
    if (HasExtension(path.toStdString(), kTrackExtension)) {
        std::ignore = scene_.OpenTrackFile(path.toStdString());
        return;
    }
    stamp_ = StampOf(path.toStdString());
    std::ignore = scene_.OpenObject(path.toStdString());
    ShowTitle();
    Watch();
}

void ViewWindow::AskForFile() {
    FileDialogArguments arguments;
    arguments.DialogTitle = "Open Object or Track...";
    arguments.Filter = "Objects and Tracks (*.3ds *.3DS *.zrtrack)|*.3ds;*.3DS;*.zrtrack|All Files (*)|*";
    arguments.InitialFolder = FolderOfObject();
    arguments.FileMustExist = true;
    if (ShowOpenFileDialog(arguments)) Open(arguments.FileName);
}

void ViewWindow::AskForPicture() {
    FileDialogArguments arguments;
    arguments.DialogTitle = "Save Picture As...";
    arguments.Filter = "Pictures (*.png)|*.png";
    arguments.DefaultExtension = "png";
    arguments.InitialFolder = FolderOfObject();
    arguments.OverwritePrompt = true;
    if (!ShowSaveFileDialog(arguments)) return;
    // Without the bars, as --save draws it.
    rootObject()->setProperty("picture", true);
    const QImage picture = grabWindow();
    rootObject()->setProperty("picture", false);
    const Outcome saved = SavePicture(arguments.FileName.toStdString(), picture);
    if (!saved) return ShowFailure(saved.Why());
    scene_.Say("saved " + arguments.FileTitle);
}

QString ViewWindow::FolderOfObject() const {
    const QFileInfo object(QString::fromStdString(scene_.ObjectPath()));
    return scene_.ObjectPath().empty() ? ProgramFolder("objects") : object.absolutePath();
}

// Leaves out shadows and smooth edges at first and while the camera moves: the first picture appears sooner,
// and the object turns smoothly on a computer that draws in software.
void ViewWindow::DrawPlainlyWhileMoving() {
    constexpr qint64 kStill = 250, kSlow = 60, kFast = 30;  // milliseconds
    scene_.Switch("fine", false);
    still_.setSingleShot(true);
    still_.setInterval(kStill);
    still_.start();
    connect(&still_, &QTimer::timeout, this, [this] { scene_.Switch("fine", true); });
    scene_.Moved = [this] {
        if (!isSlow_) return;
        scene_.Switch("fine", false);
        still_.start();
    };
    // Both signals come from the render thread.
    connect(
        this, &QQuickWindow::beforeRendering, this, [this] { frameStart_.start(); }, Qt::DirectConnection);
    const auto onFrame = [this] {
        const qint64 taken = frameStart_.elapsed();
        QMetaObject::invokeMethod(this, [this, taken] {
            if (scene_.IsOn("fine")) isSlow_ = taken > kSlow || (isSlow_ && taken > kFast);
        });
    };
    connect(this, &QQuickWindow::frameSwapped, this, onFrame, Qt::DirectConnection);
}

// An export replaces the file by a new one, so the folder is watched, too. If the folder itself is gone, only
// the timer looks for the file.
void ViewWindow::Watch() {
    const QFileInfo object(QString::fromStdString(scene_.ObjectPath()));
    const QStringList before = watcher_.files() + watcher_.directories();
    if (!before.empty()) watcher_.removePaths(before);
    if (scene_.ObjectPath().empty()) return;
    if (QFileInfo::exists(object.absolutePath())) watcher_.addPath(object.absolutePath());
    if (object.exists())
        watcher_.addPath(object.absoluteFilePath());
    else
        settled_.start(kAgain);
}

void ViewWindow::Reload() {
    const FileStamp stamp = StampOf(scene_.ObjectPath());
    if (stamp != stamp_) scene_.Reload();
    stamp_ = stamp;
    Watch();
}

void ViewWindow::ShowTitle() {
    const QString name = QFileInfo(QString::fromStdString(OneLine(scene_.ObjectPath()))).fileName();
    setTitle(name.isEmpty() ? tr("Boreforge View") : tr("%1 - Boreforge View").arg(name));
}

void ViewWindow::mousePressEvent(QMouseEvent* event) { last_ = event->position().toPoint(); }

void ViewWindow::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) return;
    const QPoint here = event->position().toPoint();
    const QPoint offset = here - last_;
    last_ = here;
    const bool pans = event->buttons() & Qt::RightButton || event->modifiers() & Qt::ShiftModifier;
    scene_.Drag(offset.x(), offset.y(), pans);
}

void ViewWindow::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    const QPointF fromMiddle = event->position() - QPointF(width() / 2.0, height() / 2.0);
    scene_.Scroll(event->angleDelta().y() / kNotch, fromMiddle.x(), fromMiddle.y());
}

void ViewWindow::UpOrDown(int up, bool pans) {
    if (scene_.IsRiding())
        scene_.Scroll(up);
    else
        scene_.Drag(0, -kStep * up, pans);
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
    scene_.Say({});
    const bool pans = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
        case Qt::Key_F:
        case Qt::Key_Home:
            scene_.Fit();
            break;
        case Qt::Key_B:
            scene_.Switch("backFaces", !scene_.IsOn("backFaces"));
            scene_.Say(scene_.IsOn("backFaces") ? "backs are red" : "backs are invisible");
            break;
        case Qt::Key_N:
            scene_.LookAtTunnel(1);
            break;
        case Qt::Key_P:
            scene_.LookAtTunnel(-1);
            break;
        case Qt::Key_S:
            AskForPicture();
            break;
        case Qt::Key_Space:
            scene_.StartOrStopRide();
            break;
        case Qt::Key_Escape:
            if (scene_.IsOn("help"))
                scene_.Switch("help", false);
            else
                scene_.LeaveRide();
            break;
        case Qt::Key_F1:
            scene_.Switch("help", !scene_.IsOn("help"));
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
            UpOrDown(1, pans);
            break;
        case Qt::Key_Down:
            UpOrDown(-1, pans);
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
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
        AcceptAsCopy(*drag, !FilesOf(*drag->mimeData()).empty());
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* const drop = static_cast<QDropEvent*>(event);
        AcceptAsCopy(*drop, true);
        for (const QString& file : FilesOf(*drop->mimeData()))
            Open(file);
        return true;
    }
    return QQuickView::event(event);
}

}  // namespace boreforge
