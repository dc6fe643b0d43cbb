#include "view/ViewScene.h"

#include <QQuaternion>

#include <algorithm>
#include <tuple>

#include "view/Keys.h"

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

// One column of kKeyHelp, a line for each row.
QString HelpColumn(const char* KeyHelp::*column) {
    QStringList lines;
    for (const KeyHelp& row : kKeyHelp)
        lines += row.*column;
    return lines.join('\n');
}

QString RideText(const Ride* ride, bool hasTrack, bool isElsewhere) {
    if (!ride && isElsewhere) return QStringLiteral("the track doesn't run through this object");
    if (!ride) return hasTrack ? QString() : QStringLiteral("no track to ride along");
    return QStringLiteral("%1 units a second%2")
        .arg(ride->speed, 0, 'f', ride->speed < 10 ? 1 : 0)
        .arg(ride->isMoving ? QString() : QStringLiteral(" (stopped: Space)"));
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
    properties.insert("problem", QString());
    Say({});
    properties.insert("helpKeys", HelpColumn(&KeyHelp::keys));
    properties.insert("helpEffects", HelpColumn(&KeyHelp::effect));
    Switch("backFaces", true);
    Switch("help", false);
    Switch("fine", true);
    ShowCamera();
    rideTimer_.setInterval(kFrame);
    QObject::connect(&rideTimer_, &QTimer::timeout, &rideTimer_, [this] {
        camera_.Advance(double(rideClock_.restart()) / 1000, track_);
        ShowCamera();
    });
}

Outcome ViewScene::OpenObject(const std::string& path) {
    path_ = path;
    const Outcome read = ReadObject(path, shown_);
    objectProblem_ = read ? QString() : QString::fromStdString(read.Why().Text());
    ShowProblem();
    if (!read) return read;
    properties.insert("summary", QString::fromStdString(Summary(shown_)));
    ShowGeometry();
    if (path != shownPath_) {
        shownPath_ = path;
        // Back faces would show through transparent walls, and where the two sides of a wall are equally far
        // away.
        Switch("backFaces",
               !IsOn("transparent") && std::ranges::none_of(shown_.surfaces, &ObjectSurface::IsDoubleSided));
        Fit();
    }
    ShowCamera();
    return {};
}

void ViewScene::Reload() {
    if (!path_.empty()) std::ignore = OpenObject(path_);
}

Outcome ViewScene::OpenTrackFile(const std::string& path) {
    const Outcome read = ReadPath(path, track_);
    trackProblem_ = read ? QString() : QString::fromStdString(read.Why().Text());
    ShowProblem();
    if (!read) return read;
    LeaveRide();
    ShowGeometry();
    ShowCamera();
    return {};
}

void ViewScene::ShowProblem() {
    properties.insert("problem", objectProblem_.isEmpty() ? trackProblem_ : objectProblem_);
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
    isElsewhere_ = !track_.empty() && CoveredStretches(track_).empty();
    Switch("transparent", std::ranges::any_of(object.materials, [](const auto& material) {
               return material.transparency > 0;
           }));
}

Outcome ViewScene::LookFrom(ViewFrom view) {
    const Outcome found = camera_.LookFrom(view, shown_.object, track_).With({.path = path_});
    if (found) ShowCamera();
    return found;
}

void ViewScene::SetSize(int width, int height) {
    camera_.Resize(width, height, shown_.object);
    ShowCamera();
}

void ViewScene::Fit() {
    rideTimer_.stop();
    camera_.Fit(shown_.object);
    ShowCamera();
}

void ViewScene::Drag(double right, double down, bool pan) {
    camera_.Drag(right, down, pan);
    ShowCamera();
}

void ViewScene::Scroll(double steps, double right, double down) {
    camera_.Scroll(steps, right, down, shown_.object);
    ShowCamera();
}

void ViewScene::LookAtTunnel(int step) {
    rideTimer_.stop();
    if (!camera_.LookAtTunnel(step, track_)) Say("there is no tunnel to go to");
    ShowCamera();
}

void ViewScene::StartOrStopRide() {
    if (track_.empty()) return;
    camera_.StartOrStopRide(track_);
    rideClock_.restart();
    if (camera_.CurrentRide()->isMoving)
        rideTimer_.start();
    else
        rideTimer_.stop();
    ShowCamera();
}

void ViewScene::LeaveRide() {
    rideTimer_.stop();
    camera_.LeaveRide();
    ShowCamera();
}

void ViewScene::ShowCamera() {
    const CameraPose pose = Pose();
    const std::optional<ScaleBar> scale = camera_.Scale();
    properties.insert("eye", ToQt(pose.eye));
    properties.insert("turn", RotationOf(pose));
    properties.insert("sun", SunFor(camera_.AimedPose()));
    properties.insert("fieldOfView", camera_.Lens().VerticalDegrees());
    // As large as possible: otherwise distant surfaces get equal depths, and backs show through the walls.
    properties.insert("clipNear", std::max(0.05, DistanceToNearest(pose.eye, shown_.object, track_) / 3));
    properties.insert("lamp", camera_.IsInTunnel(track_));
    properties.insert("scaleBarPixels", scale ? scale->pixels : 0);
    if (scale)
        properties.insert(
            "scaleBarText",
            QStringLiteral("%1 %2").arg(scale->units).arg(scale->units == 1 ? "unit" : "units"));
    properties.insert("rideText", RideText(camera_.CurrentRide(),
                                           !track_.empty() || shown_.object.faces.empty(), isElsewhere_));
    Moved();
}

}  // namespace boreforge
