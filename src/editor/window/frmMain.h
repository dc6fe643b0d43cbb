// The program's main window: a row of tools and the canvas.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include <array>

#include "dialogs/ControlTable.h"
#include "editor/ShapeInput.h"
#include "editor/window/ShapeCanvas.h"

namespace boreforge {

class frmMain : public QWidget {
  public:
    // Resets the shape to the box and leaves no track open.
    frmMain();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void MakeToolRow();
    void MakeReadOuts();

    EditorControls Controls() const;
    EditorControls Controls(bool buttonDown) const;
    void Redraw();
    void RedrawAndFocus();
    void ShowMousePosition(float x, float y);
    // Passes a mouse event of the canvas on to the editor. True if the canvas must be drawn again.
    bool HandleMouse(const QMouseEvent& event);

    void RunTool(ShapeTool tool);
    void OpenShape();
    void OpenShapeAt(const QString& path);
    void SaveShape();
    void MakeObjectForTrack();
    void MakeObjectForTrackAt(const QString& path);
    void OpenDropped(const QString& path);

    ShapeCanvas* pbShape_ = nullptr;
    std::array<QAbstractButton*, 2> chkShowNodes_{};
    QAbstractButton* chkSnapTo_ = nullptr;
    QLineEdit* txtSnap_ = nullptr;
    std::array<QLabel*, 2> lblMousePos_{};
    TabOrder tabOrder_;
    QString dragged_;  // the file that is being dragged over the window
};

}  // namespace boreforge
