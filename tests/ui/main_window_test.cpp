#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QToolButton>

#include <set>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "version.h"

using namespace boreforge;

// Presses Tab from the first control on; each gets the focus in turn.
static void ExpectTabOrder(QWidget& window, const QStringList& names) {
    Get(window, names[0].toUtf8()).setFocus();
    for (const QString& name : names) {
        EXPECT_EQ(window.focusWidget()->objectName(), name);
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(window.focusWidget()->objectName(), names[0]);
}

// Every control is wholly visible, and none covers another by more than a border.
static void ExpectControlsApart(const QWidget& parent) {
    QRegion taken;
    for (const auto* const control : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const QString name = control->objectName();
        if (!control->isVisible() || name == "Label3") continue;  // the frame around the position
        EXPECT_TRUE(parent.rect().contains(control->geometry())) << name.toStdString();
        const QRect inner = control->geometry().adjusted(1, 1, -1, -1);
        EXPECT_FALSE(taken.intersects(inner)) << name.toStdString();
        taken += inner;
        if (name.startsWith("Frame")) ExpectControlsApart(*control);
    }
}

TEST_F(UiTest, TheMainWindowIsAsDesigned) {
    EXPECT_EQ(window.windowTitle(), QString("Zephyrail Boreforge - v%1").arg(kVersion));
    EXPECT_EQ(window.size(), QSize(792, 566));
    EXPECT_EQ(Text("lblMousePos(0)"), "00.00");
    ExpectControlsApart(window);
    ExpectTabOrder(
        window, {"pbShape", "txtSnap", "btnShapeTools(9)", "btnShapeTools(8)", "btnShapeTools(7)",
                 "btnShapeTools(6)", "btnShapeTools(5)", "btnShapeTools(4)", "btnShapeTools(3)",
                 "btnShapeTools(2)", "btnShapeTools(1)", "btnShapeTools(0)", "chkSnapTo", "btnPreShapes(1)",
                 "btnPreShapes(0)", "btnToolBar(0)", "chkShowNodes(0)", "chkShowNodes(1)"});
}

TEST_F(UiTest, TheSettingsDialogIsAsDesigned) {
    frmTunnelSettings dialog(&window);
    Show(dialog);
    EXPECT_EQ(dialog.windowTitle(), "3DS Tunnel Settings...");
    EXPECT_EQ(dialog.minimumSize(), QSize(441, 269));
    EXPECT_EQ(dialog.maximumSize(), QSize(441, 269));
    ExpectControlsApart(dialog);
    ExpectTabOrder(dialog, {"chkRemTunnels", "chkDimColors", "btnStart", "btnCancel", "chkPlaceIt",
                            "hsDimPercent", "lblTColor", "cmbDetail", "hsTrans", "chkDoubleSided"});
    QStringList details;
    for (int i = 0; i < 5; ++i)
        details += Get<QComboBox>(dialog, "cmbDetail").itemText(i);
    EXPECT_EQ(details.join(' '), "Extreme High Normal Low Poor!");
}

TEST_F(UiTest, EachToolHasAPictureOfItsOwnThatIsCrispAtEachScale) {
    std::set<QByteArray> pictures;
    for (const auto* const tool : window.findChildren<QToolButton*>()) {
        const QImage image = tool->icon().pixmap(16, 16).toImage();
        pictures.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
        for (const double scale : {1.25, 1.5, 2.0, 2.5, 3.0})
            EXPECT_EQ(tool->icon().pixmap(QSize(16, 16), scale).size(), QSize(16, 16) * scale);
        EXPECT_EQ(tool->isChecked(), tool->objectName().startsWith("chk"));
    }
    EXPECT_EQ(pictures.size(), 16u);
}

TEST_F(UiTest, TheCanvasTakesTheRoomUnderTheToolRow) {
    for (const QSize size : {QSize(1, 1), QSize(300, 32), QSize(792, 566)}) {
        window.resize(size);
        QApplication::processEvents();
        EXPECT_EQ(Get(window, "pbShape").geometry(), QRect(0, 32, size.width(), qMax(0, size.height() - 32)));
        EXPECT_EQ(ShapeView.ViewOriginX, size.width() / 2);
    }
}

TEST_F(UiTest, TheSnapBoxSelectsItsTextWhenItIsClicked) {
    auto& box = Get<QLineEdit>(window, "txtSnap");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, box.geometry().center());
    EXPECT_EQ(box.selectedText(), "0.5");
    Key(Qt::Key_Delete);  // nothing is selected on the canvas, so the text takes the key
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(Focus(), "txtSnap");
}

TEST_F(UiTest, TheSnapBoxFiltersWhatIsTyped) {
    const struct {
        const char *before, *typed, *after;  // "<" is Backspace
    } cases[] = {{"", "12.345", "1.34"}, {"", "A,E7.X5", "7.5"}, {"", "..", ".."}, {"0.25", "7.", "0.25"},
                 {"0.25", "<9", "9"},    {"1", "2", "1"},        {"1", ".", "."},  {"1.5", "7", "7"}};
    auto& box = Get<QLineEdit>(window, "txtSnap");
    for (const auto& [before, typed, after] : cases) {
        box.setText(before);
        Get(window, "pbShape").setFocus();
        box.setFocus();  // which selects the text
        for (const char c : std::string(typed))
            Key(c == '<' ? int{Qt::Key_Backspace} : c);
        EXPECT_EQ(box.text(), after) << before << ' ' << typed;
    }
}

static QAccessibleInterface& AccessTo(QWidget& control) {
    return *QAccessible::queryAccessibleInterface(&control);
}

TEST_F(UiTest, TheMousePositionIsShownAndGivenToScreenReaders) {
    QTest::mouseMove(window.windowHandle(), At(-1.5, 2));
    QAccessibleInterface& x = AccessTo(Get(window, "lblMousePos(0)"));
    EXPECT_EQ(x.text(QAccessible::Name), "Mouse position X");
    EXPECT_EQ(x.text(QAccessible::Description), "-1.5");
    EXPECT_EQ(AccessTo(Get(window, "lblMousePos(1)")).text(QAccessible::Description), "2.0");
    Click(window, "chkSnapTo");
    QTest::mouseMove(window.windowHandle(), At(-1.24, 2));
    EXPECT_EQ(Text("lblMousePos(0)"), "-1.24");
}

TEST_F(UiTest, ScreenReadersGetTheSelectedPoint) {
    const struct {
        QPoint press;
        const char* description;
    } cases[] = {{At(2, 3), "inside point 2 of 4, x 2.0, y 3.0"},
                 {At(-2.5, -1.5), "outside point 4 of 4, x -2.5, y -1.5"},
                 {At(0, 4), "outside point 5 of 5, x 0.5, y 4.5"}};
    QAccessibleInterface& canvas = AccessTo(Get(window, "pbShape"));
    for (const auto& [press, description] : cases) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, press);
        EXPECT_EQ(canvas.text(QAccessible::Description), description);
    }
    Key(Qt::Key_Delete);
    EXPECT_EQ(canvas.text(QAccessible::Description), "4 nodes, nothing selected");
    WriteBytes(user.file = In("wrong.zrbf"), FromHex("'ZRBE' 00000000"));
    Click(window, "btnShapeTools(3)");
    EXPECT_EQ(canvas.text(QAccessible::Description), "0 nodes, nothing selected");
}

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's dialogs neither read nor write the settings of the user who runs the tests.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null/none");
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
