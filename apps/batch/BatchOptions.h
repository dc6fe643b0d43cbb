// The command line of boreforge-batch.
#pragma once

#include <string>
#include <vector>

#include "editor/TunnelShape.h"
#include "job/TunnelSettings.h"
#include "shared/CommandLine.h"

namespace boreforge {

// One track and the files to make from it.
struct BatchJob {
    std::string Track;
    std::string Object;
    std::string TrackOut;  // empty: Track itself is rewritten, or no track is written
};

struct BatchOptions {
    std::string Track;
    std::vector<std::string> OtherFiles;  // the object, or with OutputFolder further tracks
    std::string TrackOut;
    std::string OutputFolder;
    std::vector<BatchJob> Jobs;  // derived from the fields above
    std::string Shape;           // a .zrbf file; empty: the preset
    PresetShape Preset = kPresetBox;
    TunnelChoices Choices;
    bool NoTrack = false;
    bool DryRun = false;
};

// Adds the options to `application`, which fills `options` when it parses a command line.
void AddBatchOptions(CLI::App& application, BatchOptions& options);

}  // namespace boreforge
