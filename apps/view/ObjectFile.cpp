#include "view/ObjectFile.h"

#include <algorithm>
#include <cmath>

#include "base/Message.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "shared/CommandLine.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

namespace {

// "1,234 faces"
std::string Count(std::size_t count, const std::string& noun) {
    std::string digits = std::to_string(count);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, 1, ',');
    }
    return digits + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

bool ReadObject(const std::string& path, ShownObject& shown, std::string& reason) {
    Bytes file;
    if (!ReadWholeFile(path, file)) {
        reason = FailureText();
        return false;
    }
    ShownObject read;
    ObjectDamage damage;
    if (!Read3DSObject(file, read.Object, damage))
        reason = DamageText(damage);
    else if (read.Object.Faces.empty())
        reason = "It has no faces.";
    else if (read.Object.Faces.size() > kMaxFaces)
        reason = "It has " + Count(read.Object.Faces.size(), "face") + "; at most " +
                 Count(kMaxFaces, "face") + " can be shown.";
    else {
        read.Surfaces = FindSurfaces(read.Object);
        shown = std::move(read);
        return true;
    }
    return false;
}

bool ReadPath(const std::string& track, TrackPath& path, std::string& reason) {
    const MessageHook before = SetMessageHook(nullptr);
    const bool opened = OpenTrack(track);
    SetMessageHook(before);
    if (opened && TrackTraced) {
        path = PathOfTrace();
        return true;
    }
    reason = opened ? "The track's path can't be followed." : ReadFailureText("track");
    return false;
}

std::string Summary(const ShownObject& shown) {
    const ObjectBounds bounds = BoundsOf(shown.Object);
    const auto rounded = [](float low, float high) { return std::to_string(std::lround(high - low)); };
    std::string text =
        Count(shown.Object.MeshCount, "object") + ", " + Count(shown.Object.Faces.size(), "face") + ", " +
        Count(shown.Surfaces.size(), "tunnel") + ", " + rounded(bounds.Low.x, bounds.High.x) + " × " +
        rounded(bounds.Low.z, bounds.High.z) + " units, " + rounded(bounds.Low.y, bounds.High.y) + " high";
    if (std::ranges::any_of(shown.Surfaces, &ObjectSurface::FacesWrongly))
        text += " – walls face the wrong way";
    return text;
}

}  // namespace boreforge
