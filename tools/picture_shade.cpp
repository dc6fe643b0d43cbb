#include "picture_shade.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace boreforge {

namespace {

// From the values of pixels. A square is close to their curve, and the same on every machine.
constexpr Vec Linear(double red, double green, double blue) {
    return {red * red, green * green, blue * blue};
}
Vec Linear(const ColorRGB& color) {
    return Linear(color.red / 255.0, color.green / 255.0, color.blue / 255.0);
}

constexpr Vec kHorizon = Linear(0.90, 0.93, 0.95), kZenith = Linear(0.42, 0.60, 0.80);
constexpr Vec kGround = Linear(0.55, 0.61, 0.48), kGroundLine = Linear(0.48, 0.54, 0.41);
constexpr Vec kRail = Linear(0.93, 0.30, 0.10), kTie = Linear(0.34, 0.29, 0.27);
constexpr Vec kSunLight{0.86, 0.82, 0.73}, kSkyLight{0.36, 0.42, 0.50}, kGroundLight{0.20, 0.20, 0.17};
constexpr Vec kLampLight{1.9, 1.78, 1.58};
constexpr double kLampReach = 14, kDaylightDepth = 7;  // units
constexpr std::size_t kMostPortals = 4;
constexpr double kEdgeShade = 0.45, kGroundShade = 0.58;  // shares of the light that are taken away

// High, and from behind the viewer's left shoulder: what is seen is lit, and shadows fall to its right.
Vec SunFor(const PictureCamera& camera) {
    const Vec level = Normalized(camera.Forward - kUp * camera.Forward.y);
    return Normalized(kUp - level * 0.75 - Cross(level, kUp) * 0.25);
}

// The share of the light that falls from `way` straight on a surface.
double Facing(const Vec& normal, const Vec& way) { return std::fabs(Dot(normal, Normalized(way))); }

// How much the point lies on a line along an edge, 0 to 1. A face's longest side is no edge: it halves a
// quad. Lines are about a pixel wide and vanish where there would be too many of them.
double EdgeAt(const FaceLook& look, const Vec& point, double pixel, double facing) {
    const double longest = std::max({look.Sides[0], look.Sides[1], look.Sides[2]});
    double edge = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double side = look.Sides[i];
        if (side == longest || !(side > 0)) continue;
        const Vec along = look.Corners[(i + 1) % 3] - look.Corners[i];
        const double distance = Length(Cross(along, point - look.Corners[i])) / side;
        const double spacing = look.Area / side * facing / pixel;
        if (distance < 0.6 * pixel) edge = std::max(edge, std::clamp((spacing - 4) / 12, 0.0, 1.0));
    }
    return edge;
}

// How much a point of the ground lies on a line, 0 to 1. Lines every 10 and every 100 units show how large
// everything is; they vanish where there would be too many of them.
double GridAt(const Vec& point, double pixel, double facing) {
    double grid = 0;
    for (const double step : {10.0, 100.0}) {
        const auto onLine = [&](double along) {
            return std::fabs(along - step * std::round(along / step)) < 0.9 * pixel;
        };
        if (onLine(point.x) || onLine(point.z))
            grid = std::max(grid, std::clamp((step * facing / pixel - 6) / 40, 0.0, 1.0));
    }
    return grid;
}

}  // namespace

PictureShader::PictureShader(const PictureScene& scene)
    : scene_(scene), camera_(scene.Camera), sun_(SunFor(scene.Camera)), shadows_(scene.Object, sun_) {
    for (const ObjectMaterial& material : scene.Object.Materials)
        colors_.push_back(Linear(material.Color));

    portals_ = scene.Portals;
    std::sort(portals_.begin(), portals_.end(), [&](const Vec& one, const Vec& other) {
        return Length(one - camera_.Eye) < Length(other - camera_.Eye);
    });
    portals_.resize(std::min(portals_.size(), kMostPortals));

    Vec low = ToVec(scene.Object.Points[0]), high = low;
    for (const Vector3D& from : scene.Object.Points) {
        const Vec point = ToVec(from);
        low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
    }
    haze_ = 2.2 * Length(high - low) + 200;
    ground_ = low.y;
    for (const RailPiece& piece : scene.Rails)
        ground_ = std::min(ground_, piece.from.y - 1);
}

void PictureShader::LookAt(std::uint32_t index, FaceLook& look) const {
    if (look.Face == index) return;
    const ObjectFace& face = scene_.Object.Faces[index];
    look.Face = index;
    look.Corners = {ToVec(scene_.Object.Points[face.a]), ToVec(scene_.Object.Points[face.b]),
                    ToVec(scene_.Object.Points[face.c])};
    const Vec across = Cross(look.Corners[1] - look.Corners[0], look.Corners[2] - look.Corners[0]);
    look.Area = Length(across);
    look.Normal = Normalized(across, kUp);
    // A face is seen from both sides.
    if (Dot(look.Normal, look.Corners[0] - camera_.Eye) > 0) look.Normal = look.Normal * -1;
    look.Color = colors_[face.Material];
    for (std::size_t i = 0; i < 3; ++i)
        look.Sides[i] = Length(look.Corners[(i + 1) % 3] - look.Corners[i]);
}

Vec PictureShader::LightOn(const Vec& way, const Vec& normal) const {
    const Vec point = camera_.Eye + way;
    const double slack = 2 * shadows_.ColumnWidth();
    const double lit = shadows_.Free(point + normal * slack, slack);
    const Vec sunlight = kSunLight * (lit * std::max(0.0, Dot(normal, sun_)));
    const Vec skylight = Mix(kGroundLight, kSkyLight, 0.5 + 0.5 * normal.y) * (0.8 + 0.2 * lit);
    if (!scene_.Lamp) return sunlight + skylight;
    double daylight = 0.3;
    for (const Vec& portal : portals_) {
        const double depth = Length(point - portal) / kDaylightDepth;
        daylight += 1.5 / (1 + depth * depth);
    }
    const double reach = Length(way) / kLampReach;
    const double lamp = (0.3 + 0.7 * Facing(normal, way)) / (1 + reach * reach);
    return sunlight + skylight * daylight + kLampLight * lamp;
}

Vec PictureShader::Hazy(const Vec& color, double distance) const {
    const double share = distance / haze_;
    return Mix(kHorizon, color, 1 / (1 + share * share));
}

Vec PictureShader::Face(std::uint32_t index, const Vec& way, FaceLook& look) const {
    LookAt(index, look);
    const double distance = Length(way);
    const double edge = EdgeAt(look, camera_.Eye + way, distance / camera_.Focal, Facing(look.Normal, way));
    return Hazy(look.Color * LightOn(way, look.Normal) * (1 - kEdgeShade * edge), distance);
}

Vec PictureShader::Rail(const RailPiece& piece, std::uint32_t side, const Vec& way) const {
    constexpr double kGlow = 0.45;  // to be seen even in the dark
    const Vec light = LightOn(way, Normalized(SideOf(piece, side)));
    return (piece.isTie ? kTie : kRail) * Mix(light, {1, 1, 1}, kGlow);
}

Vec PictureShader::ThroughFace(const Vec& face, double depth) {
    constexpr double kShowsThrough = 0.25, kDeepest = 12;
    const double share = depth / kDeepest;
    return Mix(face, kRail, kShowsThrough / (1 + share * share));
}

Vec PictureShader::Background(const Vec& ray) const {
    const Vec direction = Normalized(ray);
    if (direction.y >= 0 || camera_.Eye.y <= ground_)
        return Mix(kHorizon, kZenith, std::sqrt(std::clamp(direction.y * 1.4, 0.0, 1.0)));
    const double distance = (ground_ - camera_.Eye.y) / direction.y;
    const Vec point = camera_.Eye + direction * distance;
    const Vec ground = Mix(kGround, kGroundLine, GridAt(point, distance / camera_.Focal, -direction.y));
    const double shadow = 1 - shadows_.Free(point, shadows_.ColumnWidth());
    return Hazy(ground * (1 - kGroundShade * shadow), distance);
}

}  // namespace boreforge
