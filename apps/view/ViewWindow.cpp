#include "view/ViewWindow.h"

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

constexpr double kStep = 20;  // pixels that an arrow key turns or moves by

}  // namespace

ViewWindow::ViewWindow(ViewScene& scene) : scene_(scene) {
    DrawPlainlyWhileMoving();
    setResizeMode(SizeRootObjectToView);
    setMinimumSize({320, 240});
    setInitialProperties({{"scene", QVariant::fromValue<QObject*>(&scene.properties)}});
    setSource(QUrl(QStringLiteral("qrc:/view/Viewer.qml")));
    ShowTitle();
    scene.FollowFile();
}

// Hiding waits for the render thread. Otherwise QQuickView deletes the materials while that thread may still
// draw with them.
ViewWindow::~ViewWindow() {
    scene_.onMoved = [] {};
    hide();
}

void ViewWindow::Open(const QString& path) {
    const std::string name = path.toStdString();
    // The scene shows what failed.
    std::ignore = HasExtension(name, kTrackExtension) ? scene_.OpenTrackFile(name) : scene_.OpenObject(name);
    ShowTitle();
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
    scene_.ShowNotice("saved " + arguments.FileTitle);
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
    stillTimer_.setSingleShot(true);
    stillTimer_.setInterval(kStill);
    stillTimer_.start();
    connect(&stillTimer_, &QTimer::timeout, this, [this] { scene_.Switch("fine", true); });
    scene_.onMoved = [this] {
        if (!isSlow_) return;
        scene_.Switch("fine", false);
        stillTimer_.start();
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

void ViewWindow::ShowTitle() {
    const QString name = QFileInfo(QString::fromStdString(ToOneLine(scene_.ObjectPath()))).fileName();
    setTitle(name.isEmpty() ? tr("Boreforge View") : tr("%1 - Boreforge View").arg(name));
}

void ViewWindow::mousePressEvent(QMouseEvent* event) { lastMouse_ = event->position().toPoint(); }

void ViewWindow::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) return;
    const QPoint here = event->position().toPoint();
    const QPoint offset = here - lastMouse_;
    lastMouse_ = here;
    const bool pans = event->buttons() & Qt::RightButton || event->modifiers() & Qt::ShiftModifier;
    scene_.camera.Drag(offset.x(), offset.y(), pans);
    scene_.ShowCamera();
}

void ViewWindow::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    const QPointF fromMiddle = event->position() - QPointF(width() / 2.0, height() / 2.0);
    scene_.camera.Scroll(event->angleDelta().y() / kNotch, fromMiddle.x(), fromMiddle.y(), scene_.Object());
    scene_.ShowCamera();
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
    CameraControl& camera = scene_.camera;
    const Object3DS& object = scene_.Object();
    const TrackPath& track = scene_.Track();
    const bool pans = event->modifiers() & Qt::ShiftModifier;
    const auto goToTunnel = [&](int step) {
        if (!camera.LookAtTunnel(step, track)) scene_.ShowNotice("there is no tunnel to go to");
    };
    const auto moveUp = [&](int up) {
        if (camera.CurrentRide())
            camera.Scroll(up, 0, 0, object);
        else
            camera.Drag(0, -kStep * up, pans);
    };
    scene_.ShowNotice({});
    switch (event->key()) {
        case Qt::Key_F:
        case Qt::Key_Home:
            camera.Fit(object);
            break;
        case Qt::Key_B:
            scene_.Switch("backFaces", !scene_.IsOn("backFaces"));
            return scene_.ShowNotice(scene_.IsOn("backFaces") ? "backs are red" : "backs are invisible");
        case Qt::Key_N:
        case Qt::Key_P:
            goToTunnel(event->key() == Qt::Key_N ? 1 : -1);
            break;
        case Qt::Key_S:
            return AskForPicture();
        case Qt::Key_Space:
            camera.StartOrStopRide(track);
            break;
        case Qt::Key_Escape:
            if (scene_.IsOn("help")) return scene_.Switch("help", false);
            camera.LeaveRide();
            break;
        case Qt::Key_F1:
            return scene_.Switch("help", !scene_.IsOn("help"));
        case Qt::Key_O:
            return AskForFile();
        case Qt::Key_Left:
        case Qt::Key_Right:
            camera.Drag(event->key() == Qt::Key_Right ? kStep : -kStep, 0, pans);
            break;
        case Qt::Key_Up:
        case Qt::Key_Down:
            moveUp(event->key() == Qt::Key_Up ? 1 : -1);
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            camera.Scroll(1, 0, 0, object);
            break;
        case Qt::Key_Minus:
            camera.Scroll(-1, 0, 0, object);
            break;
        case Qt::Key_Q:
            if (event->modifiers() & Qt::ControlModifier) close();
            return;
        default:
            return QQuickView::keyPressEvent(event);
    }
    scene_.ShowCamera();
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
    QQuickView::resizeEvent(event);
    scene_.camera.Resize(event->size().width(), event->size().height(), scene_.Object());
    scene_.ShowCamera();
}

bool ViewWindow::event(QEvent* event) {
    const bool isDrop = event->type() == QEvent::Drop;
    if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
        return QQuickView::event(event);
    auto* const drag = static_cast<QDropEvent*>(event);
    const QStringList files = FilesOf(*drag->mimeData());
    AcceptAsCopy(*drag, !files.empty());
    if (isDrop)
        for (const QString& file : files)
            Open(file);
    return true;
}

}  // namespace boreforge
