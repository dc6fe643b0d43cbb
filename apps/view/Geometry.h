// What the graphics card draws: the object's walls, and the rails along the path.
#pragma once

#include <QQuick3DGeometry>
#include <QVector3D>

#include "shared/Read3DSObject.h"
#include "view/TrackPath.h"

namespace boreforge {

inline QVector3D ToQt(const Vec& v) { return {float(v.x), float(v.y), float(v.z)}; }

// The corners of all faces that have an area: position, normal, colour, and the distances from the face's two
// shorter edges, 0 to 1, by which the shader draws those edges. The longest edge is a quad's diagonal, which
// isn't drawn.
void ShowWalls(const Object3DS& object, QQuick3DGeometry& geometry);

// Two rails and their ties, as thin flat ribbons; the rails' tops are at the height of the path. The shader
// draws a ribbon at least as wide as the material says, in pixels.
void ShowRails(const TrackPath& path, QQuick3DGeometry& geometry);

}  // namespace boreforge
