#include <QFileDialog>
#include <QListView>
#include <QPushButton>

#include <tuple>

#include "UiTest.h"
#include "dialogs/MessageBoxes.h"
#include "editor/TunnelShape.h"
#include "platform/FileCalls.h"

using namespace boreforge;

// What is read if only this is reported.
static std::vector<Message> Error(const char* text) { return {{QMessageBox::Warning, "Error!", text}}; }

static constexpr int kPatience = 60'000;  // milliseconds, for what takes a moment on an idle machine

TEST_F(UiTest, AFilterIsSplitAtBarsAndColons) {
    for (const char* const filter : {"A|*.a", "A:*.a"}) {
        FileDialogArguments arguments{.Filter = filter};
        std::ignore = ShowOpenFileDialog(arguments);
        EXPECT_EQ(arguments.Filter, QString::fromLatin1("A\0*.a\0\0", 7));
    }
}

TEST_F(UiTest, ACancelledFileDialogLeavesNeitherNameNorFlags) {
    for (const auto show : {ShowOpenFileDialog, ShowSaveFileDialog}) {
        FileDialogArguments arguments{.FileName = "old", .FileTitle = "old", .Flags = 8};
        EXPECT_FALSE(show(arguments));
        EXPECT_EQ(arguments.FileName, "");
        EXPECT_EQ(arguments.FileTitle, "");
        EXPECT_EQ(arguments.Flags, 0);
    }
}

// Qt's dialogs over the test's folder.
struct FileDialogTest : UiTest {
    FileDialogTest() { fileDialogCalls = QtFileDialogs(); }

    // What a save dialog returns after `act`, which must close it; empty if it was cancelled.
    std::string SaveAfter(std::function<void(QFileDialog&)> act) {
        FileDialogArguments arguments{.Filter = "O (*.3ds)|*.3ds",
                                      .InitialFolder = QString::fromStdString(In("")),
                                      .DefaultExtension = "3ds",
                                      .OverwritePrompt = true};
        OnModal<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog, kPatience));
            act(dialog);
        });
        return ShowSaveFileDialog(arguments) ? arguments.FileName.toStdString() : "";
    }
    static void Type(const QFileDialog& dialog, const char* name) {
        QTest::keyClicks(&Get(dialog, "fileNameEdit"), name);
    }
    static void PressReturn(const QFileDialog& dialog) {
        QTest::keyClick(&Get(dialog, "fileNameEdit"), Qt::Key_Return);
    }
    // Waits until the list has its one file and selects that.
    static void SelectTheFile(const QFileDialog& dialog) {
        auto& list = Get<QListView>(dialog, "listView");
        const auto loaded = [&] { return list.model()->rowCount(list.rootIndex()) == 1; };
        ASSERT_TRUE(QTest::qWaitFor(loaded, kPatience));
        list.setCurrentIndex(list.model()->index(0, 0, list.rootIndex()));
    }
};

TEST_F(FileDialogTest, ASaveDialogAsksBeforeItOverwrites) {
    WriteBytes(In("tube.3ds"), {1});
    QString question;
    const std::string chosen = SaveAfter([&](QFileDialog& dialog) {
        OnModal<QMessageBox>([&](QMessageBox& box) {
            question = box.text();
            QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
        });
        Type(dialog, "tube");
        PressReturn(dialog);
    });
    EXPECT_EQ(chosen, In("tube.3ds"));
    EXPECT_TRUE(question.contains("tube.3ds already exists"));
}

TEST_F(UiTest, EachToolAsksForItsFileAndACancelChangesNothing) {
    const QString shape = ", ZRBF Tunnel Shapes (*.zrbf)/*.zrbf//, zrbf, elements, , ";
    struct Case {
        const char* button;
        QString asked;
    };
    const Case cases[] = {
        {"btnShapeTools(3)", "Open Tunnel Shape..." + shape + "1004"},
        {"btnShapeTools(4)", "Save Tunnel Shape As..." + shape + "6"},
        {"btnToolBar(0)",
         "Open Track File..., Zephyrail Track Files (*.zrtrack)/*.zrtrack//, zrtrack, tracks, , 1004"}};
    for (const Case& each : cases) {
        Click(window, each.button);
        EXPECT_EQ(Asked(), each.asked);
        EXPECT_EQ(asked.Owner, &window);
        EXPECT_EQ(Focus(), each.button);
    }
}

TEST_F(UiTest, AShapeThatCantBeWrittenIsReportedAndTheOldFileStays) {
    WriteBytes(file = In("w.zrbf"), Bytes(104, 'x'));
    fileCalls.write = [](int, const void*, std::size_t) -> std::int64_t { return -1; };
    Click(window, "btnShapeTools(4)");
    ASSERT_EQ(messages.read.size(), 1u);
    EXPECT_EQ(messages.read[0].title, "Error!");
    EXPECT_TRUE(messages.read[0].text.startsWith("Error - The Tunnel Shape Can't Be Saved!\n\n"));
    EXPECT_EQ(Listing(), std::vector<std::string>{"w.zrbf"});
    EXPECT_EQ(ReadBytes(In("w.zrbf")), Bytes(104, 'x'));
}

TEST_F(UiTest, AShapeFileWithAWrongStartLeavesThePictureUntilTheNextRedraw) {
    const auto pixel = [&] { return Get(window, "pbShape").grab().toImage().pixelColor(496, 250).name(); };
    WriteBytes(file = In("w.zrbf"), Bytes(104, 'x'));
    Click(window, "btnShapeTools(3)");
    EXPECT_EQ(messages.read, Error("Error - Invalid Tunnel Shape File!"));
    EXPECT_EQ(pixel(), "#0000ff") << "a line of the box";
    EXPECT_EQ(Focus(), "btnShapeTools(3)");
    Click(window, "chkShowNodes(1)");
    EXPECT_EQ(pixel(), "#202020") << "a line of the grid";
}

TEST_F(UiTest, AFileThatIsNoTrackOpensNoSettings) {
    WriteBytes(file = In("w.zrtrack"), Bytes(104, 'x'));
    Click(window, "btnToolBar(0)");
    EXPECT_EQ(messages.read, Error("Error - Invalid Track File!"));
    EXPECT_EQ(Focus(), "btnToolBar(0)");
}

TEST_F(UiTest, AnActionThatRunsOutOfMemoryIsReported) {
    Guarded([] { throw std::bad_alloc(); });
    EXPECT_EQ(messages.read, Error("Error - Not Enough Memory!"));
}

TEST_F(FileDialogTest, ATypedNameWinsOverARowThatIsStillSelected) {
    WriteBytes(In("old.3ds"), {1});
    const std::string chosen = SaveAfter([&](QFileDialog& dialog) {
        OnModal<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
        Type(dialog, "new");
        SelectTheFile(dialog);
        PressReturn(dialog);
    });
    EXPECT_EQ(chosen, In("new.3ds"));
}
