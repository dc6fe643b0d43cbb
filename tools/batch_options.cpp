#include "batch_options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "command_line.h"

namespace boreforge {

const char kBatchUsage[] =
    R"(Usage: boreforge-batch TRACK.zrtrack OUTPUT.3ds [options]

Makes a tunnel along every tunnel segment of the track, writes it to OUTPUT.3ds
and saves the track with the changes that were asked for.

Shape:
  --shape FILE.zrbf        the cross-section in this file
  --preset box|rounded     a built-in cross-section (default: box)

Look:
  --color R,G,B            tunnel colour, 0 to 255 each (default: 192,192,192)
  --transparency 0..100    percent (default: 0)
  --detail extreme|high|normal|low|poor
                           how closely the tunnel follows the curve (default: normal)
  --double-sided           make every face visible from both sides

Track:
  --dim 0..100             percentage for the colours of tunneled segments (default: 50);
                           0 leaves the colours as they are, 100 gives black
  --no-dim                 leave the colours and their owner alone
  --keep-tunnel-flags      don't clear the tunnel flags
  --no-place               don't add the object to the track's scenery
  --track-out FILE.zrtrack save the changed track there and leave TRACK as it is

  --help, --version        show this text, or the version

Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.
After 1 or 2 the track is as it was.
)";

namespace {

// A whole number from 0 to `limit` and nothing else.
bool ParseNumber(const std::string& text, std::int32_t limit, std::int32_t& number) {
    const char* const end = text.data() + text.size();
    const auto [last, failure] = std::from_chars(text.data(), end, number);
    return failure == std::errc() && last == end && number >= 0 && number <= limit;
}

bool ParseColor(const std::string& text, PackedColor& color) {
    std::int32_t channel[3] = {};
    std::size_t start = 0;
    for (int i = 0; i < 3; ++i) {
        const std::size_t end = i < 2 ? text.find(',', start) : text.size();
        if (end == std::string::npos || !ParseNumber(text.substr(start, end - start), 255, channel[i]))
            return false;
        start = end + 1;
    }
    color = PackColor(channel[0], channel[1], channel[2]);
    return true;
}

// The names of the dialog's list, in lower case and without the exclamation mark.
bool ParseDetail(const std::string& text, std::int32_t& item) {
    const auto named = [&](const DetailChoice& detail) {
        std::string name = ToLowerAscii(std::string(detail.name));
        if (name.ends_with('!')) name.pop_back();
        return name == text;
    };
    const auto found = std::find_if(std::begin(kDetails), std::end(kDetails), named);
    item = static_cast<std::int32_t>(found - std::begin(kDetails));
    return found != std::end(kDetails);
}

bool ParsePreset(const std::string& text, std::int16_t& preset) {
    preset = text == "rounded" ? 1 : 0;
    return text == "box" || text == "rounded";
}

// Options that say the same thing in two ways, or twice, contradict each other.
bool Contradicts(const std::vector<std::string>& seen, const std::string& option) {
    const auto has = [&](const char* other) {
        return std::find(seen.begin(), seen.end(), other) != seen.end();
    };
    return has(option.c_str()) || (option == "--shape" && has("--preset")) ||
           (option == "--preset" && has("--shape")) || (option == "--dim" && has("--no-dim")) ||
           (option == "--no-dim" && has("--dim"));
}

bool TakesValue(const std::string& option) {
    static const char* const names[] = {"--shape",  "--preset", "--color",    "--transparency",
                                        "--detail", "--dim",    "--track-out"};
    return std::find(std::begin(names), std::end(names), option) != std::end(names);
}

bool SetSwitch(BatchOptions& options, const std::string& option) {
    if (option == "--no-dim")
        options.Choices.DimColors = false;
    else if (option == "--keep-tunnel-flags")
        options.Choices.RemoveTunnels = false;
    else if (option == "--no-place")
        options.Choices.PlaceObject = false;
    else if (option == "--double-sided")
        options.Choices.DoubleSided = true;
    else
        return false;
    return true;
}

bool SetValue(BatchOptions& options, const std::string& option, const std::string& value) {
    TunnelChoices& choices = options.Choices;
    if (option == "--preset") return ParsePreset(value, options.Preset);
    if (option == "--color") return ParseColor(value, choices.Color);
    if (option == "--detail") return ParseDetail(value, choices.DetailItem);
    if (option == "--dim") return ParseNumber(value, 100, choices.DimPercent);
    if (option == "--transparency") {
        std::int32_t percent = 0;
        if (!ParseNumber(value, 100, percent)) return false;
        choices.Transparency = static_cast<std::int16_t>(percent);
        return true;
    }
    (option == "--shape" ? options.Shape : options.TrackOut) = value;
    return !value.empty();
}

// Takes the option at `i`, with its value if it has one, behind those that were seen. The reason why it
// can't; empty when it could.
std::string TakeOption(const std::vector<std::string>& arguments, std::size_t& i,
                       std::vector<std::string>& seen, BatchOptions& options) {
    const std::string& option = arguments[i];
    if (Contradicts(seen, option)) return "'" + option + "' contradicts an option before it";
    seen.push_back(option);
    if (!TakesValue(option)) return SetSwitch(options, option) ? "" : "there is no option '" + option + "'";
    if (++i == arguments.size()) return "'" + option + "' needs a value";
    const std::string& value = arguments[i];
    return SetValue(options, option, value) ? "" : "'" + value + "' is no value for '" + option + "'";
}

}  // namespace

std::optional<BatchOptions> ParseBatchOptions(const std::vector<std::string>& arguments, std::string& error) {
    std::vector<std::string> seen;
    return ParseArguments(
        arguments, error, "a track file and an output file", &BatchOptions::Track, &BatchOptions::Object,
        [&](std::size_t& i, BatchOptions& options) { return TakeOption(arguments, i, seen, options); });
}

}  // namespace boreforge
