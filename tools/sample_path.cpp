#include "sample_path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/Values.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

constexpr double kBankOfBend = 18;     // radians of bank times units of curve radius
constexpr double kSteepestBank = 0.6;  // radians

// A coordinate of a cubic span: from `a` with the slope `ma` to `b` with `mb`, u from 0 to 1.
double SpanAt(double a, double ma, double b, double mb, double u) {
    const double v = 1 - u;
    return v * v * (1 + 2 * u) * a + u * v * v * ma + u * u * (3 - 2 * u) * b - u * u * v * mb;
}
double SpanSlope(double a, double ma, double b, double mb, double u) {
    return 6 * u * (1 - u) * (b - a) + (1 - u) * (1 - 3 * u) * ma + u * (3 * u - 2) * mb;
}

// A closed curve of cubic spans, with the curvature continuous at the waypoints too.
class ClosedCurve {
  public:
    explicit ClosedCurve(std::span<const Waypoint> waypoints)
        : points_(waypoints.begin(), waypoints.end()), slopes_(points_.size()) {
        for (std::size_t i = 0; i < points_.size(); ++i) {
            const Waypoint& a = points_[i];
            const Waypoint& b = points_[After(i)];
            chords_.push_back(
                std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) + (b.z - a.z) * (b.z - a.z)));
        }
        // Each sweep more than halves the error of the slopes.
        for (int sweep = 0; sweep < 60; ++sweep)
            for (std::size_t i = 0; i < points_.size(); ++i)
                BalanceSlope(i);
    }

    std::size_t SpanCount() const { return points_.size(); }

    PathPoint At(std::size_t span, double u) const {
        const Waypoint& a = points_[span];
        const Waypoint& b = points_[After(span)];
        const Slope& ma = slopes_[span];
        const Slope& mb = slopes_[After(span)];
        const double h = chords_[span];
        PathPoint point;
        point.x = SpanAt(a.x, ma.x * h, b.x, mb.x * h, u);
        point.y = SpanAt(a.y, ma.y * h, b.y, mb.y * h, u);
        point.z = SpanAt(a.z, ma.z * h, b.z, mb.z * h, u);
        const double dx = SpanSlope(a.x, ma.x * h, b.x, mb.x * h, u);
        const double dy = SpanSlope(a.y, ma.y * h, b.y, mb.y * h, u);
        const double dz = SpanSlope(a.z, ma.z * h, b.z, mb.z * h, u);
        const double speed = std::sqrt(dx * dx + dy * dy + dz * dz);
        point.dx = dx / speed;
        point.dy = dy / speed;
        point.dz = dz / speed;
        point.cover = a.cover + (b.cover - a.cover) * u;
        point.roll = a.roll;
        point.turn = a.turn;
        return point;
    }

  private:
    struct Slope {
        double x = 0, y = 0, z = 0;
    };

    std::size_t After(std::size_t i) const { return i + 1 < points_.size() ? i + 1 : 0; }

    // Sets the slope at which both spans of a waypoint bend alike, given the slopes of its neighbours.
    void BalanceSlope(std::size_t i) {
        const std::size_t before = i > 0 ? i - 1 : points_.size() - 1, after = After(i);
        const double hb = chords_[before], ha = chords_[i];
        const auto balanced = [&](double Waypoint::*c, double Slope::*m) {
            const double back = (points_[i].*c - points_[before].*c) / hb;
            const double ahead = (points_[after].*c - points_[i].*c) / ha;
            return (3 * (ha * back + hb * ahead) - ha * slopes_[before].*m - hb * slopes_[after].*m) /
                   (2 * (ha + hb));
        };
        slopes_[i] = {balanced(&Waypoint::x, &Slope::x), balanced(&Waypoint::y, &Slope::y),
                      balanced(&Waypoint::z, &Slope::z)};
    }

    std::vector<Waypoint> points_;
    std::vector<Slope> slopes_;
    std::vector<double> chords_;
};

double Distance(const PathPoint& a, const PathPoint& b) {
    const double x = b.x - a.x, y = b.y - a.y, z = b.z - a.z;
    return std::sqrt(x * x + y * y + z * z);
}

// The bank at a point between two others that are `way` units of path apart; a left curve has it above 0.
float BankBetween(const PathPoint& before, const PathPoint& after, double way) {
    const double bend = (before.dz * after.dx - before.dx * after.dz) / way;
    return OnGrid(std::clamp(kBankOfBend * bend, -kSteepestBank, kSteepestBank));
}

// The bank that each point should have. The walk along a track starts without roll, and so it has to end.
std::vector<float> BanksOf(const std::vector<PathPoint>& points, double piece) {
    std::vector<float> banks(points.size(), 0.0f);
    for (std::size_t i = 1; i < points.size(); ++i)
        if (points[i].roll != RollStyle::Loop)
            banks[i] = BankBetween(points[i - 1], points[(i + 1) % points.size()], 2 * piece);
    return banks;
}

TrackBezierNode NodeAt(const PathPoint& p, double piece) {
    const Vector3D handle{OnGrid(p.dx * piece / 3), OnGrid(p.dy * piece / 3), OnGrid(p.dz * piece / 3)};
    TrackBezierNode node;
    node.Position = {OnGrid(p.x), OnGrid(p.y), OnGrid(p.z)};
    node.ControlIn = VecSubtract(handle, node.Position);
    node.ControlOut = {node.Position.x + handle.x, node.Position.y + handle.y, node.Position.z + handle.z};
    return node;
}

}  // namespace

float OnGrid(double value) { return static_cast<float>(RoundToEven(value * 1024) / 1024); }

double Scatter(int x, int z) {
    std::uint32_t bits =
        static_cast<std::uint32_t>(x) * 0x9E3779B1u + static_cast<std::uint32_t>(z) * 0x85EBCA77u;
    bits = (bits ^ bits >> 15) * 0x2C1B3C6Du;
    bits = (bits ^ bits >> 12) * 0x297A2D39u;
    return (bits >> 16) / 32767.5 - 1;
}

double Relief(double x, double z, double size) {
    const double left = std::floor(x / size), top = std::floor(z / size);
    const double u = x / size - left, v = z / size - top;
    const double su = u * u * (3 - 2 * u), sv = v * v * (3 - 2 * v);
    const auto corner = [&](int i, int j) {
        return Scatter(static_cast<int>(left) + i, static_cast<int>(top) + j);
    };
    return (1 - sv) * ((1 - su) * corner(0, 0) + su * corner(1, 0)) +
           sv * ((1 - su) * corner(0, 1) + su * corner(1, 1));
}

std::vector<PathPoint> FollowWaypoints(std::span<const Waypoint> waypoints, int count, double& length) {
    constexpr int kSteps = 64;  // for each span, to measure it
    const ClosedCurve curve(waypoints);
    const auto at = [&](std::size_t step) {
        return curve.At(step / kSteps % curve.SpanCount(), static_cast<double>(step % kSteps) / kSteps);
    };
    std::vector<double> walked{0};
    for (std::size_t step = 1; step <= kSteps * curve.SpanCount(); ++step)
        walked.push_back(walked.back() + Distance(at(step - 1), at(step)));
    length = walked.back();

    std::vector<PathPoint> points;
    std::size_t step = 0;
    for (int i = 0; i < count; ++i) {
        const double way = length * i / count;
        while (walked[step + 1] <= way)
            ++step;
        const double part = (way - walked[step]) / (walked[step + 1] - walked[step]);
        points.push_back(curve.At(step / kSteps, (static_cast<double>(step % kSteps) + part) / kSteps));
    }
    return points;
}

void LayTrack(std::span<const Waypoint> waypoints, int count) {
    double length = 0;
    const std::vector<PathPoint> points = FollowWaypoints(waypoints, count, length);
    const std::vector<float> banks = BanksOf(points, length / count);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PathPoint& p = points[i];
        TrackBezierNode node = NodeAt(p, length / count);
        node.RollFlag = ToTruth(p.roll != RollStyle::Target);
        node.Roll = banks[i];
        if (p.roll == RollStyle::Added) node.Roll -= banks[i - 1];
        if (p.roll == RollStyle::Loop) node.Roll = OnGrid(p.turn);
        TrackFile.BezierNodes.push_back(node);

        TrackSegment segment;
        segment.IsTunnel = ToTruth(p.cover >= 0 && points[(i + 1) % points.size()].cover >= 0);
        TrackFile.Segments.push_back(segment);
    }
}

Ground::Ground(std::span<const Waypoint> waypoints) {
    double length = 0;
    FollowWaypoints(waypoints, 1, length);
    samples_ = FollowWaypoints(waypoints, static_cast<int>(length / 8), length);
}

double Ground::HeightAt(double x, double z) const {
    double weights = 0, heights = 0, nearest = 1e9;
    for (const PathPoint& p : samples_) {
        const double square = (p.x - x) * (p.x - x) + (p.z - z) * (p.z - z);
        const double weight = 1 / ((square + 4) * (square + 4));
        weights += weight;
        heights += weight * (p.y + p.cover);
        nearest = std::min(nearest, square);
    }
    return heights / weights + 18 * Relief(x, z, 90) * nearest / (nearest + 3600);
}

}  // namespace boreforge
