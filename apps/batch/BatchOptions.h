// The command line of boreforge-batch.
#pragma once

#include <cstdint>
#include <string>

#include "job/TunnelSettings.h"
#include "shared/CommandLine.h"

namespace boreforge {

struct BatchOptions {
    std::string Track;
    std::string Object;
    std::string Shape;  // a .zrbf file; empty: the preset
    std::int16_t Preset = 0;
    std::string TrackOut;  // empty: the track itself is rewritten
    TunnelChoices Choices;
};

// Describes the options to `application`, which fills `options` when it parses.
void AddBatchOptions(CLI::App& application, BatchOptions& options);

}  // namespace boreforge
