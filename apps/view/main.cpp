// boreforge-view: shows a finished object in a window, or saves a picture of it.
#include <QApplication>
#include <QScreen>
#include <QSurfaceFormat>

#include <optional>
#include <string>
#include <tuple>

#include "base/Text.h"
#include "dialogs/Desktop.h"
#include "dialogs/StartMessages.h"
#include "editor/window/Icons.h"
#include "platform/Paths.h"
#include "shared/CommandLine.h"
#include "version.h"
#include "view/PictureFile.h"
#include "view/ViewWindow.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-view";

struct Options {
    std::string object, track, picture;
    ViewFrom from = ViewFrom::Side;
    QSize size{1280, 720};
};

std::optional<QSize> ParseSize(const std::string& text) {
    constexpr int kMinSide = 16, kMaxSide = 8192;
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) return std::nullopt;
    const auto width = ParseNumber(text.substr(0, cross), kMinSide, kMaxSide);
    const auto height = ParseNumber(text.substr(cross + 1), kMinSide, kMaxSide);
    return width && height ? std::optional(QSize(*width, *height)) : std::nullopt;
}

std::optional<ViewFrom> ParseView(const std::string& text) {
    if (text == "above") return ViewFrom::Above;
    if (text == "side") return ViewFrom::Side;
    return text == "inside" ? std::optional(ViewFrom::Inside) : std::nullopt;
}

void AddOptions(CLI::App& application, Options& options) {
    application.description("Shows a finished object, or saves a picture of it.");
    application.footer(
        "The picture from the side shows the lowest portal of the object and the way into it; without a "
        "track,\n"
        "the whole object. The one from inside looks along the track through the longest tunnel.\n"
        "\n"
        "Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.\n"
        "After 1 or 2, an existing FILE.png is unchanged.");
    CLI::Option* const object = AddPath(application, "OBJECT", options.object, "FILE.3ds",
                                        "The object; without it, a dialog asks for one");
    AddPath(application, "--track", options.track, "FILE.zrtrack", "Also show this track, and ride along it");
    CLI::Option* const save =
        AddPath(application, "--save", options.picture, "FILE.png", "Save a picture, and open no window")
            ->check(EndsIn(".png"))
            ->needs(object);
    AddParsed(application, "--from", options.from, ParseView, "above|side|inside",
              "Viewpoint (default: side); inside needs --track")
        ->needs(save);
    AddParsed(application, "--size", options.size, ParseSize, "WIDTHxHEIGHT",
              "Pixels, 16 to 8192 each (default: 1280x720)")
        ->needs(save);
}

Outcome CheckPicturePath(const Options& options) {
    for (const std::string& input : {options.object, options.track})
        if (!input.empty() && SameFile(options.picture, input))
            return Failure{.headline = "Error - The Picture Would Replace " + ToOneLine(input) + "!"};
    return {};
}

// Opens both, so that the window has the track when the object appears later. Returns the first failure.
Outcome OpenFiles(const Options& options, ViewScene& scene) {
    const Outcome object = options.object.empty() ? Outcome() : scene.OpenObject(options.object);
    Outcome track = options.track.empty() ? Outcome() : scene.OpenTrackFile(options.track);
    return object.Then([&] { return track; });
}

Outcome MakePicture(const Options& options) {
    if (Outcome checked = CheckPicturePath(options); !checked) return checked;
    ViewScene scene;
    scene.camera.Resize(options.size.width(), options.size.height(), scene.Object());
    const Outcome ready = OpenFiles(options, scene).Then([&] {
        return scene.camera.LookFrom(options.from, scene.Object(), scene.Track());
    });
    if (!ready) return ready.With({.headline = "Error - There Is Nothing to Draw!", .path = options.object});
    scene.ShowCamera();
    return SavePicture(options.picture, DrawPicture(scene, options.size));
}

int ShowWindow(const Options& options) {
    ViewScene scene;
    std::ignore = OpenFiles(options, scene);  // the window shows what failed
    ViewWindow window(scene);
    window.resize(options.size.boundedTo(window.screen()->availableSize() * 0.9));
    window.show();
    if (options.object.empty()) window.AskForFile();
    return QApplication::exec();
}

int Run(const Options& options, char* program) {
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
    if (options.picture.empty()) return ShowWindow(options);
    const Outcome made = MakePicture(options);
    if (!made) PrintFailure(kProgram, made.Why());
    return made ? kDone : kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    Options options;
    CLI::App application("", kProgram);
    AddOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return Run(options, arguments[0]); });
}
