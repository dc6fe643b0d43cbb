#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QToolButton>

#include <cmath>
#include <set>
#include <string>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "editor/window/ImageSurface.h"
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
    EXPECT_EQ(Text("txtSnap"), "0.5");
    ExpectControlsApart(window);
    ExpectTabOrder(
        window, {"pbShape", "txtSnap", "btnShapeTools(9)", "btnShapeTools(8)", "btnShapeTools(7)",
                 "btnShapeTools(6)", "btnShapeTools(5)", "btnShapeTools(4)", "btnShapeTools(3)",
                 "btnShapeTools(2)", "btnShapeTools(1)", "btnShapeTools(0)", "chkSnapTo", "btnPreShapes(1)",
                 "btnPreShapes(0)", "btnToolBar(0)", "chkShowNodes(0)", "chkShowNodes(1)"});
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

TEST_F(UiTest, TheSettingsDialogIsAsDesigned) {
    frmTunnelSettings dialog(&window);
    Show(dialog);
    EXPECT_EQ(dialog.windowTitle(), "3DS Tunnel Settings...");
    EXPECT_EQ(dialog.minimumSize(), QSize(441, 269));
    EXPECT_EQ(dialog.maximumSize(), QSize(441, 269));
    ExpectControlsApart(dialog);
    ExpectTabOrder(dialog, {"chkRemTunnels", "chkDimColors", "btnStart", "btnCancel", "chkPlaceIt",
                            "hsDimPercent", "lblTColor", "cmbDetail", "hsTrans", "chkDoubleSided"});
    const auto& detail = Get<QComboBox>(dialog, "cmbDetail");
    QStringList items;
    for (int i = 0; i < detail.count(); ++i)
        items += detail.itemText(i);
    EXPECT_EQ(items.join(' '), "Extreme High Normal Low Poor!");
}

// The canvas as a picture with the origin at (390, 240).
static QImage Paint(QSize size, int density) {
    QImage image;
    ShapeView = {0, 0, 390, 240};
    ImageSurface surface(image, size, density);
    DrawTunnelShape(surface, {});
    return image;
}

TEST_F(UiTest, ThePictureShowsTheShapeAtBothDensities) {
    const struct {
        const char* what;
        int x, y;
        const char* expected;
    } probes[] = {{"background", 10, 10, "#000000"}, {"beside the origin", 398, 248, "#000000"},
                  {"origin", 393, 243, "#c0c0c0"},   {"vertical axis over the origin", 390, 243, "#404040"},
                  {"grid line", 340, 10, "#202020"}, {"beside it", 341, 10, "#000000"},
                  {"its end", 780, 140, "#202020"},  {"inside node", 487, 286, "#8080ff"},
                  {"edge", 490, 170, "#0000ff"},     {"spoke", 502, 302, "#808080"}};
    for (const int density : {1, 2}) {
        const QImage image = Paint(QSize(781, 481), density);
        EXPECT_EQ(image.size(), QSize(781, 481) * density);
        for (const auto& [what, x, y, expected] : probes)
            EXPECT_EQ(image.pixelColor(x * density, y * density), QColor(expected))
                << what << " at " << density;
    }
}

TEST_F(UiTest, LinesThatLeaveThePictureAreClipped) {
    TunnelShape.InsideNodes = {{-10000, -10000, 0}, {10000, 10000, 0}, {0, 1, 0}, {1e30f, 1, 0}};
    TunnelShape.OutsideNodes = {{NAN, NAN, 0}, {INFINITY, -INFINITY, 0}, {-1e30f, 1e30f, 0}, {0.5f, NAN, 0}};
    TunnelShape.SelectedNode = 2;
    TunnelShape.SelectedIsOutside = kFalse;
    const QImage image = Paint(QSize(781, 481), 1);
    EXPECT_EQ(image.pixelColor(465, 165), QColor("#0000ff")) << "through the origin, from far off to far off";
    EXPECT_EQ(image.pixelColor(700, 190), QColor("#ff8000")) << "to the right without end";
    EXPECT_TRUE(Paint(QSize(781, 0), 2).isNull());
    EXPECT_TRUE(Paint(QSize(0, 481), 1).isNull());
}

TEST_F(UiTest, ALeftDragAddsANodeAndMovesItsOutsidePoint) {
    Drag(Qt::LeftButton, At(1.2, -1.2), At(-3.3, 0.7));
    EXPECT_EQ(TunnelShape.InsideNodes.at(4), (Vector3D{-3.5f, 0.5f, 0}));
    EXPECT_EQ(TunnelShape.OutsideNodes.at(4), (Vector3D{1.5f, -1.5f, 0}));
    EXPECT_EQ(Text("lblMousePos(0)"), "-3.5");
    EXPECT_EQ(Text("lblMousePos(1)"), "0.5");
    Click(window, "chkSnapTo");
    QTest::mouseMove(window.windowHandle(), At(-1.24, 2));
    EXPECT_EQ(Text("lblMousePos(0)"), "-1.24");
}

TEST_F(UiTest, ARightDragPansAndDropsTheSelection) {
    TunnelShape.SelectedNode = 3;
    Drag(Qt::MiddleButton, At(2, 3), At(3.5, 2.5));
    EXPECT_EQ(TunnelShape.SelectedNode, 3);
    EXPECT_EQ(ShapeView.ViewOriginX, 396);
    Drag(Qt::RightButton, At(2, 3), At(3.5, 2.5));
    EXPECT_EQ(TunnelShape.SelectedNode, -1);
    EXPECT_EQ(ShapeView.ViewOriginX, 396 + 75);
}

TEST_F(UiTest, KeysWhereverTheFocusIsAndButtonsRunTheirToolsAndTheCanvasGetsTheFocus) {
    const struct {
        const char* button;
        int key, modifiers;
        Vector3D node;  // the first one, from 2, -1
        int nodes;      // from 4
        float zoom;     // from 80
    } cases[] = {{"btnShapeTools(8)", Qt::Key_M, Qt::NoModifier, {-2, -1, 0}, 4, 80},
                 {"btnShapeTools(8)", Qt::Key_M, Qt::ShiftModifier, {-2, -1, 0}, 4, 80},
                 {"btnShapeTools(9)", Qt::Key_F, Qt::NoModifier, {2, 1, 0}, 4, 80},
                 {"btnShapeTools(1)", Qt::Key_I, Qt::NoModifier, {2, -1, 0}, 5, 80},
                 {"btnShapeTools(2)", Qt::Key_Delete, Qt::NoModifier, {2, -1, 0}, 3, 80},
                 {"btnShapeTools(2)", Qt::Key_Delete, Qt::KeypadModifier, {2, -1, 0}, 3, 80},
                 {"btnShapeTools(5)", Qt::Key_Plus, Qt::NoModifier, {2, -1, 0}, 4, 90},
                 {"btnShapeTools(6)", Qt::Key_Minus, Qt::NoModifier, {2, -1, 0}, 4, 70},
                 {"btnShapeTools(7)", Qt::Key_Slash, Qt::KeypadModifier, {2, -1, 0}, 4, 50}};
    for (const auto& row : cases)
        for (const char* const by : {"pbShape", "txtSnap", row.button}) {
            SCOPED_TRACE(std::string(row.button) + " by " + by);
            MakePresetShape(kPresetBox);
            TunnelShape.SelectedNode = 1;
            TunnelShape.ZoomScale = 80;
            Get(window, by).setFocus();
            by == row.button ? Click(window, by) : Key(row.key, row.modifiers);
            EXPECT_EQ(TunnelShape.InsideNodes[0], row.node);
            EXPECT_EQ(TunnelShape.NodeCount(), row.nodes);
            EXPECT_EQ(TunnelShape.ZoomScale, row.zoom);
            EXPECT_EQ(Focus(), "pbShape");
        }
}

TEST_F(UiTest, ButtonsWithoutAKeyReplaceTheShape) {
    const struct {
        const char* button;
        int nodes;
    } cases[] = {{"btnPreShapes(1)", 8}, {"btnShapeTools(0)", 0}, {"btnPreShapes(0)", 4}};
    for (const auto& [button, nodes] : cases) {
        Click(window, button);
        EXPECT_EQ(TunnelShape.NodeCount(), nodes) << button;
        EXPECT_EQ(Focus(), "pbShape") << button;
    }
}

// A key press of one keyboard. On X11 the row of digits has the scan codes 10 ("1") to 19 ("0").
struct TypedKey {
    const char* keyboard;
    int key;
    quint32 scanCode;
    int modifiers;
    float zoom;  // from 60
};

TEST_F(UiTest, OnlyThePlusAndMinusKeysOfAKeyboardZoom) {
    constexpr int kNone = Qt::NoModifier, kShift = Qt::ShiftModifier, kPad = Qt::KeypadModifier;
    const TypedKey cases[] = {{"us: =", Qt::Key_Equal, 21, kNone, 70},
                              {"us: Shift and =", Qt::Key_Plus, 21, kShift, 70},
                              {"us: -", Qt::Key_Minus, 20, kNone, 50},
                              {"us: Shift and -", Qt::Key_Underscore, 20, kShift, 50},
                              {"de: +", Qt::Key_Plus, 35, kNone, 70},
                              {"de: Shift and 0, which types =", Qt::Key_Equal, 19, kShift, 60},
                              {"fr: 6, which types -", Qt::Key_Minus, 15, kNone, 50},
                              {"fr: 8, which types _", Qt::Key_Underscore, 17, kNone, 60},
                              {"ch: Shift and 1, which types +", Qt::Key_Plus, 10, kShift, 60},
                              {"cz: 1, which types +", Qt::Key_Plus, 10, kNone, 70},
                              {"us: /", Qt::Key_Slash, 61, kNone, 60},
                              {"pad: +", Qt::Key_Plus, 86, kPad, 70},
                              {"pad: -", Qt::Key_Minus, 82, kPad, 50},
                              {"pad: =", Qt::Key_Equal, 125, kPad, 60}};
    for (const TypedKey& row : cases) {
        TunnelShape.ZoomScale = 60;
        QKeyEvent press(QEvent::KeyPress, row.key, Qt::KeyboardModifiers(row.modifiers), row.scanCode, 0, 0);
        QApplication::sendEvent(window.windowHandle(), &press);
        EXPECT_EQ(TunnelShape.ZoomScale, row.zoom) << row.keyboard;
    }
}

TEST_F(UiTest, TheSnapBoxSelectsItsTextWhenItGetsTheFocus) {
    auto& box = Get<QLineEdit>(window, "txtSnap");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, box.geometry().center());
    EXPECT_EQ(box.selectedText(), "0.5");
    EXPECT_EQ(box.toolTip(), "Snap Interval");
    Key(Qt::Key_Delete);  // nothing is selected on the canvas, so the text takes the key
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(Focus(), "txtSnap");
}

TEST_F(UiTest, TheSnapBoxKeepsItsSelectionWhenItsMenuClosesOrTheWindowComesBack) {
    auto& box = Get<QLineEdit>(window, "txtSnap");
    const struct {
        Qt::FocusReason reason;
        const char* selected;
    } cases[] = {{Qt::TabFocusReason, "0.5"},
                 {Qt::ShortcutFocusReason, "0.5"},
                 {Qt::OtherFocusReason, "0.5"},
                 {Qt::PopupFocusReason, "0"},
                 {Qt::ActiveWindowFocusReason, "0"}};
    for (const auto& [reason, selected] : cases) {
        box.setSelection(0, 1);
        QFocusEvent focus(QEvent::FocusIn, reason);
        QApplication::sendEvent(&box, &focus);
        EXPECT_EQ(box.selectedText().toStdString(), selected) << reason;
    }
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

TEST_F(UiTest, TheCanvasTakesTheRoomUnderTheToolRow) {
    for (const QSize size : {QSize(1, 1), QSize(300, 32), QSize(792, 566)}) {
        window.resize(size);
        QApplication::processEvents();
        EXPECT_EQ(Get(window, "pbShape").geometry(), QRect(0, 32, size.width(), qMax(0, size.height() - 32)));
        EXPECT_EQ(ShapeView.ViewOriginX, size.width() / 2);
    }
}

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's dialogs neither read nor write the settings of the user who runs the tests.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null/none");
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
