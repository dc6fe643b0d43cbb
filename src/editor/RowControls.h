// The controls of the tool row that Qt doesn't have in this form.
#pragma once

#include <QLabel>
#include <QToolButton>

namespace boreforge {

// A button of the tool row. On a dark desktop it is lit while it is pressed: styles only make it a little
// darker, which can't be seen there.
class RowButton : public QToolButton {
  public:
    using QToolButton::QToolButton;

  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override;
};

// A label that shows a number. Screen readers get its name and, as its value, the number.
class ReadOut : public QLabel {
  public:
    ReadOut(const QString& text, QWidget* parent);
};

}  // namespace boreforge
