#include <QFileDialog>
#include <QListView>

#include "UiTest.h"

using namespace boreforge;

TEST_F(UiTest, ACancelledFileDialogHasSplitItsFilterAndLeavesNothingElse) {
    for (const auto show : {ShowOpenFileDialog, ShowSaveFileDialog}) {
        FileDialogArguments arguments{.FileName = "old", .FileTitle = "old", .Filter = "A|*.a:B", .Flags = 8};
        EXPECT_FALSE(show(arguments));
        EXPECT_EQ(arguments.Filter, QString::fromLatin1("A\0*.a\0B\0\0", 9));
        EXPECT_EQ(arguments.FileName + arguments.FileTitle, "");
        EXPECT_EQ(arguments.Flags, 0);
    }
}

TEST_F(UiTest, ATypedNameIsAFolderOrAFileWithTheExtensionOrRefused) {
    const QDir folder(QString::fromStdString(In("")));
    folder.mkdir("sub");
    const QString sub = folder.filePath("sub");
    const struct {
        QString typed, entered, file;  // both empty: refused
    } cases[] = {{"new", "", "new.3ds"},
                 {"new.3DS", "", "new.3DS"},
                 {"v1.2", "", "v1.2.3ds"},
                 {"sub/new", "", "sub/new.3ds"},
                 {sub + "/new", "", sub + "/new.3ds"},
                 {"sub", sub, ""},
                 {"sub/", sub, ""},
                 {".3ds", "", ""},
                 {"sub/.3ds", "", ""},
                 {"absent/", "", ""},
                 {"absent/new", "", ""},
                 {"\"old\" new", "", ""}};
    for (const auto& [typed, entered, file] : cases) {
        const TypedName name = ResolveTypedName(typed, folder, "3ds");
        EXPECT_EQ(QDir::cleanPath(name.folder), QDir::cleanPath(entered)) << typed.toStdString();
        EXPECT_EQ(name.file, file) << typed.toStdString();
        EXPECT_EQ(name.refusal.empty(), !(entered + file).isEmpty()) << typed.toStdString();
    }
}

// In Qt's own dialog over a folder with the file old.3ds, whose row is selected.
TEST_F(UiTest, ASaveDialogTakesTheTypedNameAndAsksBeforeItOverwrites) {
    constexpr int kPatience = 60'000;  // milliseconds, for what takes a moment on an idle machine
    fileDialogCalls = DesktopFileDialogs();
    WriteBytes(In("old.3ds"), {1});
    QStringList asked;
    const auto saveAs = [&](const char* typed) {
        FileDialogArguments arguments{.Filter = "O (*.3ds)|*.3ds",
                                      .InitialFolder = QString::fromStdString(In("")),
                                      .DefaultExtension = "3ds",
                                      .OverwritePrompt = true};
        OnModal<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog, kPatience));
            OnModal<QMessageBox>([&](QMessageBox& box) {
                auto* const yes = box.button(QMessageBox::Yes);
                if (!yes) return;
                asked += box.text().section(' ', 0, 0);
                yes->click();
            });
            auto& name = Get(dialog, "fileNameEdit");
            QTest::keyClicks(&name, typed);
            auto& list = Get<QListView>(dialog, "listView");
            const auto loaded = [&] { return list.model()->rowCount(list.rootIndex()) == 1; };
            EXPECT_TRUE(QTest::qWaitFor(loaded, kPatience));
            list.setCurrentIndex(list.model()->index(0, 0, list.rootIndex()));
            QTest::keyClick(&name, Qt::Key_Return);
            if (dialog.isVisible()) dialog.reject();
        });
        return ShowSaveFileDialog(arguments) ? arguments.FileName.toStdString() : "";
    };
    EXPECT_EQ(saveAs("new"), In("new.3ds"));
    EXPECT_EQ(saveAs(".3ds"), "");
    EXPECT_EQ(user.messages.size(), 1);
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(saveAs("old"), In("old.3ds"));
    EXPECT_EQ(asked, QStringList{"old.3ds"});
}

TEST_F(UiTest, EachToolAsksForItsFileAndACancelChangesNothing) {
    const QString shape = ", ZRBF Tunnel Shapes (*.zrbf)/*.zrbf//, zrbf, elements, , ";
    const struct {
        const char* button;
        QString asked;
    } cases[] = {
        {"btnShapeTools(3)", "Open Tunnel Shape..." + shape + "1004"},
        {"btnShapeTools(4)", "Save Tunnel Shape As..." + shape + "6"},
        {"btnToolBar(0)",
         "Open Track File..., Zephyrail Track Files (*.zrtrack)/*.zrtrack//, zrtrack, tracks, , 1004"}};
    for (const auto& [button, asked] : cases) {
        Click(window, button);
        EXPECT_EQ(user.Asked(), asked);
        EXPECT_EQ(user.asked.Owner, &window);
        EXPECT_EQ(Focus(), button);
    }
}

TEST_F(UiTest, AShapeThatCantBeWrittenIsReported) {
    user.file = In("absent/w.zrbf");
    Click(window, "btnShapeTools(4)");
    ASSERT_EQ(user.messages.size(), 1);
    EXPECT_TRUE(user.messages[0].startsWith("warning, Error!: Error - The Tunnel Shape Can't Be Saved!\n\n"));
}

TEST_F(UiTest, AShapeFileWithAWrongStartLeavesThePictureUntilTheNextRedraw) {
    const auto pixel = [&] { return Get(window, "pbShape").grab().toImage().pixelColor(496, 250).name(); };
    WriteBytes(user.file = In("w.zrbf"), Bytes(104, 'x'));
    Click(window, "btnShapeTools(3)");
    EXPECT_EQ(user.messages, QStringList{"warning, Error!: Error - Invalid Tunnel Shape File!"});
    EXPECT_EQ(pixel(), "#0000ff") << "a line of the box";
    EXPECT_EQ(Focus(), "btnShapeTools(3)");
    Click(window, "chkShowNodes(1)");
    EXPECT_EQ(pixel(), "#202020") << "a line of the grid";
}

TEST_F(UiTest, AFileThatIsNoTrackOpensNoSettings) {
    WriteBytes(user.file = In("w.zrtrack"), Bytes(104, 'x'));
    Click(window, "btnToolBar(0)");
    EXPECT_EQ(user.messages, QStringList{"warning, Error!: Error - Invalid Track File!"});
    EXPECT_EQ(Focus(), "btnToolBar(0)");
}
