#include "tracing/mZR_TraceTrack.h"

#include <cmath>
#include <limits>
#include <valarray>

#include "support/CoreTest.h"

namespace boreforge {

using TraceTrackTest = CoreTest;
using Vec = std::valarray<double>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Vec Of(const Vector3D& v) { return {v.x, v.y, v.z}; }
Vec Column(const Matrix3D& m, int c) { return {m[c], m[4 + c], m[8 + c]}; }
double Length(const Vec& a) { return std::sqrt((a * a).sum()); }
Vec Cross(const Vec& a, const Vec& b) { return a.cshift(1) * b.cshift(2) - a.cshift(2) * b.cshift(1); }

// The curve of a piece by de Casteljau's construction, without any polynomial.
struct Curve {
    Vec p0, c0, c1, p1;
    Vec At(double t) const {
        const auto on = [t](const Vec& a, const Vec& b) { return Vec((1 - t) * a + t * b); };
        return on(on(on(p0, c0), on(c0, c1)), on(on(c0, c1), on(c1, p1)));
    }
    double LengthBetween(double from, double to) const {
        double sum = 0;
        for (int i = 0; i < 300; ++i)
            sum += Length(At(from + (to - from) * (i + 1) / 300) - At(from + (to - from) * i / 300));
        return sum;
    }
};

// A frame as two vectors, turned without matrices.
struct Frame {
    Vec right, up;
    void Face(const Vec& direction) {
        const Vec side = Cross(direction, up);
        right = side / Length(side);
        up = Cross(right, direction / Length(direction));
    }
    // A positive roll lifts the right side.
    void Roll(double a) {
        const Vec old = right;
        right = std::cos(a) * old + std::sin(a) * up;
        up = std::cos(a) * up - std::sin(a) * old;
    }
    double Bank() const { return std::atan2(right[1], up[1]); }
    double RollFor(const TrackBezierNode& node) const {
        if (node.RollFlag) return node.Roll;
        const double direct = node.Roll - Bank(), around = direct - 2 * std::acos(-1.0);
        return std::fabs(around) <= std::fabs(direct) ? around : direct;
    }
};

// Computes a traced segment again from its first frame on and compares.
void ExpectWalk(std::size_t i) {
    SCOPED_TRACE("segment " + std::to_string(i));
    const auto& nodes = TrackFile.BezierNodes;
    const TrackBezierNode& next = nodes[(i + 1) % TracedSegments.size()];
    const Curve curve{Of(nodes[i].Position), Of(nodes[i].ControlOut), Of(next.ControlIn), Of(next.Position)};
    const TracedSegment& traced = TracedSegments[i];
    EXPECT_NEAR(traced.Length, curve.LengthBetween(0, 1), 1e-3 * traced.Length + 1e-6);
    const double step = 0.1 / traced.Length;

    const Matrix3D& start = traced.Samples[0].Orientation;
    std::vector<Frame> frames{{Column(start, 0), Column(start, 1)}};
    for (std::size_t j = 1; j < traced.Samples.size(); ++j) {
        const double t = traced.Samples[j].PathParam, before = traced.Samples[j - 1].PathParam;
        frames.push_back(frames.back());
        frames.back().Face(curve.At(t) - curve.At(t - step));
        EXPECT_GE(curve.LengthBetween(before, t), 0.5 - 1e-3) << j;
        EXPECT_LT(curve.LengthBetween(before, t - step), 0.5 + 1e-3) << j << ": a sample was due before";
        EXPECT_NEAR(traced.Samples[j].PathLength, curve.LengthBetween(0, t), 3e-3) << j;
    }
    const double rest = step < 1 ? curve.LengthBetween(traced.Samples.back().PathParam, 1 - step) : 0;
    EXPECT_LE(rest, 0.5 + 1e-3) << "room for another sample";
    const double parts = static_cast<double>(frames.size()) - 1;
    const TrackBezierNode& node = nodes[(i + 1) % nodes.size()];
    const double roll = parts > 0 ? frames.back().RollFor(node) / parts : 0;
    for (std::size_t j = 0; j < frames.size(); ++j) {
        const TraceSample& sample = traced.Samples[j];
        frames[j].Roll(roll * static_cast<double>(j));
        const Vec expected[] = {frames[j].right, frames[j].up, Cross(frames[j].right, frames[j].up)};
        for (int c = 0; c < 3; ++c) {
            EXPECT_LT(Length(Column(sample.Orientation, c) - expected[c]), 4e-3) << j << ", axis " << c;
            EXPECT_EQ(Length(Column(sample.WorldMatrix, c) - Column(sample.Orientation, c)), 0) << j;
        }
        EXPECT_LT(Length(Column(sample.WorldMatrix, 3) - curve.At(sample.PathParam)), 1e-4) << j;
        const bool rolled = parts > 0 && (roll != 0 || node.RollFlag);
        EXPECT_GT(std::cos(sample.Bank - (rolled ? frames[j].Bank() : 0)), 0.999) << j;
    }
}

void ExpectTrace() {
    ASSERT_TRUE(TraceTrack());
    ASSERT_EQ(TraceUpperIndex + 1, TrackFile.SegmentCount());
    for (std::size_t i = 0; i < TracedSegments.size(); ++i) {
        ExpectWalk(i);
        if (i == 0) continue;
        EXPECT_EQ(TracedSegments[i].Samples[0].Orientation, TracedSegments[i - 1].Samples.back().Orientation);
    }
}

TEST(MathTest, Atan2HasAFixedValueOnEachAxisAndInEachQuadrant) {
    const double pi = 3.14159265358979;
    const struct {
        double y, x, angle;
    } cases[] = {
        {0, 0, 0},        {0, 5, 0},      {0, -5, pi},      {-0.0, -5, pi},      {2, 0, pi / 2},
        {-2, 0, -pi / 2}, {1, 1, pi / 4}, {-1, 1, -pi / 4}, {1, -1, 3 * pi / 4}, {-1, -1, -3 * pi / 4}};
    for (const auto& [y, x, angle] : cases)
        EXPECT_NEAR(Atan2(y, x), angle, 1e-15) << y << ", " << x;
}

// A compiler that contracts them to one operation rounds once less, and the bytes of an export change.
TEST(MathTest, ProductsAreRoundedBeforeTheyAreAdded) {
    double (*const volatile distance)(const Vector3D&, const Vector3D&) = VecDistance;  // called at run time
    const Vector3D from{0.1F, 0.2F, 0.3F};
    const Vector3D to{1, 2, 1};
    const double dx = double(to.x) - from.x;
    const double dy = double(to.y) - from.y;
    const double dz = double(to.z) - from.z;
    const volatile double squares[] = {dx * dx, dy * dy, dz * dz};  // a store that can't be contracted
    const double expected = std::sqrt(squares[0] + squares[1] + squares[2]);
    ASSERT_NE(std::sqrt(std::fma(dz, dz, std::fma(dy, dy, dx * dx))), expected) << "these points can't tell";
    EXPECT_EQ(distance(from, to), expected);
}

TEST_F(TraceTrackTest, FramesAreThoseOfAnIndependentComputation) {
    MakeTrack({Node({5, 60, -8}, {0, 0, 6}, {0, 9, -14}, 0, true),  // a corkscrew
               Node({25, 72, -40}, {-8, 2, 11}, {13, -3, -6}, 2.5f, true),
               Node({52, 55, -60}, {-10, 9, 3}, {4, -12, 8}, -1.7f),
               Node({30, 49, -20}, {12, 1, -9}, {-9, -1, 9}, -4, true),
               Node({0, 52, 15}, {9, 0, -3}, {-6, 0, 0}, 3)});
    ExpectTrace();
    // With more nodes than segments the last piece still ends at node 0, but rolls by the node after it.
    TrackFile.Segments.resize(3);
    ExpectTrace();
    MakeTrack({Node({90, 18, -70}, {0, 0, 6}, {0, 0, -7}, 0, true),  // a loop
               Node({90, 30, -82}, {0, -7, 0}, {0, 7, 0}, 0, true),
               Node({90, 42, -70}, {0, 0, -7}, {0, 0, 7}, 0, true),
               Node({90, 30, -58}, {0, 7, 0}, {0, -7, 0}, 0, true)});
    ExpectTrace();
}

TEST_F(TraceTrackTest, OnAStraightARollIsARelativeTurnOrTheShorterWayToABank) {
    const struct {
        float bankBefore, roll;
        bool rollFlag;
        double turn;
    } cases[] = {{0.5f, -3.5f, true, -3.5},    {0.5f, 0.5f, false, 0},
                 {1.0f, -0.25f, false, -1.25}, {-1.0f, 0.5f, false, 1.5},
                 {3.1f, -3.1f, false, -6.2},   {-3.1f, 3.1f, false, 6.2 - 6.28318530717958}};
    const Vector3D back{-2, 0, 0}, forth{4, 0, 0};
    for (const auto& [bankBefore, roll, rollFlag, turn] : cases) {
        MakeTrack({Node({50, 7, 20}, back, forth, 9, true), Node({60, 7, 20}, back, forth, bankBefore, true),
                   Node({70, 7, 20}, back, forth, roll, rollFlag)});
        ASSERT_TRUE(TraceTrack());
        const auto& samples = TracedSegments[1].Samples;
        for (std::size_t j = 0; j < samples.size(); ++j) {
            const double part = static_cast<double>(j) / static_cast<double>(samples.size() - 1);
            const Vec right = {0, std::sin(bankBefore + turn * part), std::cos(bankBefore + turn * part)};
            EXPECT_LT(Length(Column(samples[j].Orientation, 0) - right), 1e-4) << turn << " at " << j;
            EXPECT_LT(Length(Column(samples[j].Orientation, 2) - Vec{-1, 0, 0}), 1e-4) << j;
        }
    }
}

TEST_F(TraceTrackTest, ShortAndEmptyPiecesPassTheFrameOn) {
    const Vector3D back{0, 0, 2}, forth{0, 0, -4};
    MakeTrack({Node({50, 7, 20}, back, forth), Node({50, 7, 10}, back, {}, 0.7f, true),
               Node({50, 7, 9.8f}, {0, 0, 0.05f}, {}, 1), Node({50, 7, 9.8f}, {}, forth, 0.4f, true),
               Node({50, 7, 0}, back, forth, 0.2f, true)});
    ExpectTrace();
    EXPECT_EQ(TracedSegments[1].SampleCount() + TracedSegments[2].SampleCount(), 2);
    EXPECT_EQ(TracedSegments[3].Samples[0].Orientation, TracedSegments[0].Samples.back().Orientation);
}

TEST_F(TraceTrackTest, OnlyRollsThatTheWalkReadsMustBeFinite) {
    const struct {
        const char* name;
        std::size_t node, segments;
        bool traced;
    } cases[] = {{"a roll in the circuit", 3, 6, false},
                 {"node 0, which the last piece reads", 0, 6, false},
                 {"node 0, with a node beyond the segments", 0, 5, true},
                 {"the node that the last piece reads", 5, 5, false},
                 {"a node beyond that", 5, 4, true}};
    for (const auto& [name, node, segments, traced] : cases) {
        MakeTrack(WindingCircuit());
        TrackFile.Segments.resize(segments);
        TrackFile.BezierNodes[node].Roll = kNaN;
        EXPECT_EQ(TraceTrack(), traced) << name;
        EXPECT_EQ(TrackTraced, traced) << name;
    }
}

TEST_F(TraceTrackTest, TheRollOfAPieceWithoutSamplesIsNotRead) {
    MakeTrack({Node({50, 7, 20}, {0, 0, 2}, {0, 0, -4}), Node({50, 7, 10}, {0, 0, 2}, {}),
               Node({50, 7, 9.8f}, {}, {0, 0, -4}, kNaN)});
    EXPECT_TRUE(TraceTrack());
}

TEST_F(TraceTrackTest, OnlyPointsThatTheWalkReadsMustBeFinite) {
    const struct {
        const char* name;
        std::size_t node;
        Vector3D TrackBezierNode::*point;
        float value;
        bool traced;
    } cases[] = {{"position", 4, &TrackBezierNode::Position, kNaN, false},
                 {"handle of the last piece", 0, &TrackBezierNode::ControlIn, -INFINITY, false},
                 {"handle of the first piece", 0, &TrackBezierNode::ControlOut, kNaN, false},
                 {"a path that is too long", 2, &TrackBezierNode::Position, 6e5f, false},
                 {"lengths beyond a float", 1, &TrackBezierNode::ControlOut, 3e38f, false},
                 {"position beyond the segments", 5, &TrackBezierNode::Position, kNaN, true},
                 {"handle beyond the segments", 5, &TrackBezierNode::ControlIn, kNaN, true}};
    for (const auto& [name, node, point, value, traced] : cases) {
        MakeTrack(WindingCircuit());
        TrackFile.Segments.resize(5);
        (TrackFile.BezierNodes[node].*point).y = value;
        EXPECT_EQ(TraceTrack(), traced) << name;
    }
}

TEST_F(TraceTrackTest, APathThatCantBeWalkedLeavesNoTrace) {
    void (*const spoilers[])(TrackBezierNode&) = {[](TrackBezierNode& node) { node.Position.y = kNaN; },
                                                  [](TrackBezierNode& node) { node.Roll = kNaN; }};
    for (const auto& spoil : spoilers) {
        MakeTrack(WindingCircuit());
        ASSERT_TRUE(TraceTrack());
        spoil(TrackFile.BezierNodes[3]);
        EXPECT_FALSE(TraceTrack());
        EXPECT_TRUE(TracedSegments.empty());
    }
}

TEST_F(TraceTrackTest, TooFewSegmentsOrNodesAreRefusedAndLeaveTheTrace) {
    const struct { std::size_t nodes, segments; } cases[] = {{6, 0}, {6, 1}, {5, 6}};
    for (const auto& [nodes, segments] : cases) {
        MakeTrack(WindingCircuit());
        ASSERT_TRUE(TraceTrack());
        TrackFile.BezierNodes.resize(nodes);
        TrackFile.Segments.resize(segments);
        EXPECT_FALSE(TraceTrack()) << segments;
        EXPECT_FALSE(TrackTraced) << segments;
        EXPECT_EQ(TraceUpperIndex, static_cast<std::int32_t>(segments) - 1);
        EXPECT_EQ(TracedSegments.size(), 6u) << segments;
    }
}

}  // namespace boreforge
