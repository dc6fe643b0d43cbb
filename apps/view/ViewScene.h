// What the window shows, as properties for its QML: the geometry, the camera, and the lines of text.
#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QQmlPropertyMap>
#include <QString>
#include <QTimer>

#include <functional>
#include <string>
#include <utility>

#include "view/CameraControl.h"
#include "view/Geometry.h"

namespace boreforge {

// When a file was last written, and its size. Invalid, with 0, if there is no file.
using FileStamp = std::pair<QDateTime, qint64>;

class ViewScene {
  public:
    ViewScene();

    // Shows another object, or the same one again; then the camera stays. If it can't be read, what was shown
    // before stays, with the reason in the top line.
    Outcome OpenObject(const std::string& path);
    Outcome OpenTrackFile(const std::string& path);
    // From now on, reads the object again once its file has changed and then stopped changing.
    void FollowFile();

    const std::string& ObjectPath() const { return path_; }
    const Object3DS& Object() const { return object_; }
    const TrackPath& Track() const { return track_; }

    // Call ShowCamera after changing the camera.
    CameraControl camera;
    void ShowCamera();
    // Called by ShowCamera.
    std::function<void()> onMoved = [] {};
    CameraPose Pose() const { return camera.Pose(track_); }

    // Shows a short notice until the next key is pressed.
    void ShowNotice(const QString& text) { properties.insert("notice", text); }

    // What the user can switch: "backFaces" (shown in red), "help" (the keys), and "fine" (with shadows and
    // smooth edges, which take several times as long to draw).
    void Switch(const char* property, bool on) { properties.insert(property, on); }
    bool IsOn(const char* property) const { return properties.value(property).toBool(); }

    // All that Viewer.qml reads.
    QQmlPropertyMap properties;

  private:
    void ShowGeometry();

    std::string path_, shownPath_;     // shownPath_: of the object that was read last
    FileStamp readStamp_, lastStamp_;  // of the object's file: at the last read, and at the last look
    Object3DS object_;
    TrackPath track_;
    QQuick3DGeometry walls_, rails_;
    QTimer fileTimer_, rideTimer_;
    QElapsedTimer rideClock_;
};

}  // namespace boreforge
