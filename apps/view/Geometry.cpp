#include "view/Geometry.h"

#include <QVector2D>
#include <QVector4D>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace boreforge {

namespace {

using Attribute = QQuick3DGeometry::Attribute;

struct WallVertex {
    QVector3D position, normal;
    QVector4D color;
    QVector2D edges;
};

struct RibbonVertex {
    QVector3D position, aside;  // the line's point, and from it to this side of the ribbon
    QVector4D color;
};

QVector4D ColorOf(const ObjectMaterial& material) {
    return {float(material.color.red) / 255, float(material.color.green) / 255,
            float(material.color.blue) / 255, 1 - float(material.transparency) / 100};
}

void AddFloats(QQuick3DGeometry& geometry, Attribute::Semantic meaning, std::size_t offset) {
    geometry.addAttribute(meaning, static_cast<int>(offset), Attribute::F32Type);
}

// Replaces the vertices and the attributes that all have.
template <class Vertex>
void SetVertices(const std::vector<Vertex>& vertices, QQuick3DGeometry& geometry) {
    QVector3D low, high;
    for (const Vertex& vertex : vertices) {
        if (&vertex == vertices.data()) low = high = vertex.position;
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], vertex.position[axis]);
            high[axis] = std::max(high[axis], vertex.position[axis]);
        }
    }
    geometry.clear();
    geometry.setStride(sizeof(Vertex));
    geometry.setVertexData({reinterpret_cast<const char*>(vertices.data()),
                            static_cast<qsizetype>(vertices.size() * sizeof(Vertex))});
    geometry.setBounds(low, high);
    AddFloats(geometry, Attribute::PositionSemantic, offsetof(Vertex, position));
    AddFloats(geometry, Attribute::ColorSemantic, offsetof(Vertex, color));
}

// Adds a flat band along a straight line; `aside` is half of its width.
void AddRibbon(std::vector<RibbonVertex>& vertices, const Vec& from, const Vec& to, const Vec& aside,
               const QVector4D& color) {
    const QVector3D start = ToQt(from), end = ToQt(to), side = ToQt(aside);
    const RibbonVertex corners[] = {
        {start, side, color}, {start, -side, color}, {end, side, color}, {end, -side, color}};
    for (const std::size_t i : {0u, 1u, 2u, 2u, 1u, 3u})
        vertices.push_back(corners[i]);
}

}  // namespace

void ShowWalls(const Object3DS& object, QQuick3DGeometry& geometry) {
    std::vector<QVector4D> colors;
    for (const ObjectMaterial& material : object.materials)
        colors.push_back(ColorOf(material));
    std::vector<WallVertex> vertices;
    vertices.reserve(3 * object.faces.size());
    for (const ObjectFace& face : object.faces) {
        const std::array<Vec, 3> corners = {ToVec(object.points[face.a]), ToVec(object.points[face.b]),
                                            ToVec(object.points[face.c])};
        const Vec across = Cross(corners[1] - corners[0], corners[2] - corners[0]);
        if (!(Length(across) > 0)) continue;
        std::array<double, 3> opposite;  // the length of the edge that each corner isn't part of
        for (std::size_t i = 0; i < 3; ++i)
            opposite[i] = Length(corners[(i + 2) % 3] - corners[(i + 1) % 3]);
        const auto longest =
            static_cast<std::size_t>(std::max_element(opposite.begin(), opposite.end()) - opposite.begin());
        for (std::size_t i = 0; i < 3; ++i)
            vertices.push_back(
                {ToQt(corners[i]),
                 ToQt(Normalized(across)),
                 colors[face.material],
                 {i == (longest + 1) % 3 ? 1.0f : 0.0f, i == (longest + 2) % 3 ? 1.0f : 0.0f}});
    }
    SetVertices(vertices, geometry);
    AddFloats(geometry, Attribute::NormalSemantic, offsetof(WallVertex, normal));
    AddFloats(geometry, Attribute::TexCoord0Semantic, offsetof(WallVertex, edges));
    geometry.update();
}

void ShowRails(const TrackPath& path, QQuick3DGeometry& geometry) {
    // Half widths and heights; kTieDepth is the depth of a tie's centre below the path.
    constexpr double kGauge = 0.5, kRailWidth = 0.06, kRailHeight = 0.06;
    constexpr double kTie = 0.75, kTieWidth = 0.13, kTieDepth = 2 * kRailHeight;
    constexpr std::size_t kPointsOfTie = 3;
    constexpr QVector4D kRailColor{0.93f, 0.30f, 0.10f, 1}, kTieColor{0.34f, 0.29f, 0.27f, 1};
    std::vector<RibbonVertex> vertices;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathPoint& here = path[i];
        const PathPoint& next = PointOf(path, i + 1);
        for (const double side : {-kGauge, kGauge}) {
            const Vec from = here.position + here.right * side, to = next.position + next.right * side;
            AddRibbon(vertices, from, to, here.right * kRailWidth, kRailColor);
            AddRibbon(vertices, from - here.up * kRailHeight, to - next.up * kRailHeight,
                      here.up * kRailHeight, kRailColor);
        }
        if (i % kPointsOfTie != 0) continue;
        const Vec middle = here.position - here.up * kTieDepth;
        AddRibbon(vertices, middle - here.right * kTie, middle + here.right * kTie, here.forward * kTieWidth,
                  kTieColor);
    }
    SetVertices(vertices, geometry);
    AddFloats(geometry, Attribute::NormalSemantic, offsetof(RibbonVertex, aside));
    geometry.update();
}

}  // namespace boreforge
