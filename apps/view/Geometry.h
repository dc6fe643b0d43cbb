// What the graphics card draws: the object's walls, and thin ribbons along lines.
#pragma once

#include <QByteArray>
#include <QQuick3DGeometry>
#include <QVector3D>

#include <vector>

#include "shared/Read3DSObject.h"
#include "view/TrackPath.h"

namespace boreforge {

inline QVector3D ToQt(const Vec& v) { return {float(v.x), float(v.y), float(v.z)}; }

// A flat band along a straight line. It is drawn at least as wide as the material says, in pixels.
struct Ribbon {
    Vec from, to;
    Vec aside;  // half of its width
    QVector3D color;
};

// The corners of all faces that have an area: position, normal, colour, and the distances from the face's two
// shorter edges, 0 to 1, by which the shader draws those edges. The longest edge is a quad's diagonal, which
// isn't drawn.
QByteArray WallVertices(const Object3DS& object);

// Two rails and their ties; the rails' tops are at the height of the path.
std::vector<Ribbon> RailsOf(const TrackPath& path);

class WallGeometry : public QQuick3DGeometry {
  public:
    WallGeometry();
    void Show(const Object3DS& object);
};

class RibbonGeometry : public QQuick3DGeometry {
  public:
    RibbonGeometry();
    void Show(const std::vector<Ribbon>& ribbons);
};

}  // namespace boreforge
