// The command line of boreforge-batch.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "job/TunnelSettings.h"
#include "shared/CommandLine.h"

namespace boreforge {

// One track and the files to make from it.
struct BatchJob {
    std::string track;
    std::string object;
    std::string trackOut;  // empty: the track itself is rewritten, or no track is written
};

struct BatchOptions {
    std::string track;
    std::vector<std::string> otherFiles;  // the object, or with outputFolder further tracks
    std::string trackOut;
    std::string outputFolder;
    std::vector<BatchJob> jobs;       // derived from the fields above
    std::string shape;                // a .zrbf file; empty: the preset
    std::string_view preset = "box";  // the name of a sample shape
    TunnelChoices choices;
    bool noTrack = false;
    bool dryRun = false;
    bool strict = false;  // a warning is a failure
    bool json = false;
};

// Adds the options to `application`, which fills `options` when it parses a command line.
void AddBatchOptions(CLI::App& application, BatchOptions& options);

}  // namespace boreforge
