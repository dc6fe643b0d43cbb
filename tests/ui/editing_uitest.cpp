#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

#include <string>
#include <vector>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "editor/ShapeHistory.h"
#include "editor/TunnelShape.h"
#include "job/mMain.h"

using namespace boreforge;

TEST_F(UiTest, UndoKeysWorkWhereverTheFocusIsAndStayOutOfTheSnapBox) {
    constexpr int kCtrl = Qt::ControlModifier, kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    auto& box = Get<QLineEdit>(window, "txtSnap");
    const struct { int redoKey, redoModifiers; } cases[] = {{Qt::Key_Z, kCtrlShift}, {Qt::Key_Y, kCtrl}};
    for (const auto& [redoKey, redoModifiers] : cases) {
        ShapeHistory = {};
        box.setFocus();
        box.setText("");
        Key('1');
        Key(Qt::Key_Z, kCtrl);
        EXPECT_EQ(box.text(), "1") << "there was nothing to undo in the shape";
        Key(redoKey, redoModifiers);
        EXPECT_EQ(Focus(), "txtSnap");
        Key(Qt::Key_F);
        box.setFocus();
        Key(Qt::Key_Z, kCtrl);
        EXPECT_EQ(TunnelShape.InsideNodes[0].y, -1);
        EXPECT_EQ(Focus(), "pbShape");
        box.setFocus();
        Key(redoKey, redoModifiers);
        EXPECT_EQ(TunnelShape.InsideNodes[0].y, 1);
        EXPECT_EQ(Focus(), "pbShape");
        EXPECT_EQ(box.text(), "1");
        Key(Qt::Key_Z, kCtrl);
    }
}

// Drags over a control; true if the window would take it there.
static bool IsTaken(QWidget& over, const QMimeData& dragged) {
    QDragEnterEvent enter({}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(&over, &enter);
    return enter.isAccepted() && enter.dropAction() == Qt::CopyAction;
}
TEST_F(UiTest, OnlyASingleShapeOrTrackCanBeDroppedAnywhereOnTheWindow) {
    for (const char* const name : {"a.zrbf", "B.ZRBF", "c.zrtrack", "d.txt", "zrbf"})
        WriteBytes(In(name), {});
    QDir().mkdir(QString::fromStdString(In("folder.zrbf")));
    const struct {
        std::vector<std::string> names;
        bool taken;
    } cases[] = {{{"a.zrbf"}, true},       {{"B.ZRBF"}, true},      {{"c.zrtrack"}, true},
                 {{"d.txt"}, false},       {{"zrbf"}, false},       {{"a.zrbf", "B.ZRBF"}, false},
                 {{"folder.zrbf"}, false}, {{"absent.zrbf"}, false}};
    for (const auto& [names, taken] : cases) {
        QMimeData dragged;
        QList<QUrl> urls;
        for (const std::string& name : names)
            urls += QUrl::fromLocalFile(QString::fromStdString(In(name)));
        dragged.setUrls(urls);
        dragged.setText("0.5");
        for (const char* const over : {"pbShape", "txtSnap", "btnToolBar(0)"})
            EXPECT_EQ(IsTaken(Get(window, over), dragged), taken) << names[0] << " over " << over;
    }
    QMimeData remote;
    remote.setUrls({QUrl("http://localhost" + QString::fromStdString(In("a.zrbf")))});
    EXPECT_FALSE(IsTaken(window, remote));
    QMimeData shape;
    shape.setUrls({QUrl::fromLocalFile(QString::fromStdString(In("a.zrbf")))});
    frmTunnelSettings dialog(&window);
    dialog.open();
    EXPECT_FALSE(IsTaken(window, shape)) << "the window waits for a dialog";
}

TEST_F(UiTest, ArrowKeysEditOnlyWhileTheCanvasHasTheFocus) {
    TunnelShape.SelectedNode = 0;
    const Vector3D from = TunnelShape.InsideNodes[0];
    Get(window, "txtSnap").setFocus();
    Key(Qt::Key_Up);
    Key(Qt::Key_Escape);
    EXPECT_EQ(TunnelShape.InsideNodes[0], from);
    EXPECT_EQ(TunnelShape.SelectedNode, 0);
    Get(window, "pbShape").setFocus();
    Key(Qt::Key_Up);
    Key(Qt::Key_Escape);
    EXPECT_EQ(TunnelShape.InsideNodes[0].y, from.y + 0.5f);
    EXPECT_EQ(TunnelShape.SelectedNode, -1);
    EXPECT_EQ(Focus(), "pbShape");
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
