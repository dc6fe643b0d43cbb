#include "job/TunnelSettings.h"

namespace boreforge {

namespace {

// The percentage as a factor: the brightness that is kept. The two ends are the other way round: 0 leaves
// the colours unchanged, 100 makes them black.
float DimFactorOf(std::int32_t percent) {
    const auto factor = static_cast<float>(percent / 100.0);
    if (factor == 0) return 1;
    if (factor == 1) return 0;
    return factor;
}

}  // namespace

TunnelJobSettings DeriveJobSettings(const TunnelChoices& choices, const std::string& outputPath) {
    const ColorRGB color = ToColorRGB(choices.color);
    TunnelJobSettings settings;
    settings.OutputPath = outputPath;
    settings.BaseColor = color;
    settings.HalfColor = ScaleColor(color, 0.5);
    settings.BrightColor = ScaleColor(color, 1.2);
    settings.DimColors = choices.dimColors;
    settings.RemoveTunnels = choices.removeTunnels;
    settings.PlaceObject = choices.placeObject;
    settings.Transparency = choices.transparency;
    settings.DetailStep = kDetails[choices.detailItem].step;
    settings.DimFactor = DimFactorOf(choices.dimPercent);
    settings.DoubleSided = choices.doubleSided;
    return settings;
}

}  // namespace boreforge
