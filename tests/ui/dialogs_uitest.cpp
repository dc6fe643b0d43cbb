#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QScrollBar>

#include <tuple>

#include "UiTest.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/frmTunnelSettings.h"
#include "editor/TunnelShape.h"
#include "platform/FileCalls.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

TEST_F(UiTest, FileDialogsGetTheirFlagsAndAConvertedFilter) {
    // A save dialog, the first three arguments, further flags; the flags that arise.
    const int cases[][6] = {
        {0, 1, 1, 1, 0, 0x1005}, {0, 0, 0, 0, 0x68, 0x8}, {1, 1, 0, 0, 0x60, 0x6}, {1, 0, 0, 0, 8, 0xC}};
    for (const auto& [save, first, second, third, extra, flags] : cases)
        for (const char* const answer : {"/new.a", ""}) {
            FileDialogArguments given{"old", "old", save ? "A|*.a" : "A:*.a", 1, "", "", "", nullptr, extra};
            bool readOnly = second != 0;
            file = answer;
            const bool chosen =
                save ? ShowSaveFileDialog(given, first) : ShowOpenFileDialog(given, first, readOnly, third);
            EXPECT_TRUE(chosen == (*answer != 0) && readOnly == (second != 0) && asked.Flags == flags);
            EXPECT_EQ(given.Flags, chosen ? flags : 0);
            EXPECT_EQ(given.Filter, QString::fromLatin1("A\0*.a\0\0", 7));
            EXPECT_EQ(given.FileName + given.FileTitle, chosen ? "/new.aold" : "");
        }
}

TEST_F(UiTest, TheRealSaveDialogAddsTheExtensionAndAsksBeforeOverwriting) {
    fileDialogCalls = ToolkitFileDialogs();
    for (const bool exists : {false, true}) {
        FileDialogArguments given;
        given.Filter = "O (*.3ds)|*.3ds";
        given.InitialFolder = QString::fromStdString(In(""));
        given.DefaultExtension = "3ds";
        QString question;
        OnModal<QFileDialog>([&](QFileDialog& dialog) {
            OnModal<QMessageBox>([&](QMessageBox& box) {
                question = box.text();
                QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
            });
            QTest::keyClicks(&Get(dialog, "fileNameEdit"), "tube");
            QTest::keyClick(&Get(dialog, "fileNameEdit"), Qt::Key_Return);
        });
        EXPECT_TRUE(ShowSaveFileDialog(given, true) && given.FilterIndex == 1);
        EXPECT_EQ(given.FileName.toStdString() + given.FileTitle.toStdString(), In("tube.3dstube.3ds"));
        EXPECT_EQ(question.contains("tube.3ds already exists"), exists);
        WriteBytes(In("tube.3ds"), {1});
    }
}

TEST_F(UiTest, CustomColorsAreFilledOnceAndOutliveTheDialog) {
    PackedColor chosen = 0x102030;
    EXPECT_FALSE(ShowColorDialog(chosen, true, true, false, nullptr));
    EXPECT_TRUE(chosen == -1 && askedColor.Color == 0x102030 && askedColor.Flags == 0x103);
    for (int i = 0; CustomColors[3] != 0x0A0B0C && i < 16; ++i)
        EXPECT_EQ(CustomColors.at(static_cast<std::size_t>(i)), SystemColor(i)) << i;
    CustomColors[3] = 0x0A0B0C;
    ChooseColor = ToolkitColorDialog;
    OnModal<QColorDialog>([](auto& dialog) { dialog.setCurrentColor(0x010203u), dialog.accept(); });
    EXPECT_TRUE(ShowColorDialog(chosen, false, false, true, nullptr));
    EXPECT_TRUE(chosen == 0x030201 && CustomColors[3] == 0x0A0B0C);
}

TEST_F(UiTest, EachToolAsksForItsFileAndACancelChangesNothing) {
    const QString shape = ", ZRBF Tunnel Shapes (*.zrbf)/*.zrbf//, zrbf, elements, , ";
    const std::pair<const char*, QString> cases[] = {
        {"btnShapeTools(3)", "Open Tunnel Shape..." + shape + "1004"},
        {"btnShapeTools(4)", "Save Tunnel Shape As..." + shape + "6"},
        {"btnToolBar(0)",
         "Open Track File..., Zephyrail Track Files (*.zrtrack)/*.zrtrack//, zrtrack, tracks, , 1004"}};
    for (const auto& [button, expected] : cases) {
        Click(window, button);
        EXPECT_EQ(Asked(), expected);
        EXPECT_TRUE(asked.Owner == &window && Focus() == button);
    }
}

TEST_F(UiTest, ShapeFilesThatFailAreToldAndThePictureStaysUntilTheNextRedraw) {
    const auto pixel = [&] { return Get(window, "pbShape").grab().toImage().pixelColor(496, 250).name(); };
    WriteBytes(file = In("w.zrbf"), Bytes(104, 'x'));
    fileCalls.write = [](int, const void*, std::size_t) -> std::int64_t { return -1; };
    Click(window, "btnShapeTools(4)");
    ASSERT_EQ(Shown().size(), 1u);
    EXPECT_TRUE(Shown()[0].starts_with("(!) Error!\n") && Shown()[0].find(In("w.zrbf")) != std::string::npos);
    EXPECT_EQ(ReadBytes(In("w.zrbf")), Bytes(104, 'x'));
    EXPECT_EQ(Listing(), std::vector<std::string>{"w.zrbf"});
    file = In("w.zrbf");
    SetMessageHook(ShowMessageBox);
    OnModal<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle() + box.text(), "Error!Error - Invalid Tunnel Shape File!");
        EXPECT_TRUE(box.icon() == QMessageBox::Warning && box.standardButtons() == QMessageBox::Ok);
        box.accept();
    });
    Click(window, "btnShapeTools(3)");
    EXPECT_EQ(TunnelShape.NodeCount(), 0);
    EXPECT_EQ(pixel() + Focus(), "#0000ffbtnShapeTools(3)");
    Click(window, "chkShowNodes(1)");
    EXPECT_EQ(pixel() + Focus(), "#202020pbShape");
}

struct ExportTest : UiTest {
    ExportTest() {
        const std::vector<TrackBezierNode> nodes = WindingCircuit();
        MakeTrack({nodes.begin(), nodes.begin() + 4}, ".T..");
        WriteTrackFile(In("t.zrtrack"));
        track = ReadBytes(In("t.zrtrack"));
    }
    // Opens the track and hands the settings dialog over, which must close then.
    void OpenTrackAnd(std::function<void(frmTunnelSettings&)> act) {
        file = In("t.zrtrack");
        OnModal<frmTunnelSettings>([&](frmTunnelSettings& dialog) {
            act(dialog);
            EXPECT_FALSE(dialog.isVisible());
            act = nullptr;
        });
        Click(window, "btnToolBar(0)");
        EXPECT_FALSE(act);
        EXPECT_EQ(Focus(), "pbShape");
    }
    Bytes track;
};

TEST_F(ExportTest, OneExportFromTheToolToBothFilesAfterOneThatFailed) {
    const auto makeAs = [&](const std::string& path) {
        OpenTrackAnd([&](frmTunnelSettings& dialog) {
            file = path;
            Click(dialog, "btnStart");
            EXPECT_EQ(asked.Owner, &dialog);
        });
    };
    makeAs(In("none/tube.3ds"));
    EXPECT_TRUE(Shown().size() == 1 && ReadBytes(In("t.zrtrack")) == track);
    makeAs(In("tube.3ds"));
    EXPECT_EQ(Asked(), "Save Tunnel as 3DS Object..., 3DStudioMax Files (*.3ds)/*.3ds//, 3ds, objects, , 6");
    const Bytes object = ReadBytes(In("tube.3ds"));
    ASSERT_TRUE(object.size() > 1000 && object[0] == 0x4D && object[1] == 0x4D);
    EXPECT_EQ(object.size(), object[2] + 256u * object[3] + 65536u * object[4]);
    ASSERT_TRUE(ReadTrackFile(In("t.zrtrack")) && TrackFile.SegmentCount() == 4);
    EXPECT_TRUE(TrackFile.Segments[1].UseOwnColors && !TrackFile.Segments[1].IsTunnel);
    EXPECT_EQ(TrackFile.SceneryObjects.at(0).ObjectFile, "tube.3ds");
    Click(window, "btnToolBar(0)");
    EXPECT_EQ(asked.FileName.toStdString(), In("t.zrtrack")) << "the last track is offered again";
}

TEST_F(ExportTest, EachOpeningStartsAfreshAndNothingReachesTheDiskWithoutMake) {
    const auto all = [](const TunnelChoices& c) {
        return std::tuple(c.Color, c.Transparency, c.DetailItem, c.DimPercent, c.DoubleSided, c.RemoveTunnels,
                          c.DimColors, c.PlaceObject);
    };
    for (const std::string check : {"chkDoubleSided", "chkRemTunnels", "chkDimColors", "chkPlaceIt"})
        OpenTrackAnd([&](frmTunnelSettings& dialog) {
            EXPECT_EQ(all(dialog.Choices()), std::tuple(0xC0C0C0, 0, 2, 50, false, true, true, true));
            Get<QScrollBar>(dialog, "hsTrans").setValue(40);
            Get<QScrollBar>(dialog, "hsDimPercent").setValue(10);
            Get<QComboBox>(dialog, "cmbDetail").setCurrentIndex(4);
            Get<QCheckBox>(dialog, check.c_str()).click();
            color = 0x123456;
            for (int i = 0; i < 2; ++i)  // the second time it is cancelled
                Click(dialog, "lblTColor");
            EXPECT_TRUE(askedColor.Color == 0x123456 && askedColor.Flags == 0x103);
            EXPECT_EQ(Get(dialog, "lblTColor").palette().color(QPalette::Window), QColor(0x56, 0x34, 0x12));
            for (const char* const focus : {"btnStart", "btnCancel", "hsTrans"}) {
                Get(dialog, focus).setFocus();
                for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
                    QTest::keyClick(dialog.windowHandle(), key);
            }
            EXPECT_EQ(asked.DialogTitle, "Open Track File...");
            Click(dialog, "btnStart");  // its save dialog is cancelled
            EXPECT_TRUE(dialog.isVisible() && asked.DialogTitle == "Save Tunnel as 3DS Object...");
            EXPECT_EQ(all(dialog.Choices()),
                      std::tuple(0x123456, 40, 4, 10, check == "chkDoubleSided", check != "chkRemTunnels",
                                 check != "chkDimColors", check != "chkPlaceIt"));
            check == "chkPlaceIt" ? void(dialog.close()) : Click(dialog, "btnCancel");
        });
    EXPECT_EQ(ReadBytes(In("t.zrtrack")), track);
    EXPECT_EQ(Listing(), std::vector<std::string>{"t.zrtrack"});
}
