// The viewer's window: mouse, keys, dropped files, and an object that changes on the disk.
#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QPoint>
#include <QQuickView>
#include <QTimer>

#include <utility>

#include "view/ViewScene.h"

namespace boreforge {

// When a file was last written, and its size. Invalid, with 0, if there is no file.
using FileStamp = std::pair<QDateTime, qint64>;

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
    void UpOrDown(int up, bool pans);  // an arrow key, 1 for up, -1 for down
    QString FolderOfObject() const;    // where the dialogs start
    void Watch();
    void Reload();
    void ShowTitle();

    ViewScene& scene_;
    QPoint last_;  // of the mouse
    QFileSystemWatcher watcher_;
    QTimer settled_;  // runs while the file may still be changing, and while there is none
    FileStamp stamp_{{}, -1};
    QTimer still_;  // runs while the camera moves
    QElapsedTimer frameStart_;
    bool isSlow_ = true;  // drawing with shadows and smooth edges takes too long here
};

}  // namespace boreforge
