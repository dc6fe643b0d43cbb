#include "tracing/mZR_TraceTrack.h"

#include <cmath>
#include <limits>

#include "support/CoreTest.h"

namespace boreforge {

using TraceTrackTest = CoreTest;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Vector3D Column(const Matrix3D& m, int column) { return {m[column], m[4 + column], m[8 + column]}; }

TEST_F(TraceTrackTest, OnALoopTheFramesStandOnThePathEveryHalfUnit) {
    // A circle of radius 12 around 90, 30, -70 and in the plane of y and z: four pieces, whose handles are
    // 0.5523 of the radius. It starts at its lowest point, towards -z.
    const float handle = 6.627f;
    MakeTrack({Node({90, 18, -70}, {0, 0, handle}, {0, 0, -handle}),
               Node({90, 30, -82}, {0, -handle, 0}, {0, handle, 0}, 0, true),
               Node({90, 42, -70}, {0, 0, -handle}, {0, 0, handle}, 0, true),
               Node({90, 30, -58}, {0, handle, 0}, {0, -handle, 0}, 0, true)});
    ASSERT_TRUE(TraceTrack());
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < TracedSegments[i].Samples.size(); ++j) {
            SCOPED_TRACE(std::to_string(i) + ", " + std::to_string(j));
            const TraceSample& sample = TracedSegments[i].Samples[j];
            const Vector3D at = Column(sample.WorldMatrix, 3);
            const Vector3D inwards{(90 - at.x) / 12, (30 - at.y) / 12, (-70 - at.z) / 12};
            EXPECT_LT(VecDistance(Column(sample.WorldMatrix, 0), {1, 0, 0}), 1e-4) << "right";
            // A piece starts with the last frame of the one before, which is up to half a unit away.
            EXPECT_LT(VecDistance(Column(sample.WorldMatrix, 1), inwards), j == 0 ? 0.05 : 0.01) << "up";
            EXPECT_NEAR(sample.PathLength, 0.55 * static_cast<double>(j), 0.055 * static_cast<double>(j));
            EXPECT_NEAR(TracedSegments[i].Length, 12 * 3.1416 / 2, 0.02);
        }
}

TEST_F(TraceTrackTest, APathThatCantBeWalkedLeavesNoTraceAndTooShortATrackTheOldOne) {
    using Nodes = std::vector<TrackBezierNode>;
    const struct {
        const char* name;
        std::size_t segments;  // with six nodes
        void (*spoil)(Nodes&);
        bool traced;
        std::size_t left;  // traced segments
    } cases[] = {{"no segments", 0, [](Nodes&) {}, false, 6},
                 {"one segment", 1, [](Nodes&) {}, false, 6},
                 {"more segments than nodes", 7, [](Nodes&) {}, false, 6},
                 {"position", 5, [](Nodes& n) { n[4].Position.y = kNaN; }, false, 0},
                 {"handle of the last piece", 5, [](Nodes& n) { n[0].ControlIn.x = -INFINITY; }, false, 0},
                 {"handle of the first piece", 5, [](Nodes& n) { n[0].ControlOut.z = kNaN; }, false, 0},
                 {"too long a path", 5, [](Nodes& n) { n[2].Position.y = 6e5f; }, false, 0},
                 {"a length beyond a float", 5, [](Nodes& n) { n[1].ControlOut.y = 3e38f; }, false, 0},
                 {"position after the segments", 5, [](Nodes& n) { n[5].Position.y = kNaN; }, true, 5},
                 {"roll", 6, [](Nodes& n) { n[3].Roll = kNaN; }, false, 0},
                 {"roll of the last piece", 6, [](Nodes& n) { n[0].Roll = kNaN; }, false, 0},
                 {"roll after the last of fewer pieces", 5, [](Nodes& n) { n[5].Roll = kNaN; }, false, 0},
                 {"roll that no piece reads", 5, [](Nodes& n) { n[0].Roll = kNaN; }, true, 5},
                 {"roll of a piece of one sample", 6,
                  [](Nodes& n) {
                      n[3] = Node(n[2].Position, {}, {}, kNaN);
                      n[2].ControlOut = n[2].Position;
                  },
                  true, 6}};
    for (const auto& [name, segments, spoil, traced, left] : cases) {
        SCOPED_TRACE(name);
        auto nodes = WindingCircuit();
        MakeTrack(nodes);
        ASSERT_TRUE(TraceTrack());
        spoil(nodes);
        TrackFile.BezierNodes.assign(nodes.begin(), nodes.end());
        TrackFile.Segments.resize(segments);
        EXPECT_EQ(TraceTrack(), traced);
        EXPECT_EQ(TrackTraced, traced);
        EXPECT_EQ(TracedSegments.size(), left);
    }
}

}  // namespace boreforge
