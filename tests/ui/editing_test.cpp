#include <QDragEnterEvent>
#include <QMimeData>
#include <QSysInfo>
#include <QUrl>

#include <optional>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "editor/TunnelShapeFile.h"
#include "editor/window/WindowInput.h"

using namespace boreforge;

// On X11 the row of digits has the scan codes 10 ("1") to 19 ("0").
TEST(WindowInput, AToolHasItsKeyOnEveryKeyboard) {
    constexpr int kNone = Qt::NoModifier, kShift = Qt::ShiftModifier, kPad = Qt::KeypadModifier;
    const std::optional<ShapeTool> noTool;
    const struct {
        const char* keyboard;
        int key;
        quint32 scanCode;
        int modifiers;
        std::optional<ShapeTool> tool;
    } cases[] = {{"us: M", Qt::Key_M, 58, kNone, ShapeTool::Mirror},
                 {"us: Shift and M", Qt::Key_M, 58, kShift, ShapeTool::Mirror},
                 {"ru: the key of M", 0x42C, 58, kNone, ShapeTool::Mirror},
                 {"us: F", Qt::Key_F, 41, kNone, ShapeTool::Flip},
                 {"ru: the key of W", 0x426, 25, kNone, ShapeTool::EvenWall},
                 {"ru: the key of R", 0x41A, 27, kNone, ShapeTool::Reverse},
                 {"us: I", Qt::Key_I, 31, kNone, ShapeTool::Insert},
                 {"us: Delete", Qt::Key_Delete, 119, kNone, ShapeTool::Delete},
                 {"pad: Delete", Qt::Key_Delete, 91, kPad, ShapeTool::Delete},
                 {"us: /", Qt::Key_Slash, 61, kNone, noTool},
                 {"pad: /", Qt::Key_Slash, 106, kPad, ShapeTool::ZoomReset},
                 {"us: =", Qt::Key_Equal, 21, kNone, ShapeTool::ZoomIn},
                 {"us: Shift and =", Qt::Key_Plus, 21, kShift, ShapeTool::ZoomIn},
                 {"us: -", Qt::Key_Minus, 20, kNone, ShapeTool::ZoomOut},
                 {"us: Shift and -", Qt::Key_Underscore, 20, kShift, ShapeTool::ZoomOut},
                 {"de: +", Qt::Key_Plus, 35, kNone, ShapeTool::ZoomIn},
                 {"de: Shift and 0, which types =", Qt::Key_Equal, 19, kShift, noTool},
                 {"fr: 6, which types -", Qt::Key_Minus, 15, kNone, ShapeTool::ZoomOut},
                 {"fr: 8, which types _", Qt::Key_Underscore, 17, kNone, noTool},
                 {"ch: Shift and 1, which types +", Qt::Key_Plus, 10, kShift, noTool},
                 {"cz: 1, which types +", Qt::Key_Plus, 10, kNone, ShapeTool::ZoomIn},
                 {"pad: +", Qt::Key_Plus, 86, kPad, ShapeTool::ZoomIn},
                 {"pad: -", Qt::Key_Minus, 82, kPad, ShapeTool::ZoomOut},
                 {"pad: =", Qt::Key_Equal, 125, kPad, noTool}};
    for (const auto& row : cases) {
        const QKeyEvent press(QEvent::KeyPress, row.key, Qt::KeyboardModifiers(row.modifiers), row.scanCode,
                              0, 0);
        EXPECT_EQ(ToolOfKey(KeyPressOf(press)), row.tool) << row.keyboard;
    }
}

TEST_F(UiTest, EachButtonRunsItsToolAndTheCanvasGetsTheFocus) {
    const struct {
        const char* button;
        Vector3D node;  // the first one, from 2, -1
        int nodes;      // from 4
        float zoom;     // from 80
    } cases[] = {{"btnShapeTools(1)", {2, -1, 0}, 5, 80}, {"btnShapeTools(2)", {2, -1, 0}, 3, 80},
                 {"btnShapeTools(5)", {2, -1, 0}, 4, 90}, {"btnShapeTools(6)", {2, -1, 0}, 4, 70},
                 {"btnShapeTools(7)", {2, -1, 0}, 4, 50}, {"btnShapeTools(8)", {-2, -1, 0}, 4, 80},
                 {"btnShapeTools(9)", {2, 1, 0}, 4, 80},  {"btnPreShapes(1)", {2, 0, 0}, 8, 50},
                 {"btnPreShapes(0)", {2, -1, 0}, 4, 50}};
    for (const auto& [button, node, nodes, zoom] : cases) {
        SCOPED_TRACE(button);
        MakePresetShape(kPresetBox);
        TunnelShape.SelectedNode = 1;
        TunnelShape.ZoomScale = 80;
        Click(window, button);
        EXPECT_EQ(TunnelShape.InsideNodes[0], node);
        EXPECT_EQ(TunnelShape.NodeCount(), nodes);
        EXPECT_EQ(TunnelShape.ZoomScale, zoom);
        EXPECT_EQ(Focus(), "pbShape");
    }
    Click(window, "btnShapeTools(0)");
    EXPECT_EQ(TunnelShape.NodeCount(), 0);
}

TEST_F(UiTest, ToolAndUndoKeysWorkInTheSnapBoxAndStayOutOfIt) {
    constexpr int kCtrl = Qt::ControlModifier, kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    const struct {
        int key, modifiers;
        float y;  // of the first node, from -1
        const char* focus;
    } steps[] = {{Qt::Key_1, 0, -1, "txtSnap"},
                 {Qt::Key_Z, kCtrl, -1, "txtSnap"},  // nothing to undo in the shape
                 {Qt::Key_F, 0, 1, "pbShape"},
                 {Qt::Key_Z, kCtrl, -1, "pbShape"},
                 {Qt::Key_Y, kCtrl, 1, "pbShape"},
                 {Qt::Key_Z, kCtrl, -1, "pbShape"},
                 {Qt::Key_Z, kCtrlShift, 1, "pbShape"},
                 {Qt::Key_Y, kCtrl, 1, "txtSnap"}};
    for (const auto& [key, modifiers, y, focus] : steps) {
        Get(window, "txtSnap").setFocus();
        Key(key, modifiers);
        EXPECT_EQ(TunnelShape.InsideNodes[0].y, y);
        EXPECT_EQ(Focus(), focus);
        EXPECT_EQ(Text("txtSnap"), "1");
    }
}

TEST_F(UiTest, ArrowKeysEditOnlyWhileTheCanvasHasTheFocus) {
    const struct {
        const char* focus;
        float y;  // of the first node, from -1
        int selected;
    } cases[] = {{"txtSnap", -1, 0}, {"pbShape", -0.5f, -1}};
    TunnelShape.SelectedNode = 0;
    for (const auto& [focus, y, selected] : cases) {
        Get(window, focus).setFocus();
        Key(Qt::Key_Up);
        Key(Qt::Key_Escape);
        EXPECT_EQ(TunnelShape.InsideNodes[0].y, y);
        EXPECT_EQ(TunnelShape.SelectedNode, selected);
    }
}

TEST_F(UiTest, AClickAnywhereEndsARunOfArrowKeys) {
    TunnelShape.SelectedNode = 1;
    Key(Qt::Key_Up);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      Get(window, "chkShowNodes(1)").geometry().center());
    Key(Qt::Key_Up);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(TunnelShape.InsideNodes[1], (Vector3D{2, 3.5f, 0}));
}

TEST_F(UiTest, TheLeftButtonAddsANodeAndOnlyTheRightButtonPans) {
    Drag(Qt::LeftButton, At(1.2, -1.2), At(-3.3, 0.7));
    EXPECT_EQ(TunnelShape.InsideNodes.at(4), (Vector3D{-3.5f, 0.5f, 0}));
    for (const auto& [button, origin] : {std::pair{Qt::MiddleButton, 396}, {Qt::RightButton, 396 + 75}}) {
        Drag(button, At(2, 3), At(3.5, 2.5));
        EXPECT_EQ(ShapeView.ViewOriginX, origin);
    }
}

// Drags URLs over a control; true if the window would copy what they lead to.
static bool IsTaken(QWidget& over, const QStringList& urls) {
    QMimeData dragged;
    dragged.setUrls(QUrl::fromStringList(urls));
    dragged.setText("0.5");
    QDragEnterEvent enter({}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(&over, &enter);
    return enter.isAccepted() && enter.dropAction() == Qt::CopyAction;
}

TEST_F(UiTest, OnlyASingleShapeOrTrackCanBeDroppedAnywhereOnTheWindow) {
    const QString folder = QString::fromStdString(In("")), path = QUrl::fromLocalFile(folder).path(),
                  here = "file://" + path;
    const struct {
        QStringList urls;
        bool taken;
    } cases[] = {{{here + "a.zrbf"}, true},
                 {{here + "B.ZRBF"}, true},
                 {{here + "c.zrtrack"}, true},
                 {{"file://localhost" + path + "a.zrbf"}, true},
                 {{"file://" + QSysInfo::machineHostName() + path + "a.zrbf"}, true},
                 {{"file://elsewhere" + path + "a.zrbf"}, false},
                 {{"http://localhost" + path + "a.zrbf"}, false},
                 {{here + "d.txt"}, false},
                 {{here + "zrbf"}, false},
                 {{here + "folder.zrbf"}, false},
                 {{here + "absent.zrbf"}, false},
                 {{here + "a.zrbf", here + "B.ZRBF"}, false}};
    for (const char* const name : {"a.zrbf", "B.ZRBF", "c.zrtrack", "d.txt", "zrbf"})
        WriteBytes(In(name), {});
    QDir().mkdir(folder + "folder.zrbf");
    for (const auto& [urls, taken] : cases)
        for (const char* const over : {"pbShape", "txtSnap", "btnToolBar(0)"})
            EXPECT_EQ(IsTaken(Get(window, over), urls), taken) << urls[0].toStdString() << over;
    frmTunnelSettings dialog(&window);
    dialog.open();
    EXPECT_FALSE(IsTaken(window, {here + "a.zrbf"})) << "the window waits for a dialog";
}

TEST_F(UiTest, ADroppedShapeIsOpenedWhenTheFileManagerIsFreeAgain) {
    MakePresetShape(kPresetRounded);
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    MakePresetShape(kPresetBox);
    const QStringList urls{"file://" + QString::fromStdString(In("s.zrbf"))};
    ASSERT_TRUE(IsTaken(Get(window, "txtSnap"), urls));
    QMimeData dropped;
    QDropEvent drop({}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Get(window, "txtSnap"), &drop);
    EXPECT_EQ(TunnelShape.NodeCount(), 4);
    QApplication::processEvents();
    EXPECT_EQ(TunnelShape.NodeCount(), 8);
}
