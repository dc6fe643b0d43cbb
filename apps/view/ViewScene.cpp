#include "view/ViewScene.h"

#include <QFileInfo>
#include <QQuaternion>

#include <algorithm>
#include <tuple>
#include <utility>

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

}  // namespace

ViewScene::ViewScene() {
    constexpr int kFrame = 16;  // milliseconds
    properties.insert("walls", QVariant::fromValue<QObject*>(&walls_));
    properties.insert("rails", QVariant::fromValue<QObject*>(&rails_));
    properties.insert("center", QVector3D());  // of the sphere around object and track
    properties.insert("radius", 1);
    properties.insert("groundHeight", 0);
    properties.insert("transparent", false);
    properties.insert("hasTrack", false);
    properties.insert("summary", QString());
    properties.insert("objectProblem", QString());
    properties.insert("trackProblem", QString());
    Say({});
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
    read_ = StampOf(path);
    const Outcome read = ReadObject(path, shown_);
    properties.insert("objectProblem", TextOf(read));
    if (!read) return read;
    properties.insert("summary", QString::fromStdString(Summary(shown_)));
    ShowGeometry();
    if (path != shownPath_) {
        shownPath_ = path;
        // Back faces would show through transparent walls, and where the two sides of a wall are equally far
        // away.
        Switch("backFaces",
               !IsOn("transparent") && std::ranges::none_of(shown_.surfaces, &ObjectSurface::IsDoubleSided));
        camera.Fit(shown_.object);
    }
    ShowCamera();
    return {};
}

Outcome ViewScene::OpenTrackFile(const std::string& path) {
    const Outcome read = ReadPath(path, track_);
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
    fileTimer_.callOnTimeout([this] { ReadIfChanged(); });
    fileTimer_.start(kSettled);
}

void ViewScene::ReadIfChanged() {
    if (path_.empty()) return;
    const FileStamp stamp = StampOf(path_), before = std::exchange(seen_, stamp);
    if (stamp == before && stamp != read_) std::ignore = OpenObject(path_);
}

void ViewScene::ShowGeometry() {
    const Object3DS& object = shown_.object;
    if (object.faces.empty()) return;
    FindCover(track_, object);
    ShowWalls(object, walls_);
    ShowRails(track_, rails_);
    const Surroundings around = SurroundingsOf(object, track_);
    properties.insert("center", ToQt(around.center));
    properties.insert("radius", around.radius);
    properties.insert("groundHeight", around.ground);
    properties.insert("hasTrack", !track_.empty());
    Switch("transparent", std::ranges::any_of(object.materials, [](const auto& material) {
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
    properties.insert("clipNear", std::max(0.05, DistanceToNearest(pose.eye, shown_.object, track_) / 3));
    properties.insert("lamp", camera.IsInTunnel(track_));
    properties.insert("scaleBarPixels", scale ? scale->pixels : 0);
    if (scale)
        properties.insert(
            "scaleBarText",
            QStringLiteral("%1 %2").arg(scale->units).arg(scale->units == 1 ? "unit" : "units"));
    const Ride* const ride = camera.CurrentRide();
    properties.insert("rideText", RideText(ride, shown_.object, track_));
    if (!ride || !ride->isMoving) {
        rideTimer_.stop();
    } else if (!rideTimer_.isActive()) {
        rideClock_.start();
        rideTimer_.start();
    }
    Moved();
}

}  // namespace boreforge
