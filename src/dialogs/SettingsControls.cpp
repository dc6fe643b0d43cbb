#include "dialogs/SettingsControls.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

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
        list_->view()->isVisible() ? list_->hidePopup() : list_->showPopup();
    }

  private:
    NamedList* list_;
};

class SwatchAccess : public QAccessibleWidget {
  public:
    explicit SwatchAccess(Swatch* swatch) : QAccessibleWidget(swatch, QAccessible::Button), swatch_(swatch) {}

    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override {
        action == pressAction() ? swatch_->Pressed() : QAccessibleWidget::doAction(action);
    }

  private:
    Swatch* swatch_;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
    if (auto* const list = dynamic_cast<NamedList*>(object)) return new ListAccess(list);
    if (auto* const swatch = dynamic_cast<Swatch*>(object)) return new SwatchAccess(swatch);
    return nullptr;
}

}  // namespace

Swatch::Swatch(QWidget* parent) : QLabel(parent) {
    QAccessible::installFactory(MakeAccess);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void Swatch::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) return QLabel::keyPressEvent(event);
    if (!event->isAutoRepeat()) spaceDown_ = true;
}

// Like a button, on the release: the dialog would take the repeated presses of a key that is still down.
void Swatch::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) return QLabel::keyReleaseEvent(event);
    if (!event->isAutoRepeat() && std::exchange(spaceDown_, false)) Pressed();
}

void Swatch::mousePressEvent(QMouseEvent*) {}

void Swatch::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) Pressed();
}

void Swatch::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
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
