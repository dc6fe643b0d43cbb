#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {
namespace {

using TraceTrackTest = CoreTest;
using Vec = std::array<double, 3>;

Vec Of(const Vector3D& v) { return {v.x, v.y, v.z}; }
Vec Along(const Vec& a, double s, const Vec& b) { return {a[0] + s * b[0], a[1] + s * b[1], a[2] + s * b[2]}; }
double Dot(const Vec& a, const Vec& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vec Cross(const Vec& a, const Vec& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double Distance(const Vec& a, const Vec& b) { return std::sqrt(Dot(Along(b, -1, a), Along(b, -1, a))); }
Vec Unit(const Vec& a) { return Along({}, 1 / std::sqrt(Dot(a, a)), a); }

// The path by repeated halving of lines, without any polynomial.
struct Curve {
    Vec p0, c0, c1, p1;
    Vec At(double t) const {
        const auto mix = [t](const Vec& a, const Vec& b) { return Along(a, t, Along(b, -1, a)); };
        const Vec a = mix(p0, c0), b = mix(c0, c1), c = mix(c1, p1);
        return mix(mix(mix(a, b), mix(b, c)), mix(a, b)) == Vec{} ? Vec{} : mix(mix(a, b), mix(b, c));
    }
    double Length(double from, double to) const {
        double sum = 0;
        for (int i = 0; i < 4000; ++i)
            sum += Distance(At(from + (to - from) * i / 4000), At(from + (to - from) * (i + 1) / 4000));
        return sum;
    }
};

Curve CurveOf(std::size_t i, std::size_t segments) {
    const auto& nodes = TrackFile.BezierNodes;
    const TrackBezierNode& next = nodes[i + 1 < segments ? i + 1 : 0];
    return {Of(nodes[i].Position), Of(nodes[i].ControlOut), Of(next.ControlIn), Of(next.Position)};
}

// A frame as vectors, turned without matrices or angles: the new right is level with the old up.
struct Frame {
    Vec right, up;
    void Face(const Vec& direction) {
        const Vec forward = Unit(direction);
        right = Unit(Cross(forward, up));
        up = Cross(right, forward);
    }
    // A positive turn lifts the right side.
    void Roll(double a) {
        const Vec old = right;
        right = Along(Along({}, std::cos(a), old), std::sin(a), up);
        up = Along(Along({}, -std::sin(a), old), std::cos(a), up);
    }
};

Vec Column(const Matrix3D& m, int c) { return {m[c], m[4 + c], m[8 + c]}; }
Frame FrameOf(const TraceSample& s) { return {Column(s.Orientation, 0), Column(s.Orientation, 1)}; }

double TurnAt(const TrackBezierNode& node, const Frame& last) {
    if (node.RollFlag) return node.Roll;
    const double bank = std::atan2(last.right[1], last.up[1]), full = 2 * std::acos(-1.0);
    const double direct = node.Roll - bank;
    return std::fabs(direct - full) <= std::fabs(direct) ? direct - full : direct;
}

// Walks one traced segment against an independent reckoning that starts from its own first frame.
void ExpectWalk(std::size_t i) {
    SCOPED_TRACE("segment " + std::to_string(i));
    const TracedSegment& traced = TracedSegments[i];
    const Curve curve = CurveOf(i, TracedSegments.size());
    const std::size_t rollNode = i + 1 < TrackFile.BezierNodes.size() ? i + 1 : 0;
    EXPECT_NEAR(traced.Length, curve.Length(0, 1), 2e-3 * traced.Length + 1e-6);
    const double step = 1 / (10.0 * traced.Length);

    std::vector<Frame> frames{FrameOf(traced.Samples[0])};
    for (std::size_t j = 1; j < traced.Samples.size(); ++j) {
        const double t = traced.Samples[j].PathParam, before = traced.Samples[j - 1].PathParam;
        frames.push_back(frames.back());
        frames.back().Face(Along(curve.At(t), -1, curve.At(t - step)));
        const double spacing = traced.Samples[j].PathLength - traced.Samples[j - 1].PathLength;
        EXPECT_NEAR(curve.Length(before, t), spacing, 2e-3) << j;
        EXPECT_GE(spacing, 0.5 - 1e-4) << j;
        EXPECT_LT(curve.Length(before, t - step), 0.5 + 1e-3) << j << ": taken at the first chance";
    }
    EXPECT_LT(curve.Length(traced.Samples.back().PathParam, 1), 0.5 + Distance(curve.At(1 - step), curve.At(1)) + 1e-3);

    const double turn = frames.size() > 1 ? TurnAt(TrackFile.BezierNodes[rollNode], frames.back()) : 0;
    for (std::size_t j = 0; j < frames.size(); ++j) {
        const TraceSample& sample = traced.Samples[j];
        if (turn != 0) frames[j].Roll(turn * static_cast<double>(j) / static_cast<double>(frames.size() - 1));
        EXPECT_LT(Distance(Column(sample.Orientation, 0), frames[j].right), 4e-3) << j;
        EXPECT_LT(Distance(Column(sample.Orientation, 1), frames[j].up), 4e-3) << j;
        EXPECT_LT(Distance(Column(sample.Orientation, 2), Cross(frames[j].right, frames[j].up)), 4e-3) << j;
        EXPECT_LT(Distance(Column(sample.WorldMatrix, 3), curve.At(sample.PathParam)), 1e-4) << j;
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(Column(sample.WorldMatrix, c), Column(sample.Orientation, c)) << j;
        if (TrackFile.BezierNodes[rollNode].RollFlag && frames.size() > 1)
            EXPECT_NEAR(std::sin(sample.Bank - std::atan2(frames[j].right[1], frames[j].up[1])), 0, 0.02) << j;
    }
}

void ExpectTrace() {
    ASSERT_TRUE(TraceTrack());
    EXPECT_TRUE(TraceIsCurrent());
    ASSERT_EQ(TraceUpperIndex + 1, TrackFile.SegmentCount());
    for (std::size_t i = 0; i < TracedSegments.size(); ++i) {
        ASSERT_GE(TracedSegments[i].SampleCount(), 1);
        ExpectWalk(i);
        if (i > 0) {
            EXPECT_EQ(TracedSegments[i].Samples[0].Orientation, TracedSegments[i - 1].Samples.back().Orientation) << i;
        }
    }
}

// Nodes on a line along negative z, `turns` being Roll and RollFlag of each; the last piece runs back.
void MakeLine(const std::vector<std::pair<float, bool>>& turns) {
    std::vector<TrackBezierNode> nodes;
    for (std::size_t i = 0; i < turns.size(); ++i)
        nodes.push_back(Node({50, 7, 20 - 10 * static_cast<float>(i)}, {0, 0, 2}, {0, 0, -4}, turns[i].first,
                             turns[i].second));
    MakeTrack(nodes);
}

TEST_F(TraceTrackTest, StraightAlongXHasOneFrame) {
    MakeTrack({Node({-30, 12, 40}, {}, {7, 0, 0}), Node({20, 12, 40}, {-21, 0, 0}, {-5, 0, 0})});
    ASSERT_TRUE(TraceTrack());
    EXPECT_NEAR(TracedSegments[0].Length, 50, 1e-2);
    const Matrix3D expected{{0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1}};
    EXPECT_GT(TracedSegments[0].SampleCount(), 80);
    for (const TraceSample& sample : TracedSegments[0].Samples) {
        for (int e = 0; e < 12; ++e)
            EXPECT_NEAR(sample.Orientation[e], expected[e], 1e-6) << e;
        EXPECT_NEAR(sample.WorldMatrix[3], -30 + double(sample.PathLength), 1e-3);
        EXPECT_EQ(sample.WorldMatrix[7], 12);
        EXPECT_EQ(sample.WorldMatrix[11], 40);
        EXPECT_EQ(sample.Bank, 0);
    }
    EXPECT_EQ(MeasureBezierLength({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, {1, 2, 3}), 0);
}

TEST_F(TraceTrackTest, FramesFollowAnIndependentReckoning) {
    MakeTrack(WindingCircuit());
    ExpectTrace();
    MakeTrack({Node({5, 60, -8}, {0, 0, 6}, {0, 9, -14}, 0, true), Node({25, 72, -40}, {-8, 2, 11}, {13, -3, -6}, 2.5f, true),
               Node({52, 55, -60}, {-10, 9, 3}, {4, -12, 8}, -1.7f), Node({30, 49, -20}, {12, 1, -9}, {-9, -1, 9}, -4, true),
               Node({0, 52, 15}, {9, 0, -3}, {-6, 0, 0}, 3)});
    ExpectTrace();
}

TEST_F(TraceTrackTest, UpPointsToTheCentreAllTheWayThroughALoop) {
    const float r = 12, h = r * 0.5522848f;
    MakeTrack({Node({90, 30 - r, -70}, {0, 0, h}, {0, 0, -h}, 0, true), Node({90, 30, -70 - r}, {0, -h, 0}, {0, h, 0}, 0, true),
               Node({90, 30 + r, -70}, {0, 0, -h}, {0, 0, h}, 0, true), Node({90, 30, -70 + r}, {0, h, 0}, {0, -h, 0}, 0, true)});
    ExpectTrace();
    int samples = 0;
    for (const TracedSegment& traced : TracedSegments)
        for (const TraceSample& sample : traced.Samples) {
            const Vec inward = Unit(Along({90, 30, -70}, -1, Column(sample.WorldMatrix, 3)));
            EXPECT_GT(Dot(Column(sample.Orientation, 1), inward), 0.99);
            EXPECT_NEAR(sample.Orientation[0], 1, 1e-4) << "the right axis stays level";
            ++samples;
        }
    EXPECT_NEAR(samples, 2 * 3.14159 * 12 / 0.55, 14);
}

TEST_F(TraceTrackTest, RollsTakeTheTurnOrOneOfTwoWaysToTheBank) {
    const struct {
        const char* name;
        std::pair<float, bool> first, second;
        double turn;  // over the second piece
    } cases[] = {{"a turn on top", {0.5f, true}, {-3.5f, true}, -3.5},
                 {"the bank is reached already", {0.5f, true}, {0.5f, false}, 0},
                 {"down to a bank", {1, true}, {-0.25f, false}, -1.25},
                 {"up to a bank", {-1, true}, {0.5f, false}, 1.5},
                 {"the long way round", {3.1f, true}, {-3.1f, false}, -6.2},
                 {"a full turn less", {-3.1f, true}, {3.1f, false}, 6.2 - 6.28318530717958}};
    for (const auto& [name, first, second, turn] : cases) {
        MakeLine({{9, true}, first, second, {0, true}});
        ASSERT_TRUE(TraceTrack());
        const std::vector<TraceSample>& samples = TracedSegments[1].Samples;
        double turned = 0;
        for (std::size_t j = 1; j < samples.size(); ++j) {
            const Frame before = FrameOf(samples[j - 1]);
            const double part = std::atan2(Dot(FrameOf(samples[j]).right, before.up),
                                           Dot(FrameOf(samples[j]).right, before.right));
            EXPECT_NEAR(part, turn / double(samples.size() - 1), 1e-3) << name << " " << j;
            turned += part;
        }
        EXPECT_NEAR(turned, turn, 2e-3) << name;
        EXPECT_NEAR(FrameOf(TracedSegments[0].Samples[0]).right[1], 0, 1e-6) << "no roll at the start";
        if (std::fabs(turn) > 0.001) {
            EXPECT_NEAR(std::sin(samples.back().Bank - double(first.first) - turn), 0, 2e-3) << name;
        }
    }
}

TEST_F(TraceTrackTest, ShortAndEmptyPiecesKeepTheChain) {
    MakeLine({{0, true}, {0.7f, true}, {1, false}, {0.4f, true}, {0.2f, true}, {0, true}});
    auto& nodes = TrackFile.BezierNodes;
    nodes[2] = Node({50, 7, 9.8f}, {0, 0, 0.05f}, {}, 1);       // a piece of 0.2
    nodes[3] = Node({50, 7, 9.8f}, {}, {0, 0, -4}, 0.4f, true);  // and one of nothing
    ExpectTrace();
    EXPECT_EQ(TracedSegments[1].SampleCount(), 1);
    EXPECT_EQ(TracedSegments[2].SampleCount(), 1);
    EXPECT_EQ(TracedSegments[2].Length, 0);
    EXPECT_EQ(TracedSegments[3].Samples[0].Orientation, TracedSegments[0].Samples.back().Orientation);

    // A first handle of no length leaves the frame as it is.
    MakeTrack({Node({1, 2, 3}, {}, {}), Node({4, 5, 9}, {}, {})});
    ASSERT_TRUE(TraceTrack());
    EXPECT_EQ(TracedSegments[0].Samples[0].Orientation, MatIdentity());
}

TEST_F(TraceTrackTest, WithSpareNodesTheLastPieceStillRunsToNodeZero) {
    MakeTrack(WindingCircuit());
    TrackFile.Segments.resize(4);
    TrackFile.BezierNodes[0].RollFlag = kTrue;
    ExpectTrace();  // rolls by node 4
    EXPECT_LT(Distance(Column(TracedSegments[3].Samples.back().WorldMatrix, 3), {210, 40, -95}), 0.7);
}

TEST_F(TraceTrackTest, TracksThatCantBeWalkedLeaveTheTraceAlone) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        std::function<void(std::vector<TrackBezierNode>&)> spoil;
    } cases[] = {{"one segment", [](auto&) { TrackFile.Segments.resize(1); }},
                 {"none", [](auto&) { TrackFile.Segments.clear(); }},
                 {"too few nodes", [](auto& nodes) { nodes.resize(5); }},
                 {"position", [=](auto& nodes) { nodes[2].Position.y = nan; }},
                 {"control in", [=](auto& nodes) { nodes[0].ControlIn.x = inf; }},
                 {"control out", [=](auto& nodes) { nodes[5].ControlOut.z = -inf; }},
                 {"roll", [=](auto& nodes) { nodes[3].Roll = nan; }},
                 {"too long", [](auto& nodes) { nodes[4].Position.z = 6e5f; }},
                 {"as long as a float can say", [](auto& nodes) { nodes[4].ControlOut.z = 3e38f; }}};
    MakeTrack(WindingCircuit());
    ASSERT_TRUE(TraceTrack());
    const std::int32_t samples = TracedSegments[3].SampleCount();
    for (const auto& [name, spoil] : cases) {
        MakeTrack(WindingCircuit());
        EXPECT_FALSE(TraceIsCurrent()) << name;
        spoil(TrackFile.BezierNodes);
        EXPECT_FALSE(TraceTrack()) << name;
        EXPECT_FALSE(TraceIsCurrent()) << name;
        ASSERT_EQ(TracedSegments.size(), 6u) << name;
        EXPECT_EQ(TracedSegments[3].SampleCount(), samples) << name;
    }
}

}  // namespace
}  // namespace boreforge
