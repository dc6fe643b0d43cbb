#include "job/TunnelSettings.h"

#include <cstddef>

namespace boreforge {

namespace {

// The percentage as a factor: the brightness that is kept. Only the ends are swapped: 0 means "unchanged" and
// 100 means "black".
float DimFactorOf(std::int32_t percent) {
    const auto factor = static_cast<float>(percent / 100.0);
    if (factor == 0) return 1;
    if (factor == 1) return 0;
    return factor;
}

}  // namespace

TunnelJobSettings DeriveJobSettings(const TunnelChoices& choices, const std::string& outputPath) {
    std::int32_t red = 0, green = 0, blue = 0;
    SplitColor(choices.Color, red, green, blue);
    const auto scaled = [&](double factor) {
        return ColorRGB{ScaleChannel(red, factor), ScaleChannel(green, factor), ScaleChannel(blue, factor)};
    };
    TunnelJobSettings settings;
    settings.OutputPath = outputPath;
    settings.BaseColor = scaled(1);
    settings.HalfColor = scaled(0.5);
    settings.BrightColor = scaled(1.2);
    settings.DimColors = choices.DimColors;
    settings.RemoveTunnels = choices.RemoveTunnels;
    settings.PlaceObject = choices.PlaceObject;
    settings.Transparency = choices.Transparency;
    settings.DetailStep = kDetails[static_cast<std::size_t>(choices.DetailItem)].step;
    settings.DimFactor = DimFactorOf(choices.DimPercent);
    settings.DoubleSided = choices.DoubleSided;
    return settings;
}

}  // namespace boreforge
