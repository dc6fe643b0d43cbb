#include "dialogs/SettingsControls.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
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

// On Linux Qt's own interface returns the selected item as the name, too.
class ListAccess : public QAccessibleWidget {
  public:
    explicit ListAccess(NamedList* list) : QAccessibleWidget(list, QAccessible::ComboBox), list_(list) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? list_->currentText() : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = list_->view()->isVisible();
        return state;
    }
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(list_->view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child->object() == list_->view() ? 0 : -1;
    }
    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString& action) override {
        if (!actionNames().contains(action)) return;
        if (list_->view()->isVisible())
            list_->hidePopup();
        else
            list_->showPopup();
    }

  private:
    NamedList* list_;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
    if (auto* const list = dynamic_cast<NamedList*>(object)) return new ListAccess(list);
    return nullptr;
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
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.frameShape = QFrame::Panel;
    frame.lineWidth = 1;
    frame.state |= QStyle::State_Sunken;
    style()->drawControl(QStyle::CE_ShapedFrame, &frame, &painter, this);
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
    DrawFocusFrame(*this);
}

NamedList::NamedList(QWidget* parent) : QComboBox(parent) { QAccessible::installFactory(MakeAccess); }

}  // namespace boreforge
