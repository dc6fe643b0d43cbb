// The command line of boreforge-view.
#pragma once

#include <string>

#include "shared/CommandLine.h"
#include "view/Aim.h"

namespace boreforge {

struct ViewOptions {
    std::string object, track, picture;
    ViewFrom from = ViewFrom::Side;
    int width = 1280, height = 720;
};

void AddViewOptions(CLI::App& application, ViewOptions& options);

}  // namespace boreforge
