#include "editor/window/frmMain.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QDragEnterEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <optional>

#include "base/FileTags.h"
#include "base/Values.h"
#include "dialogs/DroppedFiles.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/frmTunnelSettings.h"
#include "dialogs/mFileDialog.h"
#include "editor/ShapeHistory.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "editor/window/Icons.h"
#include "editor/window/RowControls.h"
#include "editor/window/ToolRow.h"
#include "editor/window/WindowInput.h"
#include "job/mMain.h"
#include "version.h"

namespace boreforge {

namespace {

constexpr int kWindowWidth = 11880, kWindowHeight = 8490;  // twips, inside the frame
constexpr int kIconPixels = 16;

constexpr char kShapeFilter[] = "ZRBF Tunnel Shapes (*.zrbf)|*.zrbf";

RowButton* MakeButton(QWidget* parent, const ToolButton& tool, TabOrder& order) {
    auto* const button = new RowButton(parent);
    SetGeometry(button, tool.geometry);
    button->setIcon(IconOf(tool.icon));
    button->setIconSize(QSize(kIconPixels, kIconPixels));
    button->setToolTip(tool.toolTip);
    // Screen readers get the name without the key in parentheses.
    button->setAccessibleName(QString(tool.toolTip).section(" (", 0, 0));
    button->setFocusPolicy(Qt::StrongFocus);
    order.emplace_back(tool.geometry.tabIndex, button);
    return button;
}

// A check box that looks like a button and stays pressed while it is checked.
RowButton* MakeCheckButton(QWidget* parent, const ToolButton& tool, TabOrder& order) {
    RowButton* const check = MakeButton(parent, tool, order);
    check->setCheckable(true);
    check->setChecked(true);
    return check;
}

bool IsTrack(const QString& path) { return HasExtension(path.toStdString(), kTrackExtension); }
bool IsShape(const QString& path) { return HasExtension(path.toStdString(), kShapeExtension); }

// The path of the dragged file; empty unless exactly one file is dragged and it is a shape or a track.
QString DraggedFile(const QMimeData& dragged) {
    const QStringList files = FilesOf(dragged);
    if (dragged.urls().size() != 1 || files.size() != 1) return {};
    return IsTrack(files.first()) || IsShape(files.first()) ? files.first() : QString();
}

FileDialogArguments ShapeFileArguments(QWidget* owner, const char* title) {
    FileDialogArguments arguments;
    arguments.Filter = kShapeFilter;
    arguments.InitialFolder = ProgramFolder("elements");
    arguments.DialogTitle = title;
    arguments.DefaultExtension = "zrbf";
    arguments.Owner = owner;
    return arguments;
}

// Without this, Qt tells screen readers that both are groups of controls.
QAccessibleInterface* MakeAccessibleInterface(const QString&, QObject* object) {
    if (auto* const canvas = dynamic_cast<ShapeCanvas*>(object))
        return new QAccessibleWidget(canvas, QAccessible::Canvas);
    auto* const window = dynamic_cast<frmMain*>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

}  // namespace

frmMain::frmMain() {
    QAccessible::installFactory(MakeAccessibleInterface);
    setObjectName("frmMain");
    setWindowTitle(QString("Zephyrail Boreforge - v%1").arg(kVersion));
    QApplication::setWindowIcon(IconOf("boreforge"));
    setFont(WindowFont(*this));  // before any control looks for its default font, which is slow
    resize(PixelsOf(kWindowWidth), PixelsOf(kWindowHeight));
    setAcceptDrops(true);
    const QRect room = screen()->availableGeometry();
    CentreFrame(this, room, room);

    TrackFilePath.clear();
    TrackLoaded = false;
    MakePresetShape(kPresetBox);
    ShapeHistory = {};
    EndShapeStep();

    MakeToolRow();
    MakeReadOuts();
    pbShape_ = new ShapeCanvas(this);
    SetGeometry(pbShape_, kCanvas);
    pbShape_->installEventFilter(this);
    tabOrder_.emplace_back(kCanvas.tabIndex, pbShape_);
    ApplyTabOrder(tabOrder_);
    pbShape_->setFocus();

    // A filter on the window's handle sees each key press once, before any control.
    winId();
    windowHandle()->installEventFilter(this);
}

void frmMain::MakeToolRow() {
    const auto onClick = [this](QAbstractButton* button, std::function<void()> action) {
        connect(button, &QAbstractButton::clicked, this,
                [action = std::move(action)] { ReportingOutOfMemory(action); });
    };
    for (const auto& [tool, button] : kShapeTools)
        onClick(MakeButton(this, button, tabOrder_), [this, tool = tool] { RunTool(tool); });
    for (const auto& [preset, button] : kPreShapes)
        onClick(MakeButton(this, button, tabOrder_), [this, preset = preset] {
            UsePreset(preset, Controls());
            RedrawAndFocus();
        });
    onClick(MakeButton(this, kMakeObject, tabOrder_), [this] { MakeObjectForTrack(); });
    for (std::size_t i = 0; i < 2; ++i) {
        chkShowNodes_[i] = MakeCheckButton(this, kShowNodes[i], tabOrder_);
        onClick(chkShowNodes_[i], [this] { RedrawAndFocus(); });
    }
    chkSnapTo_ = MakeCheckButton(this, kSnapTo, tabOrder_);

    txtSnap_ = new SnapBox(this);
    SetGeometry(txtSnap_, kSnapBox);
    txtSnap_->setToolTip("Snap Interval");
    txtSnap_->setAccessibleName("Snap Interval");
    tabOrder_.emplace_back(kSnapBox.tabIndex, txtSnap_);
}

void frmMain::MakeReadOuts() {
    const auto positioned = [](QLabel* label, const ControlGeometry& geometry) {
        SetGeometry(label, geometry);
        return label;
    };
    positioned(new QLabel(this), kReadOutFrame)->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    for (QLabel* const label :
         {positioned(new QLabel("X=", this), kXLabel), positioned(new QLabel("Y=", this), kYLabel)}) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        FitTexts({{label, label->text(), label->size()}});
    }
    for (std::size_t i = 0; i < 2; ++i) {
        lblMousePos_[i] = positioned(new QLabel("00.00", this), kMousePos[i]);
        lblMousePos_[i]->setAccessibleName(i == 0 ? "Mouse position X" : "Mouse position Y");
    }
}

EditorControls frmMain::Controls() const { return Controls(QApplication::mouseButtons() != Qt::NoButton); }

EditorControls frmMain::Controls(bool buttonDown) const {
    return {{chkShowNodes_[0]->isChecked(), chkShowNodes_[1]->isChecked()},
            chkSnapTo_->isChecked(),
            txtSnap_->text().toStdString(),
            pbShape_->width(),
            pbShape_->height(),
            buttonDown};
}

void frmMain::Redraw() { pbShape_->Redraw(Controls().shown); }

void frmMain::RedrawAndFocus() {
    Redraw();
    pbShape_->setFocus();
}

void frmMain::ShowMousePosition(float x, float y) {
    const Vector3D position = Snapped(ShapePositionAt(x, y), Controls());
    for (std::size_t i = 0; i < 2; ++i) {
        const QString text = QString::fromStdString(FormatPosition(i == 0 ? position.x : position.y));
        lblMousePos_[i]->setText(text);
        lblMousePos_[i]->setAccessibleDescription(text);
    }
}

bool frmMain::HandleMouse(const QMouseEvent& event) {
    const auto x = static_cast<float>(event.position().x()), y = static_cast<float>(event.position().y());
    const bool anotherIsDown = event.buttons() & ~event.button();
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return PressMouse(ButtonOf(event), x, y, Controls(anotherIsDown));
        case QEvent::MouseButtonRelease:
            return ReleaseMouse(ButtonOf(event), Controls(anotherIsDown));
        default:
            const bool isChanged = MoveMouse(StateOf(event), x, y, Controls());
            ShowMousePosition(x, y);
            return isChanged;
    }
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == pbShape_) {
        if (const auto* const mouse = dynamic_cast<QMouseEvent*>(event))
            ReportingOutOfMemory([&] {
                if (HandleMouse(*mouse)) Redraw();
            });
        const auto* const wheel = dynamic_cast<QWheelEvent*>(event);
        const int eighths = wheel ? wheel->angleDelta().y() : 0;
        if (eighths != 0)
            ReportingOutOfMemory([&] {
                if (TurnWheel(eighths, Controls(wheel->buttons() != Qt::NoButton))) RedrawAndFocus();
            });
        return false;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        const auto& press = static_cast<const QMouseEvent&>(*event);
        const bool another = press.buttons() & ~press.button();
        if (!another) ReportingOutOfMemory(EndShapeStep);  // a click anywhere ends a series of arrow keys
    }
    if (event->type() == QEvent::KeyPress) {
        const KeyPress key = KeyPressOf(*static_cast<QKeyEvent*>(event));
        const std::optional<ShapeTool> tool = ToolOfKey(key);
        ReportingOutOfMemory([&] {
            if (tool)
                RunTool(*tool);
            else if (PressKey(key, pbShape_->hasFocus(), Controls()))
                Redraw();
        });
        // The snap box would take these keys for its own undo.
        if (tool == ShapeTool::Undo || tool == ShapeTool::Redo) return true;
    }
    return QWidget::eventFilter(watched, event);  // the key goes on to the control that has the focus
}

void frmMain::resizeEvent(QResizeEvent*) {
    if (isMinimized()) return;
    pbShape_->resize(std::max(0, width() - pbShape_->x()), std::max(0, height() - pbShape_->y()));
    ClampPan();
    UpdateViewOrigin(pbShape_->width(), pbShape_->height());
    ReportingOutOfMemory([this] { Redraw(); });
}

// Qt delivers drags to a window even while a modal dialog blocks it.
void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    const QString file = QApplication::activeModalWidget() ? QString() : DraggedFile(*event->mimeData());
    if (AcceptAsCopy(*event, !file.isEmpty())) dragged_ = file;
}

// The file manager is blocked until this returns, so the dialog opens afterwards.
void frmMain::dropEvent(QDropEvent* event) {
    AcceptAsCopy(*event, true);
    QTimer::singleShot(0, this, [this, path = dragged_] {
        if (!QApplication::activeModalWidget()) ReportingOutOfMemory([&] { OpenDropped(path); });
    });
}

void frmMain::OpenDropped(const QString& path) {
    EndShapeStep();  // a drop ends a series of arrow keys
    if (IsShape(path)) OpenShapeAt(path);
    if (IsTrack(path)) MakeObjectForTrackAt(path);
}

void frmMain::RunTool(ShapeTool tool) {
    if (tool == ShapeTool::Open)
        OpenShape();
    else if (tool == ShapeTool::Save)
        SaveShape();
    else if (RunShapeTool(tool, Controls()))
        RedrawAndFocus();
}

void frmMain::OpenShape() {
    FileDialogArguments arguments = ShapeFileArguments(this, "Open Tunnel Shape...");
    arguments.FileMustExist = true;
    arguments.HideReadOnly = true;
    if (ShowOpenFileDialog(arguments)) OpenShapeAt(arguments.FileName);
}

void frmMain::OpenShapeAt(const QString& path) {
    if (OpenShapeFile(path.toStdString(), Controls())) return RedrawAndFocus();
    // The picture of the old shape stays until the next redraw, even if the shape is now empty.
    pbShape_->Describe();
    ShowFailure({.headline = "Error - Invalid Tunnel Shape File!"});
}

void frmMain::SaveShape() {
    FileDialogArguments arguments = ShapeFileArguments(this, "Save Tunnel Shape As...");
    arguments.OverwritePrompt = true;
    if (!ShowSaveFileDialog(arguments)) return;
    const std::string path = arguments.FileName.toStdString();
    if (const Outcome saved = SaveTunnelShape(path); !saved) {
        const bool noAccess = saved.Why().problem == Problem::NoAccess;
        ShowFailure(saved
                        .With({.headline = "Error - The Tunnel Shape Can't Be Saved!",
                               .path = path,
                               .consequence = "The shape is still open.",
                               .advice = noAccess ? "Save it in a folder of your own." : ""})
                        .Why());
    }
    RedrawAndFocus();
}

void frmMain::MakeObjectForTrack() {
    FileDialogArguments arguments;
    arguments.FileName = QString::fromStdString(TrackFilePath);
    arguments.Filter = "Zephyrail Track Files (*.zrtrack)|*.zrtrack";
    arguments.InitialFolder = ProgramFolder("tracks");
    arguments.DialogTitle = "Open Track File...";
    arguments.DefaultExtension = "zrtrack";
    arguments.Owner = this;
    arguments.FileMustExist = true;
    arguments.HideReadOnly = true;
    if (ShowOpenFileDialog(arguments)) MakeObjectForTrackAt(arguments.FileName);
}

void frmMain::MakeObjectForTrackAt(const QString& path) {
    const Outcome opened = [&] {
        const WaitCursor wait;
        return OpenTrack(path.toStdString());
    }();
    // One message, whatever is wrong with the file; the batch program says what it is.
    if (!opened) return ShowFailure({.headline = opened.Why().headline});
    frmTunnelSettings settings(this);
    settings.exec();
    pbShape_->setFocus();
}

}  // namespace boreforge
