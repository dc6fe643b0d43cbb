#include "editor/window/WindowAccess.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "editor/window/RowControls.h"
#include "editor/window/ShapeCanvas.h"
#include "editor/window/frmMain.h"

namespace boreforge {

namespace {

// Some readers ask for the value as a text, others as a number.
class ReadOutAccess : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit ReadOutAccess(ReadOut* label)
        : QAccessibleWidget(label, QAccessible::StaticText), label_(label) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? label_->text() : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return label_->text().toDouble(); }
    void setCurrentValue(const QVariant&) override {}
    QVariant minimumValue() const override { return {}; }
    QVariant maximumValue() const override { return {}; }
    QVariant minimumStepSize() const override { return {}; }

  private:
    ReadOut* label_;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
    if (auto* const label = dynamic_cast<ReadOut*>(object)) return new ReadOutAccess(label);
    if (auto* const canvas = dynamic_cast<ShapeCanvas*>(object))
        return new QAccessibleWidget(canvas, QAccessible::Canvas);
    if (auto* const window = dynamic_cast<frmMain*>(object))
        return new QAccessibleWidget(window, QAccessible::Window);
    return nullptr;
}

}  // namespace

void InstallWindowAccess() { QAccessible::installFactory(MakeAccess); }

}  // namespace boreforge
