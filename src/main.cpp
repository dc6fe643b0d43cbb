// The desktop program. It takes no files from the command line and keeps nothing between runs.
#include <QApplication>
#include <QSettings>

#include <csignal>
#include <cstdio>
#include <string_view>

#include "dialogs/MessageBoxes.h"
#include "editor/frmMain.h"
#include "platform/Signals.h"
#include "version.h"

namespace {

constexpr char kUsage[] =
    "Usage: boreforge\n\nOpens the window, which needs a display. Without one, use boreforge-batch.\n";

}  // namespace

int main(int count, char** arguments) {
    const std::string_view argument = count > 1 ? arguments[1] : "";
    if (argument == "--help" || argument == "--version") {
        argument == "--help" ? std::fputs(kUsage, stdout)
                             : std::printf("boreforge %s\n", boreforge::kVersion);
        return 0;
    }

    // Qt's file and colour dialogs keep settings of their own in the user's home. A path below a
    // device can hold none, so that they find nothing and leave nothing.
    for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, "/dev/null/none");

    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is a failed write, not the end
    boreforge::RemoveUnfinishedOnSignals();
    QApplication application(count, arguments);
    QApplication::setApplicationName("boreforge");
    QApplication::setApplicationDisplayName("");
    QApplication::setDesktopFileName("boreforge");
    QApplication::setApplicationVersion(boreforge::kVersion);
    boreforge::SetMessageHook(boreforge::ShowMessageBox);
    boreforge::frmMain window;
    window.show();
    return QApplication::exec();
}
