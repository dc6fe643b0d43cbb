// The text box txtSnap for the snap interval.
#pragma once

#include <QLineEdit>

namespace boreforge {

// Accepts only characters that SnapCharacterPasses allows. Selects its whole text when it gets the focus,
// except when the window is activated again.
class SnapBox : public QLineEdit {
  public:
    explicit SnapBox(QWidget* parent);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool focusByMouse_ = false;
};

}  // namespace boreforge
