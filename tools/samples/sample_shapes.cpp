#include "sample_shapes.h"

#include <cmath>
#include <cstddef>

#include "editor/TunnelShape.h"
#include "sample_path.h"

namespace boreforge {

namespace {

constexpr double kPi = 3.14159265358979;
constexpr double kWall = 0.5;
constexpr float kFloor = -1;

struct Direction {
    double x, y;
};

// The direction to the right of the line from a to b, which is outward on a counter-clockwise contour.
Direction Outward(const Vector3D& a, const Vector3D& b) {
    const double x = double(b.x) - a.x, y = double(b.y) - a.y;
    const double length = std::sqrt(x * x + y * y);
    return {y / length, -x / length};
}

// Derives the outside contour: every side is moved outward by the wall's thickness.
void BuildWall() {
    const auto& inside = TunnelShape.InsideNodes;
    const std::size_t count = inside.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Direction a = Outward(inside[(i + count - 1) % count], inside[i]);
        const Direction b = Outward(inside[i], inside[(i + 1) % count]);
        const double reach = kWall / (1 + a.x * b.x + a.y * b.y);
        TunnelShape.OutsideNodes[i] = {OnGrid(inside[i].x + reach * (a.x + b.x)),
                                       OnGrid(inside[i].y + reach * (a.y + b.y)), 0};
    }
}

// An arc of an ellipse with `count` nodes, including both ends. Angles are in degrees, counter-clockwise from
// the right.
struct Arc {
    double centreX, centreY, halfWidth, height;
    double from, to;
    int count;
};

void AddArc(const Arc& arc) {
    for (int i = 0; i < arc.count; ++i) {
        const double angle = (arc.from + (arc.to - arc.from) * i / (arc.count - 1)) * kPi / 180;
        AddShapeNode({OnGrid(arc.centreX + arc.halfWidth * std::cos(angle)),
                      OnGrid(arc.centreY + arc.height * std::sin(angle)), 0});
    }
}

}  // namespace

void MakeHorseshoe() {
    ResetTunnelShape();
    AddShapeNode({1.875f, kFloor, 0});
    AddArc({0, 1.25, 2.25, 2.25, -30, 210, 17});
    AddShapeNode({-1.875f, kFloor, 0});
    BuildWall();
}

void MakeRoundTube() {
    constexpr int kNodes = 32;
    constexpr double kStep = 360.0 / kNodes;
    ResetTunnelShape();
    AddArc({0, 1.25, 2.25, 2.25, -90 + kStep / 2, 270 - kStep / 2, kNodes});
    BuildWall();
}

void MakeDoubleTrackArch() {
    ResetTunnelShape();
    AddShapeNode({2.25f, kFloor, 0});
    AddArc({-2, 1, 4.25, 3, 0, 180, 21});
    AddShapeNode({-6.25f, kFloor, 0});
    BuildWall();
}

}  // namespace boreforge
