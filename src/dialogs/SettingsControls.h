// Qt's controls adapted to the settings dialog. Each works without a mouse and shows when it has the focus.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QScrollBar>

#include <functional>

namespace boreforge {

// A label that shows a colour. A click and the space bar run `Pressed`.
class Swatch : public QLabel {
  public:
    explicit Swatch(QWidget* parent);

    std::function<void()> Pressed;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool spaceDown_ = false;
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

// A list that tells screen readers its accessible name as the name and the selected item as the value.
class NamedList : public QComboBox {
  public:
    explicit NamedList(QWidget* parent);
};

}  // namespace boreforge
