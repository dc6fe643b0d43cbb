// The command line of boreforge-batch.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "job/TunnelSettings.h"

namespace boreforge {

struct BatchOptions {
    std::string Track;
    std::string Object;
    std::string Shape;  // a .zrbf file; empty: the preset
    std::int16_t Preset = 0;
    std::string TrackOut;  // empty: the track itself is rewritten
    TunnelChoices Choices;
    bool Help = false;
    bool Version = false;
};

extern const char kBatchUsage[];

// Takes the arguments behind the program's name. Nothing when they are wrong: `error` then says how.
std::optional<BatchOptions> ParseBatchOptions(const std::vector<std::string>& arguments, std::string& error);

}  // namespace boreforge
