#include "picture_options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include "command_line.h"

namespace boreforge {

const char kPictureUsage[] =
    R"(Usage: boreforge-picture OBJECT.3ds FILE.png [options]

Checks a finished object and draws a picture of it.

  --track FILE.zrtrack     also draw this track, faintly where something is in front of it
  --view above             the whole object from above (default)
  --view side              the lowest portal of the object and the way into it; without
                           a track the whole object from the side
  --view inside            from the track through the longest tunnel; needs a track
  --size WIDTHxHEIGHT      pixels, 16 to 8192 each (default: 1280x720)

  --help, --version        show this text, or the version

Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.
After 1 or 2 an old FILE.png is as it was.
)";

namespace {

constexpr int kLeastSide = 16, kLargestSide = 8192;

bool ParseSide(const std::string& text, int& side) {
    const char* const end = text.data() + text.size();
    const auto [last, failure] = std::from_chars(text.data(), end, side);
    return failure == std::errc() && last == end && side >= kLeastSide && side <= kLargestSide;
}

bool ParseSize(const std::string& text, PictureSize& size) {
    const std::size_t cross = text.find('x');
    return cross != std::string::npos && ParseSide(text.substr(0, cross), size.Width) &&
           ParseSide(text.substr(cross + 1), size.Height);
}

bool ParseView(const std::string& text, PictureView& view) {
    view = text == "side" ? PictureView::Side : text == "inside" ? PictureView::Inside : PictureView::Above;
    return text == "above" || text == "side" || text == "inside";
}

bool SetValue(PictureOptions& options, const std::string& option, const std::string& value) {
    if (option == "--size") return ParseSize(value, options.Size);
    if (option == "--view") return ParseView(value, options.View);
    options.Track = value;
    return !value.empty();
}

// Takes the option at `i` with its value. The reason why it can't; empty when it could.
std::string TakeOption(const std::vector<std::string>& arguments, std::size_t& i, PictureOptions& options) {
    const std::string option = "'" + arguments[i] + "'";
    if (arguments[i] != "--track" && arguments[i] != "--size" && arguments[i] != "--view")
        return "there is no option " + option;
    const auto here = arguments.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::find(arguments.begin(), here, *here) != here) return option + " stands there twice";
    if (++i == arguments.size()) return option + " needs a value";
    const std::string& value = arguments[i];
    return SetValue(options, *here, value) ? "" : "'" + value + "' is no value for " + option;
}

}  // namespace

std::optional<PictureOptions> ParsePictureOptions(const std::vector<std::string>& arguments,
                                                  std::string& error) {
    return ParseArguments(arguments, error, "an object file and a picture file", &PictureOptions::Object,
                          &PictureOptions::Picture, [&](std::size_t& i, PictureOptions& options) {
                              return TakeOption(arguments, i, options);
                          });
}

}  // namespace boreforge
