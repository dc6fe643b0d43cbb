// What the user chooses for a tunnel, and the settings that the job derives from it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Values.h"

namespace boreforge {

// What the user chooses, with the defaults.
struct TunnelChoices {
    PackedColor color = PackColor(192, 192, 192);
    std::int16_t transparency = 0;  // percent
    std::int32_t detailItem = 2;    // index into kDetails
    bool doubleSided = false;
    bool removeTunnels = true;
    bool dimColors = true;
    std::int32_t dimPercent = 50;
    bool placeObject = true;
};

// The steps of curvature detail, finest first: a ring at every `step`-th sample of the trace.
struct DetailChoice {
    std::string_view name;
    std::int32_t step;
};
inline constexpr DetailChoice kDetails[] = {
    {"Extreme", 1}, {"High", 2}, {"Normal", 4}, {"Low", 6}, {"Poor!", 8}};

struct TunnelJobSettings {
    std::string OutputPath;  // of the .3ds file
    ColorRGB BaseColor;
    ColorRGB HalfColor;    // each channel halved, ties to even
    ColorRGB BrightColor;  // each channel times 1.2, ties to even, at most 255
    bool DimColors = false;
    bool RemoveTunnels = false;
    bool PlaceObject = false;
    std::int16_t Transparency = 0;  // percent
    std::int32_t DetailStep = 1;    // 1, 2, 4, 6 or 8
    float DimFactor = 1;            // multiplies colour channels: 0 (black) to 1 (unchanged)
    bool DoubleSided = false;
};

// The job's settings for these choices. Percentages must be 0 to 100, detailItem an index into kDetails.
TunnelJobSettings DeriveJobSettings(const TunnelChoices& choices, const std::string& outputPath);

}  // namespace boreforge
