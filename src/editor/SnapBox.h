// txtSnap: the box of the snap interval.
#pragma once

#include <QLineEdit>

namespace boreforge {

// Accepts the characters that SnapCharacterPasses lets through, and selects its whole text when it gets the
// focus, except back from its own context menu or with the window.
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
