#include "view/ObjectFile.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

#include "job/mMain.h"
#include "platform/Files.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

namespace {

// "1,234 faces"
std::string Count(std::size_t count, const std::string& noun) {
    const QString digits = QLocale(QLocale::English).toString(qulonglong{count});
    return digits.toStdString() + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

Outcome ReadObject(const std::string& path, ShownObject& shown) {
    const auto refuse = [&](const std::string& reason) { return Failure{.path = path, .reason = reason}; };
    Bytes file;
    if (Outcome read = ReadWholeFile(path, file); !read) return read.With({.path = path});
    ShownObject read;
    ObjectDamage damage;
    if (!Read3DSObject(file, read.object, damage)) return refuse(DamageText(damage));
    const std::size_t faces = read.object.faces.size();
    if (faces == 0) return refuse("It has no faces.");
    if (faces > kMaxFaces)
        return refuse("It has " + Count(faces, "face") + "; at most " + Count(kMaxFaces, "face") +
                      " can be shown.");
    read.surfaces = FindSurfaces(read.object);
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
    const ObjectBounds bounds = BoundsOf(shown.object);
    const auto rounded = [](float low, float high) { return std::to_string(std::lround(high - low)); };
    std::string text =
        Count(shown.object.meshCount, "object") + ", " + Count(shown.object.faces.size(), "face") + ", " +
        Count(shown.surfaces.size(), "tunnel") + ", " + rounded(bounds.low.x, bounds.high.x) + " × " +
        rounded(bounds.low.z, bounds.high.z) + " units, " + rounded(bounds.low.y, bounds.high.y) + " high";
    if (std::ranges::any_of(shown.surfaces, &ObjectSurface::FacesWrongly))
        text += " – walls face the wrong way";
    return text;
}

Surroundings SurroundingsOf(const Object3DS& object, const TrackPath& path) {
    constexpr double kUnderTrack = 0.5;
    const ObjectBounds bounds = BoundsOf(object);
    Vec low = ToVec(bounds.low), high = ToVec(bounds.high);
    double ground = low.y;
    for (const PathPoint& point : path) {
        const Vec& p = point.position;
        ground = std::min(ground, p.y - kUnderTrack);
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return {(low + high) * 0.5, std::max(1.0, Length(high - low) / 2), ground};
}

double DistanceToNearest(const Vec& eye, const Object3DS& object, const TrackPath& path) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const Vector3D& point : object.points)
        nearest = std::min(nearest, Length(ToVec(point) - eye));
    for (const PathPoint& point : path)
        nearest = std::min(nearest, Length(point.position - eye));
    return std::isfinite(nearest) ? nearest : 1;
}

}  // namespace boreforge
