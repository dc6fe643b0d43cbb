// The command line of boreforge-view.
#pragma once

#include <string>

#include "shared/CommandLine.h"
#include "view/Aim.h"

namespace boreforge {

struct ViewOptions {
    std::string Object, Track, Picture;
    ViewFrom From = ViewFrom::Side;
    int Width = 1280, Height = 720;
};

void AddViewOptions(CLI::App& application, ViewOptions& options);

}  // namespace boreforge
