#include "view/Geometry.h"

#include <QVector2D>
#include <QVector4D>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "shared/ObjectSurfaces.h"

namespace boreforge {

namespace {

struct WallVertex {
    QVector3D position, normal;
    QVector4D color;
    QVector2D edges;
};

struct RibbonVertex {
    QVector3D position, aside;  // the line's point, and from it to this side of the ribbon
    QVector4D color;
};

constexpr QVector3D kRailColor{0.93f, 0.30f, 0.10f}, kTieColor{0.34f, 0.29f, 0.27f};

QVector4D ColorOf(const ObjectMaterial& material) {
    return {float(material.color.red) / 255, float(material.color.green) / 255,
            float(material.color.blue) / 255, 1 - float(material.transparency) / 100};
}

template <class Vertex>
QByteArray ToBytes(const std::vector<Vertex>& vertices) {
    return {reinterpret_cast<const char*>(vertices.data()),
            static_cast<qsizetype>(vertices.size() * sizeof(Vertex))};
}

}  // namespace

QByteArray WallVertices(const Object3DS& object) {
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
    return ToBytes(vertices);
}

std::vector<Ribbon> RailsOf(const TrackPath& path) {
    // Half widths and heights; kTieDepth is the depth of a tie's centre below the path.
    constexpr double kGauge = 0.5, kRailWidth = 0.06, kRailHeight = 0.06;
    constexpr double kTie = 0.75, kTieWidth = 0.13, kTieDepth = 2 * kRailHeight;
    constexpr std::size_t kPointsOfTie = 3;
    std::vector<Ribbon> ribbons;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathPoint& here = path[i];
        const PathPoint& next = path[i + 1 < path.size() ? i + 1 : 0];
        for (const double side : {-kGauge, kGauge}) {
            const Vec from = here.position + here.right * side, to = next.position + next.right * side;
            ribbons.push_back({from, to, here.right * kRailWidth, kRailColor});
            ribbons.push_back({from - here.up * kRailHeight, to - next.up * kRailHeight,
                               here.up * kRailHeight, kRailColor});
        }
        if (i % kPointsOfTie != 0) continue;
        const Vec middle = here.position - here.up * kTieDepth;
        ribbons.push_back(
            {middle - here.right * kTie, middle + here.right * kTie, here.forward * kTieWidth, kTieColor});
    }
    return ribbons;
}

WallGeometry::WallGeometry() {
    setStride(sizeof(WallVertex));
    addAttribute(Attribute::PositionSemantic, offsetof(WallVertex, position), Attribute::F32Type);
    addAttribute(Attribute::NormalSemantic, offsetof(WallVertex, normal), Attribute::F32Type);
    addAttribute(Attribute::ColorSemantic, offsetof(WallVertex, color), Attribute::F32Type);
    addAttribute(Attribute::TexCoord0Semantic, offsetof(WallVertex, edges), Attribute::F32Type);
}

void WallGeometry::Show(const Object3DS& object) {
    setVertexData(WallVertices(object));
    if (!object.points.empty()) {
        const ObjectBounds bounds = BoundsOf(object);
        setBounds(ToQt(ToVec(bounds.low)), ToQt(ToVec(bounds.high)));
    }
    update();
}

RibbonGeometry::RibbonGeometry() {
    setStride(sizeof(RibbonVertex));
    addAttribute(Attribute::PositionSemantic, offsetof(RibbonVertex, position), Attribute::F32Type);
    addAttribute(Attribute::NormalSemantic, offsetof(RibbonVertex, aside), Attribute::F32Type);
    addAttribute(Attribute::ColorSemantic, offsetof(RibbonVertex, color), Attribute::F32Type);
}

void RibbonGeometry::Show(const std::vector<Ribbon>& ribbons) {
    std::vector<RibbonVertex> vertices;
    vertices.reserve(6 * ribbons.size());
    QVector3D low, high;
    for (const Ribbon& ribbon : ribbons) {
        const QVector3D from = ToQt(ribbon.from), to = ToQt(ribbon.to), aside = ToQt(ribbon.aside);
        const QVector4D color(ribbon.color, 1);
        const RibbonVertex corners[] = {
            {from, aside, color}, {from, -aside, color}, {to, aside, color}, {to, -aside, color}};
        for (const std::size_t i : {0u, 1u, 2u, 2u, 1u, 3u})
            vertices.push_back(corners[i]);
        if (vertices.size() == 6) low = high = from;
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min({low[axis], from[axis], to[axis]});
            high[axis] = std::max({high[axis], from[axis], to[axis]});
        }
    }
    setVertexData(ToBytes(vertices));
    setBounds(low, high);
    update();
}

}  // namespace boreforge
