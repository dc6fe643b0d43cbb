// The widget pbShape, which shows the shape.
#pragma once

#include <QImage>
#include <QWidget>

#include "editor/ShapeDrawing.h"

namespace boreforge {

class ShapeCanvas : public QWidget {
  public:
    explicit ShapeCanvas(QWidget* parent);

    // Draws the picture of the shape, which stays until the next call.
    void Redraw(ShownNodes shown);

    // Updates the description for screen readers, as Redraw does.
    void Describe();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage picture_;
    ShownNodes shown_;
};

}  // namespace boreforge
