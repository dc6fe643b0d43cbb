// The desktop program. It takes no files from the command line and keeps nothing between runs.
#include <QApplication>

#include <cstdio>
#include <string_view>

#include "dialogs/Desktop.h"
#include "dialogs/StartMessages.h"
#include "editor/window/frmMain.h"
#include "platform/Process.h"
#include "platform/Signals.h"
#include "version.h"

namespace {

constexpr char kUsage[] =
    "Usage: boreforge\n\nOpens the window, which needs a display. Without one, use boreforge-batch.\n";

}  // namespace

int main(int count, char** arguments) {
    const boreforge::ProcessSetup setup;
    const std::string_view argument = count > 1 ? arguments[1] : "";
    if (argument == "--help" || argument == "--version") {
        if (argument == "--help")
            std::fputs(kUsage, stdout);
        else
            std::printf("boreforge %s\n", boreforge::kVersion);
        return std::fflush(stdout) == 0 ? 0 : 1;
    }

    boreforge::RemoveUnfinishedOnSignals();
    boreforge::PrepareDesktop();
    boreforge::ExplainMissingDisplay("boreforge", "without one, use boreforge-batch");
    QApplication application(count, arguments);  // removes Qt's own options from the arguments
    qInstallMessageHandler(nullptr);             // ends ExplainMissingDisplay
    if (count > 1) std::fputs("boreforge: arguments are ignored; files are opened in the window\n", stderr);
    QApplication::setApplicationName("boreforge");
    QApplication::setApplicationDisplayName("");
    QApplication::setDesktopFileName("org.zephyrail.boreforge");
    QApplication::setApplicationVersion(boreforge::kVersion);
    boreforge::frmMain window;
    window.show();
    return QApplication::exec();
}
