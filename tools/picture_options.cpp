#include "picture_options.h"

#include <optional>

namespace boreforge {

namespace {

constexpr int kMinSide = 16, kMaxSide = 8192;

std::optional<PictureSize> ParseSize(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) return std::nullopt;
    const auto width = ParseNumber(text.substr(0, cross), kMinSide, kMaxSide);
    const auto height = ParseNumber(text.substr(cross + 1), kMinSide, kMaxSide);
    return width && height ? std::optional(PictureSize{*width, *height}) : std::nullopt;
}

std::optional<PictureView> ParseView(const std::string& text) {
    if (text == "above") return PictureView::Above;
    if (text == "side") return PictureView::Side;
    return text == "inside" ? std::optional(PictureView::Inside) : std::nullopt;
}

}  // namespace

void AddPictureOptions(CLI::App& application, PictureOptions& options) {
    application.description("Checks a finished object and draws a picture of it.");
    application.footer(
        "The view from the side shows the lowest portal of the object and the way into it; without a track, "
        "the\n"
        "whole object. The view inside leads along the track through the longest tunnel.\n"
        "\n"
        "Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.\n"
        "After 1 or 2 an old FILE.png is as it was.");
    AddPath(application, "OBJECT", options.Object, "FILE.3ds", "The object")->required();
    AddPath(application, "PICTURE", options.Picture, "FILE.png", "The picture to write")
        ->required()
        ->check(EndsIn(".png"));
    AddPath(application, "--track", options.Track, "FILE.zrtrack",
            "Also draw this track, faintly where something is in front of it");
    AddParsed(application, "--view", options.View, ParseView, "above|side|inside",
              "From where (default: above); inside needs a track");
    AddParsed(application, "--size", options.Size, ParseSize, "WIDTHxHEIGHT",
              "Pixels, 16 to 8192 each (default: 1280x720)");
}

}  // namespace boreforge
