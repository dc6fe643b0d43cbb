#include "batch/BatchOptions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

#include "base/FileTags.h"
#include "base/Text.h"
#include "editor/TunnelShapeFile.h"

namespace boreforge {

namespace {

constexpr std::string_view kObjectExtension = ".3ds";

// "R,G,B" with numbers from 0 to 255, or "#rrggbb".
std::optional<PackedColor> ParseColor(std::string_view text) {
    if (text.starts_with('#') && text.size() == 7) {
        const auto value = ParseNumber(text.substr(1), 0, 0xFFFFFF, 16);
        return value ? std::optional(PackColor(*value >> 16, *value >> 8, *value)) : std::nullopt;
    }
    std::int32_t channels[3] = {};
    for (std::int32_t& channel : channels) {
        const bool isLast = &channel == std::end(channels) - 1;
        const std::size_t end = isLast ? text.size() : text.find(',');
        if (end == std::string_view::npos) return std::nullopt;
        const auto value = ParseNumber(text.substr(0, end), 0, 255);
        if (!value) return std::nullopt;
        channel = *value;
        text.remove_prefix(isLast ? end : end + 1);
    }
    return PackColor(channels[0], channels[1], channels[2]);
}

// The names of the settings dialog's list, without the exclamation mark and in lower case.
std::string DetailName(const DetailChoice& detail) {
    std::string name = ToLowerAscii(std::string(detail.name));
    if (name.ends_with('!')) name.pop_back();
    return name;
}

std::optional<std::int32_t> ParseDetail(const std::string& text) {
    const auto found = std::ranges::find(kDetails, ToLowerAscii(text), DetailName);
    if (found == std::end(kDetails)) return std::nullopt;
    return static_cast<std::int32_t>(found - std::begin(kDetails));
}

std::optional<std::string_view> ParsePreset(const std::string& text) {
    const auto found = std::ranges::find(kSampleShapes, ToLowerAscii(text), &SampleShape::name);
    return found == kSampleShapes.end() ? std::nullopt : std::optional(found->name);
}

// "box|rounded|..."
std::string PresetNames() {
    std::string names;
    for (const SampleShape& shape : kSampleShapes)
        names += (names.empty() ? "" : "|") + std::string(shape.name);
    return names;
}

std::optional<std::int32_t> ParsePercent(const std::string& text) { return ParseNumber(text, 0, 100); }

// Throws a usage error unless `path` has this extension.
void RequireExtension(const std::string& path, std::string_view extension) {
    const std::string fault = path.empty() ? "A file's name is empty" : EndsIn(extension)(path);
    if (!fault.empty()) throw CLI::ValidationError(fault);
}

// TRACK OUTPUT
BatchJob SingleJob(const BatchOptions& options) {
    if (options.otherFiles.empty()) throw CLI::RequiredError("OUTPUT");
    if (HasExtension(options.otherFiles[0], kTrackExtension))
        throw CLI::ValidationError("'" + options.otherFiles[0] +
                                   "' is a track, not an object; several tracks need --output-folder");
    RequireExtension(options.otherFiles[0], kObjectExtension);
    if (options.otherFiles.size() > 1)
        throw CLI::ExtrasError({options.otherFiles.begin() + 1, options.otherFiles.end()});
    return {options.track, options.otherFiles[0], options.trackOut};
}

// --output-folder FOLDER TRACK...
std::vector<BatchJob> FolderJobs(const BatchOptions& options) {
    std::vector<std::string> tracks = {options.track};
    tracks.insert(tracks.end(), options.otherFiles.begin(), options.otherFiles.end());
    std::vector<BatchJob> jobs;
    for (const std::string& track : tracks) {
        RequireExtension(track, kTrackExtension);
        std::string name(BaseName(track));
        name.resize(name.size() - kTrackExtension.size());
        const std::string output = options.outputFolder + "/" + name;
        jobs.push_back({track, output + std::string(kObjectExtension),
                        options.noTrack ? "" : output + std::string(kTrackExtension)});
    }
    return jobs;
}

void AddFileOptions(CLI::App& application, BatchOptions& options) {
    AddPath(application, "TRACK", options.track, "FILE.zrtrack", "The track")->required();
    application
        .add_option("OUTPUT", options.otherFiles, "The object to write; with --output-folder: further tracks")
        ->type_name("FILE.3ds");
    application.option_defaults()->group("Files");
    AddPath(application, "--output-folder", options.outputFolder, "FOLDER",
            "Write each track's object and the changed track there; the folder is made if needed");
    application.add_flag("--strict", options.strict, "Fail where there would be a warning");
    application.add_flag("--dry-run", options.dryRun,
                         "Say what would be made or why it would fail, but write nothing");
    application.add_flag("--json", options.json, "Report as JSON, for programs");
}

void AddShapeOptions(CLI::App& application, BatchOptions& options) {
    application.option_defaults()->group("Shape");
    CLI::Option* const shape =
        AddPath(application, "--shape", options.shape, "FILE.zrbf", "Use the cross-section in this file");
    AddParsed(application, "--preset", options.preset, ParsePreset, PresetNames(),
              "Use a sample cross-section (default: box)")
        ->excludes(shape);
}

void AddLookOptions(CLI::App& application, TunnelChoices& choices) {
    application.option_defaults()->group("Look");
    AddParsed(application, "--color", choices.color, ParseColor, "R,G,B|#rrggbb",
              "Tunnel colour, 0 to 255 each (default: 192,192,192)");
    AddParsed(application, "--transparency", choices.transparency, ParsePercent, "0..100",
              "Percent (default: 0)");
    AddParsed(application, "--detail", choices.detailItem, ParseDetail, "extreme|high|normal|low|poor",
              "How closely the tunnel follows the curve (default: normal)");
    application.add_flag("--double-sided", choices.doubleSided, "Make every face visible from both sides");
}

void AddTrackOptions(CLI::App& application, BatchOptions& options) {
    application.option_defaults()->group("Track");
    const auto addSwitch = [&](const char* name, bool& choice, const char* description) {
        return application.add_flag_callback(
            name, [&choice] { choice = false; }, description);
    };
    TunnelChoices& choices = options.choices;
    CLI::Option* const dim = AddParsed(application, "--dim", choices.dimPercent, ParsePercent, "0..100",
                                       "Percentage of brightness that tunneled segments keep (default: 50); "
                                       "0 changes nothing, 100 makes them black");
    addSwitch("--no-dim", choices.dimColors, "Don't change the colours of segments")->excludes(dim);
    CLI::Option* const trackOut = AddPath(application, "--track-out", options.trackOut, "FILE.zrtrack",
                                          "Save the changed track there and leave TRACK unchanged")
                                      ->check(EndsIn(kTrackExtension))
                                      ->excludes(application.get_option("--output-folder"));
    application.add_flag("--no-track", options.noTrack, "Write only the object, no track")
        ->excludes(trackOut);
    addSwitch("--keep-tunnel-flags", choices.removeTunnels, "Don't clear the tunnel flags");
    addSwitch("--no-place", choices.placeObject, "Don't add the object to the track's scenery");
}

}  // namespace

void AddBatchOptions(CLI::App& application, BatchOptions& options) {
    application.description(
        "Makes a tunnel along every tunnel segment of the track, writes it to OUTPUT and saves the track "
        "with\n"
        "the requested changes. With --output-folder it does so for several tracks.");
    application.footer(
        "Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.\n"
        "After 1 or 2, a track whose tunnel could not be made is unchanged. With several tracks, each "
        "succeeds or fails by itself.");
    AddFileOptions(application, options);
    AddShapeOptions(application, options);
    AddLookOptions(application, options.choices);
    AddTrackOptions(application, options);
    application.option_defaults()->group("Options");
    application.callback([&options] {
        options.jobs = options.outputFolder.empty() ? std::vector{SingleJob(options)} : FolderJobs(options);
    });
}

}  // namespace boreforge
