// Qt's controls adapted to the settings dialog. Each works without a mouse and shows when it has the focus.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QScrollBar>

namespace boreforge {

// A button that shows a colour, which it tells screen readers as "#rrggbb".
class Swatch : public QAbstractButton {
  public:
    explicit Swatch(QWidget* parent);

    void ShowColor(const QColor& color);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
};

// A scroll bar for 0 to 100 percent. Left and Up subtract 1, Right and Down add 1, Page Up and Page Down
// change it by 5, Home and End go to the ends.
class PercentBar : public QScrollBar {
  public:
    explicit PercentBar(QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace boreforge
