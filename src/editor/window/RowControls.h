// Qt's controls adapted to the tool row.
#pragma once

#include <QLabel>
#include <QToolButton>

namespace boreforge {

// A button of the tool row. On a dark desktop it is lighter while pressed or checked: styles only darken it a
// little, which nobody could see there.
class RowButton : public QToolButton {
  public:
    using QToolButton::QToolButton;

  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override;
};

// A label that shows a number. Screen readers get the number as its value.
class ReadOut : public QLabel {
  public:
    ReadOut(const QString& text, QWidget* parent);
};

}  // namespace boreforge
