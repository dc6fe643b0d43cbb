#include <QAccessible>
#include <QScreen>

#include <set>
#include <utility>

#include "UiTest.h"
#include "dialogs/frmTunnelSettings.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

TEST_F(UiTest, KeysMoveBothPercentageBars) {
    struct Case {
        Qt::Key key;
        int value;
    };
    frmTunnelSettings dialog(&window);
    Show(dialog);
    for (const auto& [name, label] : {std::pair{"hsTrans", "lblTrans"}, {"hsDimPercent", "lblDimPercent"}})
        for (const Case& each : {Case{Qt::Key_Left, 49}, Case{Qt::Key_Right, 51}, Case{Qt::Key_Up, 49},
                                 Case{Qt::Key_Down, 51}, Case{Qt::Key_PageUp, 45}, Case{Qt::Key_PageDown, 55},
                                 Case{Qt::Key_Home, 0}, Case{Qt::Key_End, 100}}) {
            auto& bar = Get<QScrollBar>(dialog, name);
            bar.setValue(50);
            QTest::keyClick(&bar, each.key);
            EXPECT_EQ(bar.value(), each.value) << name << ' ' << each.key;
            EXPECT_EQ(Get(dialog, label).property("text"), QString::number(each.value) + "%") << each.key;
        }
}

TEST_F(UiTest, TheSwatchAsksForAnyColorByMouseKeyboardAndScreenReader) {
    const struct {
        const char* by;
        std::function<void(QWidget&)> press;
    } cases[] = {{"mouse", [](QWidget& swatch) { QTest::mouseClick(&swatch, Qt::LeftButton); }},
                 {"keyboard", [](QWidget& swatch) { QTest::keyClick(&swatch, Qt::Key_Space); }},
                 {"screen reader", [](QWidget& swatch) {
                      QAccessible::queryAccessibleInterface(&swatch)->actionInterface()->doAction(
                          QAccessibleActionInterface::pressAction());
                  }}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.by);
        frmTunnelSettings dialog(&window);
        Show(dialog);
        QWidget& swatch = Get(dialog, "lblTColor");
        OnColorDialog(QColor(0x56, 0x34, 0x12));
        row.press(swatch);
        EXPECT_EQ(askedColor.Owner, &dialog);
        EXPECT_EQ(askedColor.Flags, kStartFromColor | kAnyColor | kFullOpen);
        OnColorDialog({});
        row.press(swatch);
        EXPECT_EQ(askedColor.Color, 0x123456);
        EXPECT_EQ(dialog.Choices().Color, 0x123456);
        EXPECT_EQ(swatch.grab().toImage().pixelColor(20, 20), QColor(0x56, 0x34, 0x12));
    }
}

TEST_F(UiTest, TheSettingsAreCentredOnTheirOwner) {
    window.move(120, 60);
    frmTunnelSettings dialog(&window);
    Show(dialog);
    const QPoint apart = dialog.frameGeometry().center() - window.frameGeometry().center();
    EXPECT_LE(apart.manhattanLength(), 2);
}

TEST_F(UiTest, TheSettingsStayOnTheScreenWhereverTheirOwnerIs) {
    const QRect screen = window.screen()->availableGeometry();
    for (const QPoint corner : {QPoint(-700, -500), screen.bottomRight()}) {
        window.move(corner);
        frmTunnelSettings dialog(&window);
        Show(dialog);
        EXPECT_TRUE(screen.contains(dialog.frameGeometry())) << corner.x();
    }
}

struct ExportTest : UiTest {
    ExportTest() {
        const std::vector<TrackBezierNode> nodes = WindingCircuit();
        MakeTrack({nodes.begin(), nodes.begin() + 4}, ".T..");
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")));
        track = ReadBytes(In("t.zrtrack"));
    }
    // Opens the track and runs `act` on the settings dialog, which must close it.
    void OpenTrackAnd(std::function<void(frmTunnelSettings&)> act) {
        file = In("t.zrtrack");
        bool acted = false;
        OnModal<frmTunnelSettings>([&](frmTunnelSettings& dialog) {
            act(dialog);
            EXPECT_FALSE(dialog.isVisible());
            acted = true;
        });
        Click(window, "btnToolBar(0)");
        EXPECT_TRUE(acted);
    }
    void MakeAs(const std::string& path) {
        OpenTrackAnd([&](frmTunnelSettings& dialog) {
            file = path;
            Click(dialog, "btnStart");
        });
    }
    Bytes track;
};

TEST_F(ExportTest, MakeAsksForTheObjectsFile) {
    OpenTrackAnd([&](frmTunnelSettings& dialog) {
        Click(dialog, "btnStart");
        EXPECT_EQ(Asked(),
                  "Save Tunnel as 3DS Object..., 3DStudioMax Files (*.3ds)/*.3ds//, 3ds, objects, , 6");
        EXPECT_EQ(asked.Owner, &dialog);
        EXPECT_TRUE(dialog.isVisible()) << "its save dialog was cancelled";
        dialog.close();
    });
    EXPECT_EQ(Listing(), std::vector<std::string>{"t.zrtrack"});
}

TEST_F(ExportTest, AnObjectThatCantBeWrittenIsReportedAndTheTrackStays) {
    MakeAs(In("none/tube.3ds"));
    ASSERT_EQ(messages.read.size(), 1u);
    EXPECT_EQ(messages.read[0].icon, QMessageBox::Warning);
    EXPECT_TRUE(messages.read[0].text.contains(QString::fromStdString(In("none/tube.3ds"))));
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
}

TEST_F(ExportTest, ATrackWithoutATunnelIsANotice) {
    MakeTrack(WindingCircuit());
    ASSERT_TRUE(WriteTrackFile(In("t.zrtrack")));
    MakeAs(In("tube.3ds"));
    const Message notice{QMessageBox::Information, "Notice!", "Track does not have any tunnels!"};
    EXPECT_EQ(messages.read, std::vector{notice});
    EXPECT_EQ(Listing(), std::vector<std::string>{"t.zrtrack"});
}

TEST_F(ExportTest, TheCanvasHasTheFocusAfterTheSettingsAndTheLastTrackIsOfferedAgain) {
    OpenTrackAnd([](frmTunnelSettings& dialog) { Click(dialog, "btnCancel"); });
    EXPECT_EQ(Focus(), "pbShape");
    Click(window, "btnToolBar(0)");
    EXPECT_EQ(asked.FileName.toStdString(), In("t.zrtrack"));
}

// All choices as one text, so that a difference shows all of them.
static std::string Described(const TunnelChoices& choices) {
    return QStringLiteral("color %1, transparency %2, detail %3, dim %4 %5, two sides %6, clear %7, place %8")
        .arg(choices.Color, 6, 16, QChar('0'))
        .arg(choices.Transparency)
        .arg(choices.DetailItem)
        .arg(choices.DimColors)
        .arg(choices.DimPercent)
        .arg(choices.DoubleSided)
        .arg(choices.RemoveTunnels)
        .arg(choices.PlaceObject)
        .toStdString();
}
static constexpr char kDefaults[] =
    "color c0c0c0, transparency 0, detail 2, dim 1 50, two sides 0, clear 1, place 1";

// Sets every control to something else than its default.
static void ChangeEverything(frmTunnelSettings& dialog) {
    Get<QScrollBar>(dialog, "hsTrans").setValue(40);
    Get<QScrollBar>(dialog, "hsDimPercent").setValue(10);
    Get<QComboBox>(dialog, "cmbDetail").setCurrentIndex(4);
    for (const char* const check : {"chkDoubleSided", "chkRemTunnels", "chkDimColors", "chkPlaceIt"})
        Get<QCheckBox>(dialog, check).click();
    Click(dialog, "lblTColor");
}

TEST_F(ExportTest, TheChoicesAreWhatTheControlsSay) {
    frmTunnelSettings dialog(&window);
    OnColorDialog(QColor(0x56, 0x34, 0x12));
    ChangeEverything(dialog);
    EXPECT_EQ(Described(dialog.Choices()),
              "color 123456, transparency 40, detail 4, dim 0 10, two sides 1, clear 0, place 0");
}

TEST_F(ExportTest, EachCheckBoxHasItsOwnChoice) {
    struct Case {
        const char* check;
        bool TunnelChoices::*choice;
    };
    for (const Case& each : {Case{"chkDoubleSided", &TunnelChoices::DoubleSided},
                             Case{"chkDimColors", &TunnelChoices::DimColors},
                             Case{"chkRemTunnels", &TunnelChoices::RemoveTunnels},
                             Case{"chkPlaceIt", &TunnelChoices::PlaceObject}}) {
        frmTunnelSettings dialog(&window);
        const bool before = dialog.Choices().*each.choice;
        Get<QCheckBox>(dialog, each.check).click();
        EXPECT_NE(dialog.Choices().*each.choice, before) << each.check;
    }
}

TEST_F(ExportTest, EachOpeningStartsWithTheDefaults) {
    for (int opening = 0; opening < 2; ++opening)
        OpenTrackAnd([&](frmTunnelSettings& dialog) {
            EXPECT_EQ(Described(dialog.Choices()), kDefaults);
            OnColorDialog(Qt::red);
            ChangeEverything(dialog);
            Click(dialog, "btnCancel");
        });
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
}

TEST_F(ExportTest, ReturnAndEscapeDoNothing) {
    OpenTrackAnd([](frmTunnelSettings& dialog) {
        for (const char* const focus : {"btnStart", "btnCancel", "hsTrans", "lblTColor"})
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
                Get(dialog, focus).setFocus();
                QTest::keyClick(dialog.windowHandle(), key);
                EXPECT_TRUE(dialog.isVisible()) << focus;
            }
        EXPECT_EQ(asked.DialogTitle, "Open Track File...");
        dialog.close();
    });
}

TEST_F(UiTest, TheFocusShowsOnSwatchAndBarsOnLightAndDarkDesktops) {
    const QPalette before = QApplication::palette();
    for (const Qt::GlobalColor desktop : {Qt::white, Qt::black}) {
        QApplication::setPalette(QPalette(desktop));
        frmTunnelSettings dialog(&window);
        Show(dialog);
        for (const char* const name : {"lblTColor", "hsTrans", "hsDimPercent"}) {
            QWidget& control = Get(dialog, name);
            Get(dialog, "btnCancel").setFocus();
            const QImage without = control.grab().toImage();
            control.setFocus();
            const QImage image = control.grab().toImage();
            EXPECT_NE(image, without) << name;
            std::set<QRgb> colors;
            for (int x = 0; x < image.width(); ++x)
                colors.insert(image.pixel(x, 0));
            EXPECT_EQ(colors, (std::set<QRgb>{0xFF000000, 0xFFFFFFFF})) << name;
        }
    }
    QApplication::setPalette(before);
}
