#include "UiTest.h"

#include <QDir>
#include <QSettings>

#include <utility>

#include "editor/ShapeView.h"

namespace boreforge {

void Show(QWidget& window) {
    window.show();
    window.activateWindow();
    while (!window.isActiveWindow())
        QApplication::processEvents();
}

UiTest::UiTest() {
    file.clear();
    color = -1;
    ShapeView = {};
    const auto answer = [](FileDialogArguments& record) {
        asked = record;
        record.FileName = QString::fromStdString(std::exchange(file, ""));
        return record.FileName.isEmpty() ? 0 : 1;
    };
    fileDialogCalls = {answer, answer};
    ChooseColor = [](ColorDialogRecord& record) {
        askedColor = record;
        record.Color = std::exchange(color, -1);
        return record.Color == -1 ? 0 : 1;
    };
    Show(window);
}

QString UiTest::Asked() {
    const QStringList fields = {asked.DialogTitle, asked.Filter, asked.DefaultExtension,
                                QDir(asked.InitialFolder).dirName(), asked.FileName};
    return fields.join(", ").replace(QChar(0), '/') + ", " + QString::number(asked.Flags, 16);
}

}  // namespace boreforge

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // The toolkit's dialogs find and leave nothing in the home of who runs the tests.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null/none");
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
