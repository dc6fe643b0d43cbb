// What the window shows, for its QML: the geometry, the camera, and the lines of text.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QQuaternion>
#include <QString>
#include <QTimer>
#include <QVector3D>

#include <optional>
#include <string>

#include "view/Camera.h"
#include "view/Geometry.h"
#include "view/ObjectFile.h"

namespace boreforge {

class ViewScene : public QObject {
    Q_OBJECT
    Q_PROPERTY(QQuick3DGeometry* walls READ walls CONSTANT)
    Q_PROPERTY(QQuick3DGeometry* rails READ rails CONSTANT)
    Q_PROPERTY(QVector3D center MEMBER center_ NOTIFY objectChanged)
    Q_PROPERTY(float radius MEMBER radius_ NOTIFY objectChanged)
    Q_PROPERTY(float groundHeight MEMBER groundHeight_ NOTIFY objectChanged)
    Q_PROPERTY(bool transparent MEMBER transparent_ NOTIFY objectChanged)
    Q_PROPERTY(bool hasTrack READ hasTrack NOTIFY objectChanged)
    Q_PROPERTY(QString summary MEMBER summary_ NOTIFY textChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY textChanged)
    Q_PROPERTY(QVector3D eye MEMBER eye_ NOTIFY cameraChanged)
    Q_PROPERTY(QQuaternion turn MEMBER turn_ NOTIFY cameraChanged)
    Q_PROPERTY(float fieldOfView MEMBER fieldOfView_ NOTIFY cameraChanged)
    Q_PROPERTY(float clipNear MEMBER clipNear_ NOTIFY cameraChanged)
    Q_PROPERTY(float scaleBarPixels MEMBER scaleBarPixels_ NOTIFY cameraChanged)
    Q_PROPERTY(QString scaleBarText MEMBER scaleBarText_ NOTIFY cameraChanged)
    Q_PROPERTY(QString rideText READ rideText NOTIFY cameraChanged)
    Q_PROPERTY(bool lamp MEMBER lamp_ NOTIFY cameraChanged)
    Q_PROPERTY(QQuaternion sun MEMBER sun_ NOTIFY sunChanged)
    Q_PROPERTY(bool fine MEMBER fine_ NOTIFY fineChanged)
    Q_PROPERTY(bool backFaces MEMBER backFaces_ NOTIFY optionsChanged)
    Q_PROPERTY(bool help MEMBER help_ NOTIFY optionsChanged)
    Q_PROPERTY(QString helpKeys READ helpKeys CONSTANT)
    Q_PROPERTY(QString helpEffects READ helpEffects CONSTANT)

  public:
    ViewScene();

    // Shows another object, or the same one again; then the camera stays. If it can't be read, what was shown
    // before stays, with the reason in the bottom line.
    Outcome OpenObject(const std::string& path);
    Outcome OpenTrackFile(const std::string& path);
    // Reads the object again.
    void Reload();
    const std::string& ObjectPath() const { return path_; }

    // Sets the view for a picture. Fails if there is no such view.
    Outcome LookFrom(ViewFrom view);
    void SetSize(int width, int height);

    // What the user does.
    void Fit();
    void Drag(double right, double down, bool pan);
    void Scroll(double steps);
    void StartOrStopRide();
    void LeaveRide();
    void SetBackFaces(bool shown);
    void SetHelp(bool shown);
    void SetFine(bool fine);  // with shadows and smooth edges, which take several times as long to draw
    bool backFaces() const { return backFaces_; }
    bool help() const { return help_; }
    bool isFine() const { return fine_; }
    bool IsRiding() const { return ride_.has_value(); }

    QQuick3DGeometry* walls() { return &walls_; }
    QQuick3DGeometry* rails() { return &rails_; }
    bool hasTrack() const { return !track_.empty(); }
    QString rideText() const;
    QString helpKeys() const;     // a line for each row of kKeyHelp
    QString helpEffects() const;  // the same
    const QString& problem() const { return objectProblem_.isEmpty() ? trackProblem_ : objectProblem_; }
    const QString& summary() const { return summary_; }
    CameraPose Pose() const;

  signals:
    void objectChanged();
    void textChanged();
    void cameraChanged();
    void sunChanged();
    void fineChanged();
    void optionsChanged();

  private:
    void ShowGeometry();
    void PlaceGround();
    void UpdateCamera();
    void PlaceSun(const CameraPose& pose);
    float DistanceToNearest(const Vec& eye) const;
    void UpdateScaleBar();
    void Report(QString& problem, const Outcome& outcome);

    std::string path_, shownPath_;  // which differ while the file can't be read
    ShownObject shown_;
    TrackPath track_;
    WallGeometry walls_;
    RibbonGeometry rails_;
    QVector3D center_;  // of the sphere around object and track
    float radius_ = 1, groundHeight_ = 0;
    bool transparent_ = false;
    QString summary_, objectProblem_, trackProblem_;

    OrbitCamera orbit_;
    CameraLens lens_;
    bool fitted_ = false;              // the user hasn't moved the camera: another size fits it again
    std::optional<CameraPose> fixed_;  // of a picture
    std::optional<Ride> ride_;
    QTimer rideTimer_;
    QElapsedTimer rideClock_;
    QVector3D eye_;
    QQuaternion turn_, sun_;
    float fieldOfView_ = 35, clipNear_ = 0.1f, scaleBarPixels_ = 0;
    QString scaleBarText_;
    bool lamp_ = false, fine_ = true, backFaces_ = true, help_ = false;
};

}  // namespace boreforge
