// The command line of boreforge-picture.
#pragma once

#include <string>

#include "picture_camera.h"
#include "shared/CommandLine.h"

namespace boreforge {

struct PictureOptions {
    std::string Object;
    std::string Picture;
    std::string Track;  // empty: no track is drawn
    PictureSize Size{1280, 720};
    PictureView View = PictureView::Above;
};

// Describes the options to `application`, which fills `options` when it parses.
void AddPictureOptions(CLI::App& application, PictureOptions& options);

}  // namespace boreforge
