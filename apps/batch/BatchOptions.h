// The command line of boreforge-batch.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "job/TunnelSettings.h"
#include "shared/CommandLine.h"

namespace boreforge {

// One track with the files that are made from it.
struct BatchJob {
    std::string Track;
    std::string Object;
    std::string TrackOut;  // empty: the track itself is rewritten, or none is
};

struct BatchOptions {
    std::string Track;
    std::vector<std::string> OtherFiles;  // the object, or with OutputFolder more tracks
    std::string TrackOut;
    std::string OutputFolder;
    std::vector<BatchJob> Jobs;  // from all of these
    std::string Shape;           // a .zrbf file; empty: the preset
    std::int16_t Preset = 0;
    TunnelChoices Choices;
    bool NoTrack = false;
    bool DryRun = false;
};

// Describes the options to `application`, which fills `options` when it parses.
void AddBatchOptions(CLI::App& application, BatchOptions& options);

}  // namespace boreforge
