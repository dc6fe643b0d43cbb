// pbShape: the widget that shows the canvas's picture and hands the mouse on.
#pragma once

#include <QImage>
#include <QWidget>

#include <functional>

#include "editor/ShapeInput.h"

namespace boreforge {

class ShapeCanvas : public QWidget {
  public:
    explicit ShapeCanvas(QWidget* parent);

    // Repaints the picture; it stays on the screen until the next call.
    void Redraw(ShownNodes shown);

    // Called with canvas positions in logical pixels, and with whether a button besides this one is down.
    std::function<void(MouseButton button, float x, float y, bool another)> Pressed;
    std::function<void(MouseState state, float x, float y)> Moved;
    std::function<void(MouseButton button, bool another)> Released;

    // Called with eighths of a degree and with whether a button is down.
    std::function<void(int eighths, bool buttonDown)> Turned;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QImage picture_;
    ShownNodes shown_;
};

}  // namespace boreforge
