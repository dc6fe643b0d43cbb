// The viewer's window: mouse, keys and dropped files.
#pragma once

#include <QElapsedTimer>
#include <QPoint>
#include <QQuickView>
#include <QTimer>

#include "view/ViewScene.h"

namespace boreforge {

class ViewWindow : public QQuickView {
  public:
    explicit ViewWindow(ViewScene& scene);
    ~ViewWindow() override;

    // Opens a file, or asks for one.
    void Open(const QString& path);
    void AskForFile();
    void AskForPicture();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void DrawPlainlyWhileMoving();
    QString FolderOfObject() const;  // where the dialogs start
    void ShowTitle();

    ViewScene& scene_;
    QPoint lastMouse_;   // where the mouse was at its last event
    QTimer stillTimer_;  // runs while the camera moves
    QElapsedTimer frameStart_;
    bool isSlow_ = true;  // drawing with shadows and smooth edges takes too long here
};

}  // namespace boreforge
