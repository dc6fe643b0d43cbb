// What the window shows, as properties for its QML: the geometry, the camera, and the lines of text.
#pragma once

#include <QElapsedTimer>
#include <QQmlPropertyMap>
#include <QString>
#include <QTimer>

#include <functional>
#include <string>

#include "view/CameraControl.h"
#include "view/Geometry.h"
#include "view/ObjectFile.h"

namespace boreforge {

class ViewScene {
  public:
    ViewScene();

    // Shows another object, or the same one again; then the camera stays. If it can't be read, what was shown
    // before stays, with the reason in the top line.
    Outcome OpenObject(const std::string& path);
    Outcome OpenTrackFile(const std::string& path);
    // Reads the object again.
    void Reload();
    const std::string& ObjectPath() const { return path_; }

    // Sets the view for a picture. Fails if there is no such view.
    Outcome LookFrom(ViewFrom view);

    // The user's operations of CameraControl.
    void SetSize(int width, int height);
    void Fit();
    void Drag(double right, double down, bool pan);
    // `right` and `down`: of the picture's middle, in pixels.
    void Scroll(double steps, double right = 0, double down = 0);
    void LookAtTunnel(int step);
    void StartOrStopRide();  // does nothing without a track
    void LeaveRide();
    bool IsRiding() const { return camera_.CurrentRide() != nullptr; }
    CameraPose Pose() const { return camera_.Pose(track_); }

    // Shows a word about what a key did, until the next one.
    void Say(const QString& text) { properties.insert("notice", text); }

    // What the user can switch: "backFaces" (shown in red), "help" (the keys), and "fine" (with shadows and
    // smooth edges, which take several times as long to draw).
    void Switch(const char* property, bool on) { properties.insert(property, on); }
    bool IsOn(const char* property) const { return properties.value(property).toBool(); }

    // All that Viewer.qml reads.
    QQmlPropertyMap properties;
    // Called after each change of the camera.
    std::function<void()> Moved = [] {};

  private:
    void ShowGeometry();
    void ShowCamera();
    void ShowProblem();

    std::string path_, shownPath_;  // shownPath_: of the object that was read last
    ShownObject shown_;
    TrackPath track_;
    bool isElsewhere_ = false;  // the track doesn't run through the object
    QString objectProblem_, trackProblem_;
    QQuick3DGeometry walls_, rails_;
    CameraControl camera_;
    QTimer rideTimer_;
    QElapsedTimer rideClock_;
};

}  // namespace boreforge
