// boreforge-view: shows a finished object in a window, or saves a picture of it.
#include <QApplication>
#include <QScreen>
#include <QSurfaceFormat>

#include <tuple>

#include "base/Text.h"
#include "dialogs/StartMessages.h"
#include "platform/Paths.h"
#include "platform/Signals.h"
#include "version.h"
#include "view/Options.h"
#include "view/PictureFile.h"
#include "view/ViewWindow.h"

using namespace boreforge;

namespace {

Outcome CheckPicturePath(const ViewOptions& options) {
    for (const std::string& input : {options.Object, options.Track})
        if (!input.empty() && SameFile(options.Picture, input))
            return Failure{.headline = "Error - The Picture Would Replace " + OneLine(input) + "!"};
    return {};
}

// Opens both, so that the window has the track when the object appears later. Returns the first failure.
Outcome OpenFiles(const ViewOptions& options, ViewScene& scene) {
    const Outcome object = options.Object.empty() ? Outcome() : scene.OpenObject(options.Object);
    const Outcome track = options.Track.empty() ? Outcome() : scene.OpenTrackFile(options.Track);
    return object.Then([&] { return track; });
}

int MakePicture(const ViewOptions& options) {
    const Failure nothingToDraw = {.headline = "Error - There Is Nothing to Draw!"};
    ViewScene scene;
    scene.SetSize(options.Width, options.Height);
    const Outcome made =
        CheckPicturePath(options)
            .Then([&] { return OpenFiles(options, scene).With(nothingToDraw); })
            .Then([&] { return scene.LookFrom(options.From).With(nothingToDraw); })
            .Then([&] { return SavePicture(options.Picture, scene, options.Width, options.Height); });
    return made ? kDone : Fail(made.Why());
}

int ShowWindow(const ViewOptions& options) {
    ViewScene scene;
    std::ignore = OpenFiles(options, scene);  // the window shows what failed
    ViewWindow window(scene);
    window.resize(QSize(options.Width, options.Height).boundedTo(window.screen()->availableSize() * 0.9));
    window.show();
    if (options.Object.empty()) window.AskForFile();
    return QApplication::exec();
}

int Run(const ViewOptions& options, char* program) {
    if (!options.Picture.empty() && options.Object.empty()) {
        PrintError("Error - There Is Nothing to Draw!\n\n--save needs an object.");
        return kWrongUsage;
    }
    RemoveUnfinishedOnSignals();
    // OpenGL on every system, so that a saved picture and the window are drawn alike.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QSurfaceFormat format;
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    QSurfaceFormat::setDefaultFormat(format);
    int count = 1;
    char* arguments[] = {program, nullptr};
    ExplainMissingDisplay("boreforge-view", "without one, run it with: xvfb-run -a boreforge-view ...");
    QApplication application(count, arguments);
    qInstallMessageHandler(nullptr);
    QApplication::setApplicationName("boreforge-view");
    QApplication::setDesktopFileName("org.zephyrail.boreforge.view");
    QApplication::setApplicationVersion(kVersion);
    return options.Picture.empty() ? ShowWindow(options) : MakePicture(options);
}

}  // namespace

int main(int count, char** arguments) {
    ViewOptions options;
    CLI::App application("", "boreforge-view");
    AddViewOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return Run(options, arguments[0]); });
}
