#include "view/ViewScene.h"

#include <QMatrix3x3>

#include <algorithm>
#include <limits>
#include <tuple>

#include "view/Keys.h"

namespace boreforge {

namespace {

QVector3D ToQt(const Vec& v) { return {float(v.x), float(v.y), float(v.z)}; }

// The rotation of a camera, or a light, which look along negative z on their own.
QQuaternion RotationOf(const CameraPose& pose) {
    return QQuaternion::fromAxes(ToQt(pose.Right), ToQt(pose.Up), ToQt(pose.Forward * -1));
}

}  // namespace

ViewScene::ViewScene() {
    constexpr int kFrame = 16;  // milliseconds
    rideTimer_.setInterval(kFrame);
    connect(&rideTimer_, &QTimer::timeout, this, [this] {
        ride_->Advance(double(rideClock_.restart()) / 1000, track_);
        UpdateCamera();
    });
}

Outcome ViewScene::OpenObject(const std::string& path) {
    path_ = path;
    const Outcome read = ReadObject(path, shown_);
    Report(objectProblem_, read);
    if (!read) return read;
    summary_ = QString::fromStdString(Summary(shown_));
    ShowGeometry();
    if (path != shownPath_) {
        shownPath_ = path;
        // Back faces would show through transparent walls, and where the two sides of a wall are equally far
        // away.
        SetBackFaces(!transparent_ && std::ranges::none_of(shown_.Surfaces, &ObjectSurface::IsDoubleSided));
        Fit();
    }
    UpdateCamera();
    emit textChanged();
    return {};
}

void ViewScene::Reload() {
    if (!path_.empty()) std::ignore = OpenObject(path_);
}

Outcome ViewScene::OpenTrackFile(const std::string& path) {
    const Outcome read = ReadPath(path, track_);
    Report(trackProblem_, read);
    if (!read) return read;
    ride_.reset();
    rideTimer_.stop();
    ShowGeometry();
    UpdateCamera();
    return {};
}

void ViewScene::Report(QString& problem, const Outcome& outcome) {
    problem = outcome ? QString() : QString::fromStdString(outcome.Why().Text());
    emit textChanged();
}

void ViewScene::ShowGeometry() {
    if (shown_.Object.Faces.empty()) return;
    FindCover(track_, shown_.Object);
    walls_.Show(shown_.Object);
    rails_.Show(RailsOf(track_));
    PlaceGround();
    transparent_ = std::ranges::any_of(shown_.Object.Materials,
                                       [](const ObjectMaterial& m) { return m.Transparency > 0; });
    emit objectChanged();
}

// Under the object and the track, which a ride follows far away from the object.
void ViewScene::PlaceGround() {
    constexpr float kUnderTrack = 0.5f;
    const ObjectBounds bounds = BoundsOf(shown_.Object);
    QVector3D low = ToQt(ToVec(bounds.Low)), high = ToQt(ToVec(bounds.High));
    groundHeight_ = low.y();
    for (const PathPoint& point : track_) {
        const QVector3D place = ToQt(point.Position);
        groundHeight_ = std::min(groundHeight_, place.y() - kUnderTrack);
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], place[axis]);
            high[axis] = std::max(high[axis], place[axis]);
        }
    }
    center_ = (low + high) / 2;
    radius_ = std::max(1.0f, (high - low).length() / 2);
}

Outcome ViewScene::LookFrom(ViewFrom view) {
    Aim aim;
    const Outcome aimed = AimFrom(view, shown_.Object, track_, lens_, aim).With({.path = path_});
    if (!aimed) return aimed;
    fitted_ = false;
    fixed_ = aim.Pose;
    lens_ = aim.Lens;
    orbit_ = OrbitCamera::From(aim.Pose, aim.Distance);
    PlaceSun(aim.Pose);
    UpdateCamera();
    lamp_ = view == ViewFrom::Inside;
    if (view != ViewFrom::Above) scaleBarPixels_ = 0;
    emit cameraChanged();
    return {};
}

void ViewScene::SetSize(int width, int height) {
    lens_.Width = std::max(width, 1);
    lens_.Height = std::max(height, 1);
    fitted_ ? Fit() : UpdateCamera();
}

void ViewScene::Fit() {
    LeaveRide();
    fixed_.reset();
    if (shown_.Object.Faces.empty()) return;
    const Aim aim = AimAtWhole(shown_.Object, lens_);
    lens_ = aim.Lens;
    orbit_ = OrbitCamera::From(aim.Pose, aim.Distance);
    PlaceSun(aim.Pose);
    fitted_ = true;
    UpdateCamera();
}

void ViewScene::Drag(double right, double down, bool pan) {
    fitted_ = false;
    fixed_.reset();
    if (ride_)
        ride_->TurnHead(right, down);
    else if (pan)
        orbit_.Pan(right, down, lens_);
    else
        orbit_.Turn(right, down);
    UpdateCamera();
}

void ViewScene::Scroll(double steps) {
    fitted_ = false;
    fixed_.reset();
    if (ride_)
        ride_->ChangeSpeed(steps);
    else
        orbit_.Zoom(steps);
    UpdateCamera();
}

void ViewScene::StartOrStopRide() {
    if (track_.empty()) return;
    fitted_ = false;
    if (!ride_) ride_.emplace();
    ride_->Moving = !ride_->Moving;
    rideClock_.restart();
    ride_->Moving ? rideTimer_.start() : rideTimer_.stop();
    UpdateCamera();
}

void ViewScene::LeaveRide() {
    ride_.reset();
    rideTimer_.stop();
    UpdateCamera();
}

void ViewScene::SetBackFaces(bool shown) {
    backFaces_ = shown;
    emit optionsChanged();
}

void ViewScene::SetHelp(bool shown) {
    help_ = shown;
    emit optionsChanged();
}

void ViewScene::SetFine(bool fine) {
    if (fine == fine_) return;
    fine_ = fine;
    emit fineChanged();
}

QString ViewScene::rideText() const {
    if (!ride_)
        return track_.empty() && !summary_.isEmpty() ? QStringLiteral("no track to ride along") : QString();
    return QStringLiteral("%1 units a second%2")
        .arg(ride_->Speed, 0, 'f', ride_->Speed < 10 ? 1 : 0)
        .arg(ride_->Moving ? QString() : QStringLiteral(" (stopped: Space)"));
}

QString ViewScene::helpKeys() const {
    QStringList lines;
    for (const KeyHelp& row : kKeyHelp)
        lines += row.keys;
    return lines.join('\n');
}

QString ViewScene::helpEffects() const {
    QStringList lines;
    for (const KeyHelp& row : kKeyHelp)
        lines += row.effect;
    return lines.join('\n');
}

CameraPose ViewScene::Pose() const {
    if (ride_) return ride_->Pose(track_);
    return fixed_ ? *fixed_ : orbit_.Pose();
}

void ViewScene::UpdateCamera() {
    constexpr double kRideAngle = 0.62;
    const CameraPose pose = Pose();
    CameraLens lens = lens_;
    if (ride_) lens.HalfAngle = kRideAngle;
    eye_ = ToQt(pose.Eye);
    turn_ = RotationOf(pose);
    fieldOfView_ = float(lens.VerticalDegrees());
    lamp_ = ride_ && track_[static_cast<std::size_t>(ride_->Position) % track_.size()].Covered;
    // As large as possible: otherwise distant surfaces get equal depths, and backs show through the walls.
    clipNear_ = std::max(0.05f, DistanceToNearest(pose.Eye) / 3);
    UpdateScaleBar();
    emit cameraChanged();
}

// From the eye to the nearest point of object and track.
float ViewScene::DistanceToNearest(const Vec& eye) const {
    double nearest = std::numeric_limits<double>::infinity();
    const auto add = [&](const Vec& point) {
        const Vec way = point - eye;
        nearest = std::min(nearest, Dot(way, way));
    };
    for (const Vector3D& point : shown_.Object.Points)
        add(ToVec(point));
    for (const PathPoint& point : track_)
        add(point.Position);
    return nearest < std::numeric_limits<double>::infinity() ? float(std::sqrt(nearest)) : 1;
}

void ViewScene::UpdateScaleBar() {
    const double unit = lens_.PixelsPerUnit(orbit_.Distance);
    const double length = RoundLength(0.2 * lens_.Width / unit);
    scaleBarPixels_ = ride_ ? 0 : float(length * unit);
    scaleBarText_ = QStringLiteral("%1 %2").arg(length).arg(length == 1 ? "unit" : "units");
}

// High, and from behind the viewer's left shoulder: what is seen is lit, and shadows fall to its right.
void ViewScene::PlaceSun(const CameraPose& pose) {
    const Vec level = Normalized(pose.Forward - kUp * pose.Forward.y);
    const Vec right = Cross(level, kUp);
    sun_ = RotationOf(LookAlong({}, level * 0.75 + right * 0.25 - kUp, level));
    emit sunChanged();
}

}  // namespace boreforge
