// boreforge-view: shows a finished object in a window, or saves a picture of it.
#include <QApplication>
#include <QScreen>
#include <QSurfaceFormat>

#include <tuple>

#include "base/Text.h"
#include "dialogs/Desktop.h"
#include "dialogs/StartMessages.h"
#include "editor/window/Icons.h"
#include "platform/Paths.h"
#include "version.h"
#include "view/Options.h"
#include "view/PictureFile.h"
#include "view/ViewWindow.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-view";

Outcome CheckPicturePath(const ViewOptions& options) {
    for (const std::string& input : {options.object, options.track})
        if (!input.empty() && SameFile(options.picture, input))
            return Failure{.headline = "Error - The Picture Would Replace " + OneLine(input) + "!"};
    return {};
}

// Opens both, so that the window has the track when the object appears later. Returns the first failure.
Outcome OpenFiles(const ViewOptions& options, ViewScene& scene) {
    const Outcome object = options.object.empty() ? Outcome() : scene.OpenObject(options.object);
    const Outcome track = options.track.empty() ? Outcome() : scene.OpenTrackFile(options.track);
    return object.Then([&] { return track; });
}

int MakePicture(const ViewOptions& options) {
    const Failure nothingToDraw = {.headline = "Error - There Is Nothing to Draw!"};
    ViewScene scene;
    scene.camera.Resize(options.width, options.height, scene.Object());
    const Outcome made =
        CheckPicturePath(options)
            .Then([&] { return OpenFiles(options, scene).With(nothingToDraw); })
            .Then([&] {
                return scene.camera.LookFrom(options.from, scene.Object(), scene.Track())
                    .With({.path = options.object})
                    .With(nothingToDraw);
            })
            .Then([&] {
                scene.ShowCamera();
                return SavePicture(options.picture, DrawPicture(scene, options.width, options.height));
            });
    return made ? kDone : Fail(kProgram, made);
}

int ShowWindow(const ViewOptions& options) {
    ViewScene scene;
    std::ignore = OpenFiles(options, scene);  // the window shows what failed
    ViewWindow window(scene);
    window.resize(QSize(options.width, options.height).boundedTo(window.screen()->availableSize() * 0.9));
    window.show();
    if (options.object.empty()) window.AskForFile();
    return QApplication::exec();
}

int Run(const ViewOptions& options, char* program) {
    if (!options.picture.empty() && options.object.empty()) {
        std::ignore = Fail(kProgram, Failure{.reason = "--save needs an object."});
        return kWrongUsage;
    }
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
    PrepareDesktop();
    ExplainMissingDisplay(kProgram, "without one, run it with: xvfb-run -a boreforge-view ...");
    QApplication application(count, arguments);
    qInstallMessageHandler(nullptr);
    QApplication::setApplicationName(kProgram);
    QApplication::setWindowIcon(IconOf("boreforge"));
    QApplication::setDesktopFileName("org.zephyrail.boreforge.view");
    QApplication::setApplicationVersion(kVersion);
    return options.picture.empty() ? ShowWindow(options) : MakePicture(options);
}

}  // namespace

int main(int count, char** arguments) {
    ViewOptions options;
    CLI::App application("", kProgram);
    AddViewOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return Run(options, arguments[0]); });
}
