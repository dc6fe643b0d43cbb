#include "job/TrackModifications.h"

#include <cstdint>

#include "base/Text.h"
#include "base/Values.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

PackedColor Dimmed(PackedColor color, float factor) {
    return ToPackedColor(ScaleColor(ToColorRGB(color), factor));
}

}  // namespace

void DimTunnelSegments(float dimFactor) {
    for (TrackSegment& segment : TrackFile.Segments) {
        if (!segment.IsTunnel) continue;
        const bool own = segment.UseOwnColors;
        segment.Color1 = Dimmed(own ? segment.Color1 : TrackFile.DefaultColor1, dimFactor);
        segment.Color2 = Dimmed(own ? segment.Color2 : TrackFile.DefaultColor2, dimFactor);
        segment.Color3 = Dimmed(own ? segment.Color3 : TrackFile.DefaultColor3, dimFactor);
        segment.UseOwnColors = kTrue;
    }
}

void ClearTunnelFlags() {
    for (TrackSegment& segment : TrackFile.Segments)
        segment.IsTunnel = kFalse;
}

std::optional<std::string> ObjectNameInTrack(const std::string& outputPath) {
    return ToWindows1252(BaseName(outputPath));
}

void PlaceObjectInTrack(const std::string& outputPath) {
    TrackScenery object;
    object.ObjectFile = ObjectNameInTrack(outputPath).value_or(std::string(BaseName(outputPath)));
    object.ObjectClass = "dummy";
    object.Transform = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    TrackFile.SceneryObjects.push_back(object);
}

}  // namespace boreforge
