#include "editor/window/WindowAccess.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "editor/window/ShapeCanvas.h"
#include "editor/window/frmMain.h"

namespace boreforge {

namespace {

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
    if (auto* const canvas = dynamic_cast<ShapeCanvas*>(object))
        return new QAccessibleWidget(canvas, QAccessible::Canvas);
    if (auto* const window = dynamic_cast<frmMain*>(object))
        return new QAccessibleWidget(window, QAccessible::Window);
    return nullptr;
}

}  // namespace

void InstallWindowAccess() { QAccessible::installFactory(MakeAccess); }

}  // namespace boreforge
