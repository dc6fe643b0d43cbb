#include "sample_path.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/Values.h"
#include "trackfile/TrackDocument.h"

namespace boreforge {

namespace {

constexpr double kBankOfBend = 18;     // radians of bank, times the curve's radius in units
constexpr double kMaxBank = 0.6;       // radians
constexpr double kPortalCover = -1.5;  // a tunnel starts just before the ground reaches the rails
constexpr double kSampleSpacing = 8;   // units between the ground's samples of the path

struct Vec {
    double x = 0, y = 0, z = 0;
    friend Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec operator*(double f, const Vec& a) { return {f * a.x, f * a.y, f * a.z}; }
};

struct PathPoint {
    Vec place;
    Vec direction;  // of travel, of length 1
    double cover = 0;
    RollStyle roll = RollStyle::Target;
    double turn = 0;
};

double Length(const Vec& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

Vector3D Stored(const Vec& v) { return {OnGrid(v.x), OnGrid(v.y), OnGrid(v.z)}; }

Vec PlaceOf(const Waypoint& w) { return {w.x, w.y, w.z}; }

// A closed curve of cubic spans, one after each waypoint, with continuous curvature at the joints.
class ClosedCurve {
  public:
    explicit ClosedCurve(std::span<const Waypoint> waypoints)
        : waypoints_(waypoints), slopes_(waypoints.size()), chords_(waypoints.size()) {
        for (std::size_t i = 0; i < waypoints.size(); ++i)
            chords_[i] = Length(PlaceOf(waypoints[After(i)]) - PlaceOf(waypoints[i]));
        // Each sweep more than halves the error of the slopes.
        for (int sweep = 0; sweep < 60; ++sweep)
            for (std::size_t i = 0; i < waypoints.size(); ++i)
                BalanceSlope(i);
    }

    PathPoint At(std::size_t span, double u) const {
        const Waypoint& w = waypoints_[span];
        const Waypoint& next = waypoints_[After(span)];
        const Vec a = PlaceOf(w), b = PlaceOf(next);
        const Vec ma = chords_[span] * slopes_[span], mb = chords_[span] * slopes_[After(span)];
        const double v = 1 - u;
        const Vec speed = 6 * u * v * (b - a) + v * (1 - 3 * u) * ma + u * (3 * u - 2) * mb;
        return {v * v * (1 + 2 * u) * a + u * v * v * ma + u * u * (3 - 2 * u) * b - u * u * v * mb,
                1 / Length(speed) * speed, w.cover + (next.cover - w.cover) * u, w.roll, w.turn};
    }

  private:
    std::size_t After(std::size_t i) const { return i + 1 < waypoints_.size() ? i + 1 : 0; }

    // Sets the slope that makes the curvature continuous at a waypoint, given its neighbours' slopes.
    void BalanceSlope(std::size_t i) {
        const std::size_t before = i > 0 ? i - 1 : waypoints_.size() - 1, after = After(i);
        const double back = chords_[before], ahead = chords_[i];
        const Vec place = PlaceOf(waypoints_[i]);
        const Vec in = 1 / back * (place - PlaceOf(waypoints_[before]));
        const Vec out = 1 / ahead * (PlaceOf(waypoints_[after]) - place);
        slopes_[i] =
            0.5 / (back + ahead) * (ahead * (3 * in - slopes_[before]) + back * (3 * out - slopes_[after]));
    }

    std::span<const Waypoint> waypoints_;
    std::vector<Vec> slopes_;
    std::vector<double> chords_;
};

// `count` points at equal distances along the curve through the waypoints. If `count` is 0, as many as fit at
// a distance of `spacing`. `spacing` becomes their exact distance.
std::vector<PathPoint> Follow(std::span<const Waypoint> waypoints, int count, double& spacing) {
    constexpr std::size_t kSteps = 64;  // per span, to measure its length
    const ClosedCurve curve(waypoints);
    const std::size_t steps = kSteps * waypoints.size();
    const auto at = [&](std::size_t step, double part) {
        return curve.At(step / kSteps, (static_cast<double>(step % kSteps) + part) / kSteps);
    };
    std::vector<double> walked{0};
    for (std::size_t step = 0; step < steps; ++step)
        walked.push_back(walked.back() + Length(at(step, 1).place - at(step, 0).place));
    if (count == 0) count = static_cast<int>(walked.back() / spacing);
    spacing = walked.back() / count;

    std::vector<PathPoint> points;
    std::size_t step = 0;
    for (int i = 0; i < count; ++i) {
        while (walked[step + 1] <= spacing * i)
            ++step;
        points.push_back(at(step, (spacing * i - walked[step]) / (walked[step + 1] - walked[step])));
    }
    return points;
}

// The bank at a point whose neighbours are `spacing` units away; above 0 in a left curve.
float BankOf(const PathPoint& before, const PathPoint& after, double spacing) {
    const Vec &in = before.direction, &out = after.direction;
    const double bend = (in.z * out.x - in.x * out.z) / (2 * spacing);
    return OnGrid(std::clamp(kBankOfBend * bend, -kMaxBank, kMaxBank));
}

TrackBezierNode NodeAt(const PathPoint& p, double spacing) {
    const Vector3D at = Stored(p.place), handle = Stored(spacing / 3 * p.direction);
    TrackBezierNode node;
    node.Position = at;
    node.ControlIn = {at.x - handle.x, at.y - handle.y, at.z - handle.z};
    node.ControlOut = {at.x + handle.x, at.y + handle.y, at.z + handle.z};
    node.RollFlag = ToTruth(p.roll != RollStyle::Target);
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
    const int left = static_cast<int>(std::floor(x / size)), top = static_cast<int>(std::floor(z / size));
    const auto ease = [](double u) { return u * u * (3 - 2 * u); };
    const double u = ease(x / size - left), v = ease(z / size - top);
    return (1 - v) * ((1 - u) * Scatter(left, top) + u * Scatter(left + 1, top)) +
           v * ((1 - u) * Scatter(left, top + 1) + u * Scatter(left + 1, top + 1));
}

void LayTrack(std::span<const Waypoint> waypoints, int count) {
    double spacing = 0;
    const std::vector<PathPoint> points = Follow(waypoints, count, spacing);
    float bankBefore = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PathPoint& p = points[i];
        const PathPoint& next = points[(i + 1) % points.size()];
        // Tracing starts without roll, so the last piece has to end without it.
        const bool upright = i == 0 || p.roll == RollStyle::Loop;
        const float bank = upright ? 0 : BankOf(points[i - 1], next, spacing);
        TrackBezierNode node = NodeAt(p, spacing);
        node.Roll = p.roll == RollStyle::Added ? bank - bankBefore : bank;
        if (p.roll == RollStyle::Loop) node.Roll = OnGrid(p.turn);
        bankBefore = bank;
        TrackFile.BezierNodes.push_back(node);
        TrackFile.Segments.emplace_back().IsTunnel = ToTruth(std::max(p.cover, next.cover) > kPortalCover);
    }
}

Ground::Ground(std::span<const Waypoint> waypoints) {
    double spacing = kSampleSpacing;
    for (const PathPoint& p : Follow(waypoints, 0, spacing))
        samples_.push_back(Stored(p.place + Vec{0, p.cover, 0}));
}

double Ground::HeightAt(double x, double z) const {
    double weights = 0, heights = 0, nearest = 1e9;
    for (const Vector3D& sample : samples_) {
        const double square = (sample.x - x) * (sample.x - x) + (sample.z - z) * (sample.z - z);
        const double weight = 1 / ((square + 4) * (square + 4));
        weights += weight;
        heights += weight * sample.y;
        nearest = std::min(nearest, square);
    }
    return heights / weights + 18 * Relief(x, z, 90) * nearest / (nearest + 3600);
}

}  // namespace boreforge
