// The command line of boreforge-picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "picture_camera.h"

namespace boreforge {

struct PictureOptions {
    std::string Object;
    std::string Picture;
    std::string Track;  // empty: no track is drawn
    PictureSize Size{1280, 720};
    PictureView View = PictureView::Above;
    bool Help = false;
    bool Version = false;
};

extern const char kPictureUsage[];

// Takes the arguments behind the program's name. Nothing when they are wrong: `error` then says how.
std::optional<PictureOptions> ParsePictureOptions(const std::vector<std::string>& arguments,
                                                  std::string& error);

}  // namespace boreforge
