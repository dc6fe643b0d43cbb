#include "view/Options.h"

#include <optional>
#include <utility>

namespace boreforge {

namespace {

constexpr int kMinSide = 16, kMaxSide = 8192;

using Size = std::pair<int, int>;

std::optional<Size> ParseSize(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) return std::nullopt;
    const auto width = ParseNumber(text.substr(0, cross), kMinSide, kMaxSide);
    const auto height = ParseNumber(text.substr(cross + 1), kMinSide, kMaxSide);
    return width && height ? std::optional(Size{*width, *height}) : std::nullopt;
}

std::optional<ViewFrom> ParseView(const std::string& text) {
    if (text == "above") return ViewFrom::Above;
    if (text == "side") return ViewFrom::Side;
    return text == "inside" ? std::optional(ViewFrom::Inside) : std::nullopt;
}

}  // namespace

void AddViewOptions(CLI::App& application, ViewOptions& options) {
    application.description("Shows a finished object, or saves a picture of it.");
    application.footer(
        "The picture from the side shows the lowest portal of the object and the way into it; without a "
        "track,\n"
        "the whole object. The one from inside leads along the track through the longest tunnel.\n"
        "\n"
        "Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.\n"
        "After 1 or 2 an existing FILE.png is unchanged.");
    AddPath(application, "OBJECT", options.object, "FILE.3ds",
            "The object; without it, a dialog asks for one");
    AddPath(application, "--track", options.track, "FILE.zrtrack", "Also show this track, and ride along it");
    CLI::Option* const save =
        AddPath(application, "--save", options.picture, "FILE.png", "Save a picture, and open no window")
            ->check(EndsIn(".png"));
    AddParsed(application, "--from", options.from, ParseView, "above|side|inside",
              "Viewpoint (default: side); inside needs --track")
        ->needs(save);
    const auto parse = [&options](const std::string& text) {
        const std::optional<Size> size = ParseSize(text);
        if (!size) throw CLI::ValidationError("--size", "takes WIDTHxHEIGHT, not '" + text + "'");
        std::tie(options.width, options.height) = *size;
    };
    application
        .add_option_function<std::string>("--size", parse, "Pixels, 16 to 8192 each (default: 1280x720)")
        ->type_name("WIDTHxHEIGHT")
        ->take_last()
        ->needs(save);
}

}  // namespace boreforge
