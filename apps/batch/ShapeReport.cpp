#include "batch/ShapeReport.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "shared/Vec.h"

namespace boreforge {

namespace {

constexpr std::size_t kMaxNodesForCrossings = 2000;  // every edge is compared with every other

// A closed line without repeated points, so that every edge has a direction. z is 0.
using Contour = std::vector<Vec>;

Contour ContourOf(const std::vector<Vector3D>& nodes) {
    Contour contour;
    for (const Vector3D& node : nodes)
        contour.push_back({node.x, node.y, 0});
    contour.erase(std::unique(contour.begin(), contour.end()), contour.end());
    while (contour.size() > 1 && contour.front() == contour.back())
        contour.pop_back();
    return contour;
}

const Vec& After(const Contour& contour, std::size_t i) { return contour[(i + 1) % contour.size()]; }
const Vec& Before(const Contour& contour, std::size_t i) {
    return contour[(i + contour.size() - 1) % contour.size()];
}

// The side of the line from a to b on which p is: 1 left, -1 right, 0 on it.
int SideOf(const Vec& a, const Vec& b, const Vec& p) {
    const double product = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
    return product > 0 ? 1 : product < 0 ? -1 : 0;
}

bool IsBetween(const Vec& p, const Vec& a, const Vec& b) {
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

// Whether the direction from v to p is strictly within the counter-clockwise angle from a to b around v.
bool IsInAngle(const Vec& p, const Vec& a, const Vec& v, const Vec& b) {
    const bool leftOfA = SideOf(v, a, p) > 0, rightOfB = SideOf(v, b, p) < 0;
    const int turn = SideOf(v, a, b);
    if (turn != 0) return turn > 0 ? leftOfA && rightOfB : leftOfA || rightOfB;
    const bool isStraight = (a.x - v.x) * (b.x - v.x) + (a.y - v.y) * (b.y - v.y) < 0;
    return isStraight && leftOfA;
}

// Whether the line c-v-d crosses the line a-v-b and doesn't just touch it.
bool PassesThrough(const Vec& a, const Vec& v, const Vec& b, const Vec& c, const Vec& d) {
    return (IsInAngle(c, a, v, b) && IsInAngle(d, b, v, a)) ||
           (IsInAngle(d, a, v, b) && IsInAngle(c, b, v, a));
}

// Whether edge i of one contour crosses edge k of the other, which may be the same one. A crossing at a node
// counts for the edges that start there.
bool EdgesCross(const Contour& one, std::size_t i, const Contour& other, std::size_t k) {
    const Vec &a = one[i], &b = After(one, i), &c = other[k], &d = After(other, k);
    const int sideOfA = SideOf(c, d, a), sideOfB = SideOf(c, d, b);
    const int sideOfC = SideOf(a, b, c), sideOfD = SideOf(a, b, d);
    if (sideOfA * sideOfB < 0 && sideOfC * sideOfD < 0) return true;
    if (a == c) return PassesThrough(Before(one, i), a, b, Before(other, k), d);
    if (sideOfA == 0 && a != d && IsBetween(a, c, d)) return PassesThrough(Before(one, i), a, b, c, d);
    if (sideOfC == 0 && c != b && IsBetween(c, a, b)) return PassesThrough(a, c, b, Before(other, k), d);
    return false;
}

bool ContoursCross(const Contour& one, const Contour& other) {
    for (std::size_t i = 0; i < one.size(); ++i)
        for (std::size_t k = &one == &other ? i + 1 : 0; k < other.size(); ++k)
            if (EdgesCross(one, i, other, k)) return true;
    return false;
}

// Whether the origin is enclosed: a ray from it to the right crosses an odd number of edges.
bool EnclosesOrigin(const Contour& contour) {
    bool isInside = false;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vec& low = contour[i].y < After(contour, i).y ? contour[i] : After(contour, i);
        const Vec& high = &low == &contour[i] ? After(contour, i) : contour[i];
        if (low.y <= 0 && high.y > 0 && SideOf(low, high, {}) > 0) isInside = !isInside;
    }
    return isInside;
}

double DistanceFromOrigin(const Vec& a, const Vec& b) {
    const Vec edge = b - a;
    const double length = Dot(edge, edge);
    return Length(length > 0 ? a + edge * std::clamp(-Dot(a, edge) / length, 0., 1.) : a);
}

double Thousandths(double value) { return std::round(value * 1000) / 1000; }

}  // namespace

std::vector<std::string> ShapeWarnings(const TunnelShapeState& shape, bool doubleSided) {
    const std::size_t nodes = shape.InsideNodes.size();
    if (nodes == 0) return {"The shape is empty, so the object has no faces."};
    if (!IsFinite(shape.InsideNodes) || !IsFinite(shape.OutsideNodes))
        return {"The shape has coordinates that are not finite; most programs will refuse the object."};
    std::vector<std::string> warnings;
    if (nodes < 3) warnings.push_back("The shape has fewer than three nodes.");
    const std::vector<Vector3D>* const nodeLists[] = {&shape.InsideNodes, &shape.OutsideNodes};
    const Contour contours[] = {ContourOf(*nodeLists[0]), ContourOf(*nodeLists[1])};
    const std::string names[] = {"The inside contour", "The outside contour"};
    for (int i = 0; i < 2; ++i) {
        if (TwiceAreaOf(*nodeLists[i]) < 0 && !doubleSided)
            warnings.push_back(names[i] + " runs clockwise, so its walls face the wrong way.");
        if (nodes <= kMaxNodesForCrossings && ContoursCross(contours[i], contours[i]))
            warnings.push_back(names[i] + " crosses itself.");
    }
    if (nodes <= kMaxNodesForCrossings && ContoursCross(contours[0], contours[1]))
        warnings.push_back("The contours cross each other.");
    return warnings;
}

std::optional<Clearance> ClearanceOf(const TunnelShapeState& shape) {
    if (shape.InsideNodes.empty() || !IsFinite(shape.InsideNodes)) return std::nullopt;
    const Contour contour = ContourOf(shape.InsideNodes);
    const auto [left, right] = std::ranges::minmax(contour, {}, &Vec::x);
    const auto [bottom, top] = std::ranges::minmax(contour, {}, &Vec::y);
    double nearest = EnclosesOrigin(contour) ? std::numeric_limits<double>::infinity() : 0;
    for (std::size_t i = 0; i < contour.size(); ++i)
        nearest = std::min(nearest, DistanceFromOrigin(contour[i], After(contour, i)));
    return Clearance{Thousandths(right.x - left.x), Thousandths(top.y - bottom.y), Thousandths(nearest)};
}

}  // namespace boreforge
