#include "dialogs/SettingsControls.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace boreforge {

namespace {

// White dashes on black can be seen on any colour of a swatch and on light and dark desktops.
void DrawFocusFrame(QWidget& control) {
    if (!control.hasFocus()) return;
    QPainter painter(&control);
    const QRect frame = control.rect().adjusted(0, 0, -1, -1);
    painter.setPen(Qt::black);
    painter.drawRect(frame);
    QPen dashes(Qt::white);
    dashes.setDashPattern({3, 3});
    painter.setPen(dashes);
    painter.drawRect(frame);
}

// The frame of a sunken label.
void DrawPanel(QWidget& control, QPainter& painter) {
    QStyleOptionFrame frame;
    frame.initFrom(&control);
    frame.frameShape = QFrame::Panel;
    frame.lineWidth = 1;
    frame.state |= QStyle::State_Sunken;
    control.style()->drawControl(QStyle::CE_ShapedFrame, &frame, &painter, &control);
}

}  // namespace

Swatch::Swatch(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void Swatch::ShowColor(const QColor& color) {
    color_ = color;
    setAccessibleDescription(color.name());
    update();
}

void Swatch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), color_);
    DrawPanel(*this, painter);
    DrawFocusFrame(*this);
}

PercentBar::PercentBar(QWidget* parent) : QScrollBar(Qt::Horizontal, parent) {
    setRange(0, 100);
    setSingleStep(1);
    setPageStep(5);
    setFocusPolicy(Qt::StrongFocus);
}

void PercentBar::keyPressEvent(QKeyEvent* event) {
    // QScrollBar inverts the keys. That is right for Up, Down and the Page keys, but wrong for these two.
    if (event->key() == Qt::Key_Left)
        triggerAction(SliderSingleStepSub);
    else if (event->key() == Qt::Key_Right)
        triggerAction(SliderSingleStepAdd);
    else
        QScrollBar::keyPressEvent(event);
}

void PercentBar::paintEvent(QPaintEvent* event) {
    QScrollBar::paintEvent(event);
    QPainter painter(this);
    DrawPanel(*this, painter);
    painter.end();
    DrawFocusFrame(*this);
}

}  // namespace boreforge
