#include <QColorDialog>
#include <QScreen>

#include <set>
#include <tuple>
#include <vector>

#include "UiTest.h"
#include "dialogs/Desktop.h"
#include "dialogs/frmTunnelSettings.h"
#include "dialogs/mColorDialog.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

TEST_F(UiTest, KeysMoveBothPercentageBars) {
    const struct {
        Qt::Key key;
        int value;  // from 50
    } cases[] = {{Qt::Key_Left, 49}, {Qt::Key_Right, 51},  {Qt::Key_Up, 49},
                 {Qt::Key_Down, 51}, {Qt::Key_PageUp, 45}, {Qt::Key_End, 100}};
    frmTunnelSettings dialog(&window);
    Show(dialog);
    for (const auto& [name, label] : {std::pair{"hsTrans", "lblTrans"}, {"hsDimPercent", "lblDimPercent"}})
        for (const auto& [key, value] : cases) {
            auto& bar = Get<QScrollBar>(dialog, name);
            bar.setValue(50);
            QTest::keyClick(&bar, key);
            EXPECT_EQ(bar.value(), value) << name << ' ' << key;
            EXPECT_EQ(Get<QLabel>(dialog, label).text(), QString::number(value) + "%");
        }
}

TEST_F(UiTest, TheSwatchAsksForAnyColor) {
    static std::int32_t flags;
    ChooseColor = [](ColorDialogArguments& record) {
        flags = record.Flags;
        return DesktopColorDialog(record);
    };
    frmTunnelSettings settings(&window);
    Show(settings);
    QWidget& swatch = Get(settings, "lblTColor");
    OnModal<QColorDialog>([&](QColorDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &settings);
        EXPECT_EQ(dialog.currentColor(), QColor(192, 192, 192));
        dialog.setCurrentColor(QColor(0x56, 0x34, 0x12));
        dialog.accept();
    });
    QTest::mouseClick(&swatch, Qt::LeftButton);
    EXPECT_EQ(flags, kStartFromColor | kAnyColor | kFullOpen);
    OnModal<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
    QTest::keyClick(&swatch, Qt::Key_Space);
    EXPECT_EQ(settings.Choices().color, 0x123456) << "the dialog was cancelled";
    EXPECT_EQ(swatch.accessibleDescription(), "#563412");
    EXPECT_EQ(swatch.grab().toImage().pixelColor(20, 20), QColor(0x56, 0x34, 0x12));
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

static auto Fields(const TunnelChoices& c) {
    return std::make_tuple(c.color, c.transparency, c.detailItem, c.doubleSided, c.removeTunnels, c.dimColors,
                           c.dimPercent, c.placeObject);
}

// Sets a control to something else than its default.
static void Change(QWidget& control) {
    if (auto* const bar = dynamic_cast<QScrollBar*>(&control)) bar->setValue(10);
    if (auto* const list = dynamic_cast<QComboBox*>(&control)) list->setCurrentIndex(4);
    if (auto* const check = dynamic_cast<QCheckBox*>(&control)) check->click();
}

TEST_F(UiTest, EachControlChangesItsChoice) {
    const struct {
        const char* control;
        TunnelChoices choices;
    } cases[] = {{"hsTrans", {.transparency = 10}},
                 {"hsDimPercent", {.dimPercent = 10}},
                 {"cmbDetail", {.detailItem = 4}},
                 {"chkDoubleSided", {.doubleSided = true}},
                 {"chkRemTunnels", {.removeTunnels = false}},
                 {"chkDimColors", {.dimColors = false}},
                 {"chkPlaceIt", {.placeObject = false}}};
    for (const auto& [control, choices] : cases) {
        frmTunnelSettings dialog(&window);
        EXPECT_EQ(Fields(dialog.Choices()), Fields(TunnelChoices())) << "the defaults, each time";
        Change(Get(dialog, control));
        EXPECT_EQ(Fields(dialog.Choices()), Fields(choices)) << control;
    }
}

struct ExportTest : UiTest {
    ExportTest() {
        MakeTrack(WindingCircuit(), ".T....");
        EXPECT_TRUE(WriteTrackFile(In("t.zrtrack")));
    }
    // Opens the track and runs `act` on the settings dialog, which must close it.
    void OpenTrackAnd(std::function<void(frmTunnelSettings&)> act) {
        bool acted = false;
        OnModal<frmTunnelSettings>([&](frmTunnelSettings& dialog) {
            act(dialog);
            EXPECT_FALSE(dialog.isVisible());
            acted = true;
        });
        user.file = In("t.zrtrack");
        Click(window, "btnToolBar(0)");
        EXPECT_TRUE(acted);
    }
    void MakeAs(const std::string& path) {
        OpenTrackAnd([&](frmTunnelSettings& dialog) {
            user.file = path;
            Click(dialog, "btnStart");
        });
    }
};

TEST_F(ExportTest, MakeAsksForTheObjectsFile) {
    OpenTrackAnd([&](frmTunnelSettings& dialog) {
        Click(dialog, "btnStart");
        EXPECT_EQ(user.Asked(),
                  "Save Tunnel as 3DS Object..., 3DStudioMax Files (*.3ds)/*.3ds//, 3ds, objects, , 6");
        EXPECT_EQ(user.asked.Owner, &dialog);
        EXPECT_TRUE(dialog.isVisible()) << "its save dialog was cancelled";
        Click(dialog, "btnCancel");
    });
    EXPECT_EQ(Listing(), std::vector<std::string>{"t.zrtrack"});
}

TEST_F(ExportTest, AFailureIsAWarningAndATrackWithoutATunnelANotice) {
    MakeAs(In("none/tube.3ds"));
    MakeTrack(WindingCircuit());
    ASSERT_TRUE(WriteTrackFile(In("t.zrtrack")));
    MakeAs(In("tube.3ds"));
    ASSERT_EQ(user.messages.size(), 2);
    EXPECT_TRUE(user.messages[0].startsWith("warning, Error!: Error - The 3DS Object Can't Be Written!"));
    EXPECT_EQ(user.messages[1], "information, Notice!: Track does not have any tunnels!");
}

TEST_F(ExportTest, AfterTheSettingsTheCanvasHasTheFocusAndTheTrackIsOfferedAgain) {
    OpenTrackAnd([](frmTunnelSettings& dialog) { Click(dialog, "btnCancel"); });
    EXPECT_EQ(Focus(), "pbShape");
    Click(window, "btnToolBar(0)");
    EXPECT_EQ(user.asked.FileName.toStdString(), In("t.zrtrack"));
}

TEST_F(UiTest, ReturnAndEscapeDoNothingInTheSettings) {
    frmTunnelSettings dialog(&window);
    Show(dialog);
    for (const char* const focus : {"btnStart", "btnCancel", "hsTrans", "lblTColor"})
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            Get(dialog, focus).setFocus();
            QTest::keyClick(dialog.windowHandle(), key);
            EXPECT_TRUE(dialog.isVisible()) << focus;
        }
    EXPECT_EQ(user.asked.DialogTitle, "");
}

TEST_F(UiTest, TheFocusShowsAsBlackAndWhiteDashesOnSwatchAndBars) {
    frmTunnelSettings dialog(&window);
    Show(dialog);
    for (const char* const name : {"lblTColor", "hsTrans", "hsDimPercent"}) {
        Get(dialog, name).setFocus();
        const QImage image = Get(dialog, name).grab().toImage();
        std::set<QRgb> colors;
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, 0));
        EXPECT_EQ(colors, (std::set<QRgb>{0xFF000000, 0xFFFFFFFF})) << name;
    }
}
