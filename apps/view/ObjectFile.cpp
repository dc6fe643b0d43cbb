#include "view/ObjectFile.h"

#include <algorithm>
#include <cmath>

#include "job/mMain.h"
#include "platform/Files.h"
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

Outcome ReadObject(const std::string& path, ShownObject& shown) {
    const auto refuse = [&](const std::string& reason) { return Failure{.path = path, .reason = reason}; };
    Bytes file;
    if (Outcome read = ReadWholeFile(path, file); !read) return read.With({.path = path});
    ShownObject read;
    ObjectDamage damage;
    if (!Read3DSObject(file, read.Object, damage)) return refuse(DamageText(damage));
    const std::size_t faces = read.Object.Faces.size();
    if (faces == 0) return refuse("It has no faces.");
    if (faces > kMaxFaces)
        return refuse("It has " + Count(faces, "face") + "; at most " + Count(kMaxFaces, "face") +
                      " can be shown.");
    read.Surfaces = FindSurfaces(read.Object);
    shown = std::move(read);
    return {};
}

Outcome ReadPath(const std::string& track, TrackPath& path) {
    if (Outcome opened = OpenTrack(track); !opened)
        return Failure{.path = track, .reason = opened.Why().reason};
    if (!TrackTraced) return Failure{.path = track, .reason = "The track's path can't be followed."};
    path = PathOfTrace();
    return {};
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
