#include <QComboBox>
#include <QLineEdit>
#include <QLocale>
#include <QScrollBar>
#include <QSettings>
#include <QToolButton>

#include <clocale>
#include <cmath>
#include <iomanip>
#include <map>
#include <sstream>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "editor/ImageSurface.h"
#include "editor/ShapeView.h"
#include "editor/TunnelShape.h"
#include "version.h"

using namespace boreforge;

// Left, top, width and height in twips, relative to the parent; the tab index, or -1 where nothing can have
// the focus; a tool's tooltip, else what stands on the control.
static constexpr char kMain[] = R"~(
btnShapeTools(0)    0 0 435 435 11 "New Tunnel Shape"    btnShapeTools(3)  420 0 435 435  8 "Open Tunnel Shape..."
btnShapeTools(4)  840 0 435 435  7 "Save Tunnel Shape..." btnToolBar(0)   1320 0 435 435 20 "Make 3DS Object for Track..."
chkShowNodes(0)  1860 0 435 435 21 "Show Inside Nodes"   chkShowNodes(1)  2280 0 435 435 22 "Show Outside Nodes"
btnPreShapes(0)  2820 0 435 435 14 "Pre-Shape - Box"     btnPreShapes(1)  3240 0 435 435 13 "Pre-Shape - Rounded"
btnShapeTools(8) 3780 0 435 435  3 "Mirror Tunnel ( M )" btnShapeTools(9) 4200 0 435 435  2 "Flip Tunnel ( F )"
btnShapeTools(1) 4620 0 435 435 10 "Insert Node ( I )"   btnShapeTools(2) 5040 0 435 435  9 "Delete Node ( DEL )"
btnShapeTools(5) 6720 0 435 435  6 "Zoom In ( + )"       btnShapeTools(6) 7140 0 435 435  5 "Zoom Out ( - )"
btnShapeTools(7) 7560 0 435 435  4 "Reset Default Zoom ( / )" chkSnapTo   8100 0 435 435 12 "Snap"
txtSnap        8640 150 615 285  1 "0.5"   Label3           9660  60 1875 315 -1 ""  Label1 9720 120 195 195 -1 "X="
lblMousePos(0) 9960 120 615 195 -1 "00.00" lblMousePos(1) 10860 120 615 195 -1 "00.00"
Label2        10620 120 195 195 -1 "Y="    pbShape 0 480 11880 8010 0 "")~";  // the canvas fills the window

static constexpr char kSettings[] =
    R"~(
Frame5   60  60 6495 1755 -1 "Tunnel Settings"         Frame1  120 240 1695 1035 -1 "Tunnel Color"
Frame4 1860 240 2115 1035 -1 "Tunnel Curvature Detail" Frame3 4020 240 2355 1035 -1 "Tunnel Transparency"
lblTColor 120 240 1455 675 11 "" cmbDetail 120 300 1875 315 13 "Normal" hsTrans 120 240 2115 255 15 "0"
lblTrans  120 660 2115 195 -1 "0%" chkDoubleSided 120 1440 1815 195 17 "Double-Sided Faces"
Label2   2220 1440 4155 195 -1 "It's an option, but it's not recommended!"
Frame2     60 1920 6495 1635 -1 "Track Modifications" chkRemTunnels 120 300 2475 195 1 "Remove Tunnel Flags"
chkDimColors 120 600 2475 195 2 "Dim Tunneled Segment Colors" hsDimPercent 420 840 2115 255 7 "50"
lblDimPercent 2520 840 555 255 -1 "50%" chkPlaceIt 120 1320 2955 195 5 "Place the Object in My Track for Me"
btnStart 4200 3660 1095 315 3 "Make" btnCancel 5400 3660 1095 315 4 "Cancel" Label1   3300 240 3075 915 -1
"Note: Any track modification will require that the track be re-saved.  It is highly recommended that you )~"
    R"~(have a back-up copy of the track file.")~";

static QString TextOn(const QWidget& control) {
    for (const char* const property : {"currentText", "text", "title", "value"})
        if (const QString text = control.property(property).toString(); !text.isEmpty()) return text;
    return control.toolTip();
}

static void ExpectControls(QWidget& window, const char* table) {
    std::istringstream rows(table);
    std::map<int, std::string> order;
    std::string name, text;
    for (int x, y, w, h, tab; rows >> name >> x >> y >> w >> h >> tab >> std::quoted(text);) {
        auto& control = Get(window, name.c_str());
        EXPECT_EQ(control.geometry(), QRect(x / 15, y / 15, w / 15, h / 15)) << name;
        EXPECT_EQ(TextOn(control).toStdString(), text) << name;
        EXPECT_TRUE(control.isEnabled() && control.isVisible()) << name;
        if (tab >= 0) order[tab] = name;
    }
    Get(window, order.begin()->second.c_str()).setFocus();
    for (const auto& [tab, expected] : order) {
        EXPECT_EQ(window.focusWidget()->objectName().toStdString(), expected) << tab;
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    }
}

TEST_F(UiTest, TheMainWindowIsAsDesigned) {
    EXPECT_EQ(window.windowTitle() + Focus(), QString("Zephyrail Boreforge - v%1pbShape").arg(kVersion));
    EXPECT_EQ(window.size(), QSize(792, 566));
    ExpectControls(window, kMain);
    std::map<QByteArray, int> pictures;
    for (const auto* const tool : window.findChildren<QToolButton*>()) {
        const QImage image = tool->icon().pixmap(16, 16).toImage();
        ++pictures[QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes())];
        for (const double scale : {1.25, 1.5, 2.0, 2.5, 3.0})
            EXPECT_EQ(tool->icon().pixmap(QSize(16, 16), scale).size(), QSize(16, 16) * scale);
        EXPECT_EQ(tool->isChecked(), tool->objectName().startsWith("chk"));
    }
    EXPECT_EQ(pictures.size(), 16u) << "each tool has a picture of its own";
}

TEST_F(UiTest, TheSettingsDialogIsAsDesignedAndItsReadOutsFollowTheDrag) {
    frmTunnelSettings dialog(&window);
    Show(dialog);
    EXPECT_EQ(dialog.windowTitle(), "3DS Tunnel Settings...");
    EXPECT_TRUE(dialog.minimumSize() == QSize(441, 269) && dialog.maximumSize() == QSize(441, 269));
    ExpectControls(dialog, kSettings);
    for (const char* const item : {"Extreme", "High", "Normal", "Low", "Poor!"})
        EXPECT_GE(Get<QComboBox>(dialog, "cmbDetail").findText(item), 0) << item;
    for (const auto& [name, label] : {std::pair{"hsTrans", "lblTrans"}, {"hsDimPercent", "lblDimPercent"}}) {
        auto& bar = Get<QScrollBar>(dialog, name);
        EXPECT_TRUE(bar.minimum() == 0 && bar.maximum() == 100 && bar.singleStep() == 1 &&
                    bar.pageStep() == 5);
        bar.setSliderDown(true);
        for (const int value : {37, 100, 0}) {
            bar.setSliderPosition(value);
            EXPECT_EQ(Get<QLabel>(dialog, label).text(), QString::number(value) + "%");
        }
    }
}

// A picture with the origin at (390, 240) in logical pixels, and the colour of one of its device pixels.
static QImage Paint(QSize size, double ratio) {
    QImage image;
    ShapeView = {0, 0, 390, 240};
    ImageSurface surface(image, size, ratio);
    DrawTunnelShape(surface, {});
    return image;
}
static std::string Pixel(const QImage& from, int x, int y) {
    return from.pixelColor(x, y).name().toStdString();
}

TEST_F(UiTest, ThePictureIsRightAtBothDensitiesAndClipped) {
    TunnelShape.SelectedNode = 2;
    TunnelShape.SelectedIsOutside = kFalse;
    for (const int ratio : {1, 2}) {
        const QImage image = Paint(QSize(781, 481), ratio);
        EXPECT_EQ(image.size(), QSize(781, 481) * ratio);
        // Background, origin, axes, grid; nodes, edges and a spoke of the box; its selected node.
        std::istringstream probes(
            "10 10 #000000 341 10 #000000 398 248 #000000 393 243 #c0c0c0 394 244 #c0c0c0 390 243 #404040 "
            "10 240 #404040 340 10 #202020 10 290 #202020 780 140 #202020 40 480 #202020 487 286 #8080ff "
            "519 318 #80ffff 260 61 #80ffff 490 170 #0000ff 350 90 #0000ff 515 170 #00ffff 265 170 #00ffff "
            "502 302 #808080 294 94 #ffff00 290 170 #ff8000");
        std::string expected;
        for (int x, y; probes >> x >> y >> expected;)
            EXPECT_EQ(Pixel(image, x * ratio, y * ratio), expected) << x << ' ' << y << " at " << ratio;
    }
    TunnelShape.InsideNodes = {{-10000, -10000, 0}, {10000, 10000, 0}, {0, 1, 0}, {1e30f, 1, 0}};
    TunnelShape.OutsideNodes = {{NAN, NAN, 0}, {INFINITY, -INFINITY, 0}, {-1e30f, 1e30f, 0}, {0.5f, NAN, 0}};
    const QImage image = Paint(QSize(781, 481), 1);
    EXPECT_EQ(Pixel(image, 465, 165), "#0000ff") << "a line through the origin from far off to far off";
    EXPECT_EQ(Pixel(image, 700, 190), "#ff8000") << "a line to the right without end";
    EXPECT_TRUE(Paint(QSize(781, 0), 2).isNull() && Paint(QSize(0, 481), 1).isNull());
}

TEST_F(UiTest, TheMouseAddsMovesAndPans) {
    Drag(Qt::LeftButton, At(1.2, -1.2), At(-3.3, 0.7));
    EXPECT_EQ(TunnelShape.InsideNodes.at(4), (Vector3D{-3.5f, 0.5f, 0}));
    EXPECT_EQ(TunnelShape.OutsideNodes.at(4), (Vector3D{1.5f, -1.5f, 0}));
    EXPECT_EQ(Text("lblMousePos(0)") + Text("lblMousePos(1)"), "-3.50.5");
    Click(window, "chkSnapTo");
    QTest::mouseMove(window.windowHandle(), At(-1.24, 2));
    EXPECT_EQ(Text("lblMousePos(0)"), "-1.24");
    for (const char* const hidden : {"chkShowNodes(0)", "chkShowNodes(1)"}) {
        Click(window, hidden);
        Drag(Qt::LeftButton, At(2, 3), At(2, 3));
        EXPECT_EQ(TunnelShape.NodeCount(), 6) << "a hidden node can't be hit, and without any none is added";
    }
    TunnelShape.SelectedNode = 3;
    Drag(Qt::MiddleButton, At(2, 3), At(3.5, 2.5));
    EXPECT_TRUE(TunnelShape.SelectedNode == 3 && ShapeView.ViewOriginX == 396);
    Drag(Qt::RightButton, At(2, 3), At(3.5, 2.5));
    EXPECT_TRUE(TunnelShape.SelectedNode == -1 && ShapeView.ViewOriginX == 396 + 75);
}

TEST_F(UiTest, KeysRunTheirToolsWhereverTheFocusIsAndMoveIt) {
    for (const int modifiers : {0, int{Qt::KeypadModifier}, int{Qt::ShiftModifier}})
        for (const std::string from : {"pbShape", "txtSnap"}) {
            // A key, D for Delete; then x and y of node 0, the node count and the zoom.
            std::istringstream cases(
                "M -2 -1 4 60 F 2 1 4 60 I 2 -1 5 60 + 2 -1 4 70 - 2 -1 4 50 "
                "D 2 -1 3 60 / 2 -1 4 50");
            char key = 0;
            for (float x, y, count, zoom; cases >> key >> x >> y >> count >> zoom;) {
                MakePresetShape(0);
                TunnelShape.SelectedNode = 1;
                TunnelShape.ZoomScale = 60;
                Get(window, from.c_str()).setFocus();
                Key(key == 'D' ? int{Qt::Key_Delete} : key, modifiers);
                const bool acts = key != '/' || modifiers == Qt::KeypadModifier;
                EXPECT_EQ(TunnelShape.InsideNodes[0], (Vector3D{x, y, 0})) << key << ' ' << modifiers;
                EXPECT_EQ(static_cast<float>(TunnelShape.NodeCount()), count) << key << ' ' << modifiers;
                EXPECT_EQ(TunnelShape.ZoomScale, acts ? zoom : 60) << key << ' ' << modifiers;
                EXPECT_EQ(Focus().toStdString(), acts ? "pbShape" : from) << key << ' ' << modifiers;
            }
        }
}

// A key as its keyboard types it: the row of digits has the scan codes 10 ("1") to 19 ("0") on X11.
struct TypedKey {
    const char* keyboard;
    int key;
    quint32 scanCode;
    int modifiers;
    float zoom;  // from 60
};

TEST_F(UiTest, ZoomKeysAreKeysAndNotCharacters) {
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

TEST_F(UiTest, TheSnapBoxSelectsItsTextAndFiltersWhatIsTyped) {
    auto& box = Get<QLineEdit>(window, "txtSnap");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, box.geometry().center());
    EXPECT_EQ(box.selectedText() + box.toolTip(), "0.5Snap Interval");
    Key(Qt::Key_Delete);  // nothing is selected on the canvas: the text takes the key
    EXPECT_EQ(box.text() + Focus(), "txtSnap");
    // What stands in the box, what is typed, with "<" for Backspace, and what stands there then.
    std::istringstream cases(
        "'' 12.345 1.34 '' A,E7.X5 7.5 '' .. .. 0.25 7. 0.25 0.25 <9 9 1 2 1 1 . . 1.5 7 7");
    for (std::string before, typed, after; cases >> std::quoted(before, '\'') >> typed >> after;) {
        box.setText(QString::fromStdString(before));
        Key(Qt::Key_Tab);
        Key(Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_EQ(box.selectedText().toStdString(), before);
        for (const char c : typed)
            Key(c == '<' ? int{Qt::Key_Backspace} : c);
        EXPECT_EQ(box.text().toStdString(), after) << before << ' ' << typed;
    }
}

TEST_F(UiTest, TheWindowShrinksToNothingAndShowsPointsInACommaCountry) {
    for (const QSize size : {QSize(1, 1), QSize(300, 32), QSize(792, 566)}) {
        window.resize(size);
        QApplication::processEvents();
        EXPECT_EQ(Get(window, "pbShape").geometry(), QRect(0, 32, size.width(), qMax(0, size.height() - 32)));
        EXPECT_EQ(ShapeView.ViewOriginX, size.width() / 2);
    }
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    Get<QLineEdit>(window, "txtSnap").setText("0.25");
    QTest::mouseMove(window.windowHandle(), At(1.3, -1.3));
    EXPECT_EQ(Text("lblMousePos(0)") + Text("lblMousePos(1)"), "1.25-1.25");
    QLocale::setDefault(QLocale::c());
}

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // The toolkit's dialogs find and leave nothing in the home of who runs the tests.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null/none");
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
