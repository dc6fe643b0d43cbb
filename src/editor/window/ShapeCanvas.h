// The widget pbShape: shows the canvas and passes on mouse events.
#pragma once

#include <QImage>
#include <QWidget>

#include <functional>

#include "editor/ShapeInput.h"

namespace boreforge {

class ShapeCanvas : public QWidget {
  public:
    explicit ShapeCanvas(QWidget* parent);

    // Draws the picture of the shape, which stays until the next call.
    void Redraw(ShownNodes shown);

    // Updates the description for screen readers, as Redraw does.
    void Describe();

    // `x` and `y` are canvas positions in logical pixels; `another` tells whether another button is down,
    // too.
    std::function<void(MouseButton button, float x, float y, bool another)> Pressed;
    std::function<void(MouseState state, float x, float y)> Moved;
    std::function<void(MouseButton button, bool another)> Released;

    // `eighths` are eighths of a degree.
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
