#include <QAccessible>
#include <QToolButton>

#include "UiTest.h"
#include "editor/TunnelShape.h"

using namespace boreforge;

static QAccessibleInterface& AccessTo(QWidget& control) {
    return *QAccessible::queryAccessibleInterface(&control);
}

TEST_F(UiTest, ScreenReadersGetTheMousePosition) {
    QTest::mouseMove(window.windowHandle(), At(-1.5, 2));
    QAccessibleInterface& x = AccessTo(Get(window, "lblMousePos(0)"));
    EXPECT_EQ(x.text(QAccessible::Name), "Mouse position X");
    EXPECT_EQ(x.text(QAccessible::Value), "-1.5");
    EXPECT_EQ(x.valueInterface()->currentValue(), -1.5);
    QAccessibleInterface& y = AccessTo(Get(window, "lblMousePos(1)"));
    EXPECT_EQ(y.text(QAccessible::Name), "Mouse position Y");
    EXPECT_EQ(y.text(QAccessible::Value), "2.0");
}

TEST_F(UiTest, ScreenReadersGetTheSelectedPoint) {
    QAccessibleInterface& canvas = AccessTo(Get(window, "pbShape"));
    struct Case {
        QPoint press;
        const char* description;
    };
    const Case cases[] = {{At(2, 3), "inside point 2 of 4, x 2.0, y 3.0"},
                          {At(-2.5, -1.5), "outside point 4 of 4, x -2.5, y -1.5"},
                          {At(0, 4), "outside point 5 of 5, x 0.5, y 4.5"}};
    for (const Case& each : cases) {
        Drag(Qt::LeftButton, each.press, each.press);
        EXPECT_EQ(canvas.text(QAccessible::Description), each.description);
    }
    Key(Qt::Key_Delete);
    EXPECT_EQ(canvas.text(QAccessible::Description), "nothing selected");
}

TEST_F(UiTest, APressedToolIsLitOnADarkDesktop) {
    const QPalette before = QApplication::palette();
    for (const Qt::GlobalColor desktop : {Qt::black, Qt::darkBlue}) {
        QApplication::setPalette(QPalette(desktop));
        frmMain dark;
        auto& tool = Get<QToolButton>(dark, "chkSnapTo");
        const auto background = [&] { return tool.grab().toImage().pixelColor(5, 5).lightness(); };
        const int pressed = background();
        tool.setChecked(false);
        EXPECT_GE(pressed, background() + 40);
    }
    QApplication::setPalette(before);
}
