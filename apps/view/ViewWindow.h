// The viewer's window: mouse, keys, dropped files, and an object that changes on the disk.
#pragma once

#include <QFileSystemWatcher>
#include <QPoint>
#include <QQuickView>
#include <QTimer>

#include "view/ViewScene.h"

namespace boreforge {

class ViewWindow : public QQuickView {
    Q_OBJECT

  public:
    explicit ViewWindow(ViewScene& scene);

    // Opens a file, or asks for one.
    void Open(const QString& path);
    void AskForFile();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void Watch();
    void Reload();
    void ShowTitle();

    ViewScene& scene_;
    QPoint last_;  // of the mouse
    QFileSystemWatcher watcher_;
    QTimer settled_;  // runs while the file may still be being written
};

}  // namespace boreforge
