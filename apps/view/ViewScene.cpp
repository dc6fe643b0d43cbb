#include "view/ViewScene.h"

#include <QFileInfo>
#include <QLocale>
#include <QQuaternion>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "job/mMain.h"
#include "platform/Files.h"
#include "shared/ObjectSurfaces.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

namespace {

// The rotation of a camera, or a light, which look along negative z on their own.
QQuaternion RotationOf(const CameraPose& pose) {
    return QQuaternion::fromAxes(ToQt(pose.right), ToQt(pose.up), ToQt(pose.forward * -1));
}

// High, and from behind the viewer's left shoulder: what is seen is lit, and shadows fall to its right.
QQuaternion SunFor(const CameraPose& pose) {
    const Vec level = Normalized(pose.forward - kUp * pose.forward.y);
    const Vec right = Cross(level, kUp);
    return RotationOf(LookAlong({}, level * 0.75 + right * 0.25 - kUp, level));
}

QString RideText(const Ride* ride, const Object3DS& object, const TrackPath& track) {
    if (ride)
        return QStringLiteral("%1 units a second%2")
            .arg(ride->speed, 0, 'f', ride->speed < 10 ? 1 : 0)
            .arg(ride->isMoving ? QString() : QStringLiteral(" (stopped: Space)"));
    if (object.faces.empty()) return {};
    if (track.empty()) return QStringLiteral("no track to ride along");
    return CoveredStretches(track).empty() ? QStringLiteral("the track doesn't run through this object")
                                           : QString();
}

QString TextOf(const Outcome& outcome) {
    return outcome ? QString() : QString::fromStdString(outcome.Why().Text());
}

FileStamp StampOf(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    return {file.lastModified(), file.size()};
}

// "1,234 faces"
std::string Count(std::size_t count, const std::string& noun) {
    const QString digits = QLocale(QLocale::English).toString(qulonglong{count});
    return digits.toStdString() + " " + noun + (count == 1 ? "" : "s");
}

// Fails, with the path and the reason, if the file can't be read or is damaged, or has no faces or too many.
Outcome ReadObject(const std::string& path, Object3DS& object) {
    // More would need too much of the graphics card's memory.
    constexpr std::size_t kMaxFaces = 2'000'000;
    const auto refuse = [&](const std::string& reason) { return Failure{.path = path, .reason = reason}; };
    Bytes file;
    if (const Outcome read = ReadWholeFile(path, file); !read) return read.With({.path = path});
    ObjectDamage damage;
    if (!Read3DSObject(file, object, damage)) return refuse(DamageText(damage));
    const std::size_t faces = object.faces.size();
    if (faces == 0) return refuse("It has no faces.");
    if (faces > kMaxFaces)
        return refuse("It has " + Count(faces, "face") + "; at most " + Count(kMaxFaces, "face") +
                      " can be shown.");
    return {};
}

// Fails, with the path and the reason, if the track can't be read or followed.
Outcome ReadPath(const std::string& track, TrackPath& path) {
    if (Outcome opened = OpenTrack(track); !opened)
        return Failure{.path = track, .reason = opened.Why().reason};
    if (!TrackTraced) return Failure{.path = track, .reason = "The track's path can't be followed."};
    path = PathOfTrace();
    return {};
}

// What the object consists of, in a line.
std::string Summary(const Object3DS& object, const std::vector<ObjectSurface>& surfaces) {
    const ObjectBounds bounds = BoundsOf(object);
    const auto rounded = [](float low, float high) { return std::to_string(std::lround(high - low)); };
    std::string text = Count(object.meshCount, "object") + ", " + Count(object.faces.size(), "face") + ", " +
                       Count(surfaces.size(), "tunnel") + ", " + rounded(bounds.low.x, bounds.high.x) +
                       " × " + rounded(bounds.low.z, bounds.high.z) + " units, " +
                       rounded(bounds.low.y, bounds.high.y) + " high";
    if (std::ranges::any_of(surfaces, &ObjectSurface::FacesWrongly)) text += " – walls face the wrong way";
    return text;
}

}  // namespace

ViewScene::ViewScene() {
    constexpr int kFrame = 16;   // milliseconds
    ShowWalls(object_, walls_);  // empty at first, but without a layout they can't be drawn
    ShowRails(track_, rails_);
    properties.insert("walls", QVariant::fromValue<QObject*>(&walls_));
    properties.insert("rails", QVariant::fromValue<QObject*>(&rails_));
    properties.insert("center", QVector3D());  // of the sphere around object and track
    properties.insert("radius", 1);
    properties.insert("groundHeight", 0);
    properties.insert("transparent", false);
    properties.insert("summary", QString());
    properties.insert("objectProblem", QString());
    properties.insert("trackProblem", QString());
    ShowNotice({});
    Switch("backFaces", true);
    Switch("help", false);
    Switch("fine", true);
    ShowCamera();
    rideTimer_.setInterval(kFrame);
    rideTimer_.callOnTimeout([this] {
        camera.Advance(double(rideClock_.restart()) / 1000, track_);
        ShowCamera();
    });
}

Outcome ViewScene::OpenObject(const std::string& path) {
    path_ = path;
    readStamp_ = StampOf(path);
    Object3DS object;
    std::vector<ObjectSurface> surfaces;
    const auto readAll = [&] {
        return ReadObject(path, object).Then([&] {
            surfaces = FindSurfaces(object);
            return Outcome();
        });
    };
    Outcome read =
        CatchingOutOfMemory(readAll, {.path = path, .reason = "There is not enough memory for it."});
    properties.insert("objectProblem", TextOf(read));
    if (!read) return read;
    object_ = std::move(object);
    properties.insert("summary", QString::fromStdString(Summary(object_, surfaces)));
    ShowGeometry();
    // Red backs would show through transparent walls, and where the two sides of a wall are equally far away.
    const bool hidesBacks =
        !IsOn("transparent") && std::ranges::none_of(surfaces, &ObjectSurface::IsDoubleSided);
    if (path != shownPath_ || !hidesBacks) Switch("backFaces", hidesBacks);
    if (path != shownPath_) camera.Fit(object_);
    shownPath_ = path;
    ShowCamera();
    return {};
}

Outcome ViewScene::OpenTrackFile(const std::string& path) {
    Outcome read = ReadPath(path, track_);
    properties.insert("trackProblem", TextOf(read));
    if (!read) return read;
    camera.LeaveRide();
    ShowGeometry();
    ShowCamera();
    return {};
}

// The file is looked at again and again: that also finds a file that was replaced or comes back, in a folder
// that may be new.
void ViewScene::FollowFile() {
    constexpr int kSettled = 200;  // milliseconds for which a file stays unchanged before it is read
    fileTimer_.callOnTimeout([this] {
        const FileStamp stamp = StampOf(path_), before = std::exchange(lastStamp_, stamp);
        if (!path_.empty() && stamp == before && stamp != readStamp_) std::ignore = OpenObject(path_);
    });
    fileTimer_.start(kSettled);
}

void ViewScene::ShowGeometry() {
    if (object_.faces.empty()) return;
    FindCover(track_, object_);
    ShowWalls(object_, walls_);
    ShowRails(track_, rails_);
    const Surroundings around = SurroundingsOf(object_, track_);
    properties.insert("center", ToQt(around.center));
    properties.insert("radius", around.radius);
    properties.insert("groundHeight", around.ground);
    Switch("transparent", std::ranges::any_of(object_.materials, [](const auto& material) {
               return material.transparency > 0;
           }));
}

void ViewScene::ShowCamera() {
    const CameraPose pose = Pose();
    const std::optional<ScaleBar> scale = camera.Scale();
    properties.insert("eye", ToQt(pose.eye));
    properties.insert("turn", RotationOf(pose));
    properties.insert("sun", SunFor(camera.AimedPose()));
    properties.insert("fieldOfView", camera.Lens().VerticalDegrees());
    // As large as possible: otherwise distant surfaces get equal depths, and backs show through the walls.
    properties.insert("clipNear", std::max(0.05, DistanceToNearest(pose.eye, object_, track_) / 3));
    properties.insert("lamp", camera.IsInTunnel(track_));
    properties.insert("scaleBarPixels", scale ? scale->pixels : 0);
    if (scale)
        properties.insert(
            "scaleBarText",
            QStringLiteral("%1 %2").arg(scale->units).arg(scale->units == 1 ? "unit" : "units"));
    const Ride* const ride = camera.CurrentRide();
    properties.insert("rideText", RideText(ride, object_, track_));
    if (!ride || !ride->isMoving) {
        rideTimer_.stop();
    } else if (!rideTimer_.isActive()) {
        rideClock_.start();
        rideTimer_.start();
    }
    onMoved();
}

}  // namespace boreforge
