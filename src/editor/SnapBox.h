// txtSnap: the box of the snap interval.
#pragma once

#include <QLineEdit>

namespace boreforge {

// Takes the characters that SnapCharacterPasses lets through, and selects its whole text on getting the
// focus.
class SnapBox : public QLineEdit {
  public:
    explicit SnapBox(QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool focusByMouse_ = false;
};

}  // namespace boreforge
