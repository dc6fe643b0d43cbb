// Qt's controls adapted to the tool row.
#pragma once

#include <QLineEdit>
#include <QToolButton>

namespace boreforge {

// A button of the tool row. On a dark desktop it is lighter while pressed or checked: styles darken it too
// little to be noticed there.
class RowButton : public QToolButton {
  public:
    using QToolButton::QToolButton;

  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override;
};

// The text box txtSnap for the snap interval. Accepts only typed characters that SnapCharacterPasses allows,
// and pasted digits and points. Selects its whole text when it gets the focus, except when the window is
// activated again.
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
