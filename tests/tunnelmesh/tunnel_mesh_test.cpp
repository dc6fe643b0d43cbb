#include <cmath>
#include <map>
#include <tuple>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"
#include "tunnelmesh/TunnelCaps.h"
#include "tunnelmesh/TunnelSweep.h"

namespace boreforge {

using TunnelMeshTest = CoreTest;

// All meshes as one, with equal points made one.
struct Surface {
    std::map<std::tuple<float, float, float>, int> points;
    std::map<std::pair<int, int>, int> edges;  // how often each is walked in this direction
    double volume = 0;
    int faces = 0;

    Surface() {
        for (const Mesh3DS& mesh : Model3DS.Meshes)
            for (const MeshFace& face : mesh.Faces)
                Add(mesh.Points.at(face.a), mesh.Points.at(face.b), mesh.Points.at(face.c));
    }
    void Add(const Vector3D& a, const Vector3D& b, const Vector3D& c) {
        const auto weld = [this](const Vector3D& p) {
            return points.try_emplace({p.x, p.y, p.z}, static_cast<int>(points.size())).first->second;
        };
        const int i = weld(a), j = weld(b), k = weld(c);
        for (const auto& edge : {std::pair{i, j}, {j, k}, {k, i}})
            ++edges[edge];
        const double x = double(b.y) * c.z - double(b.z) * c.y, y = double(b.z) * c.x - double(b.x) * c.z;
        volume += (a.x * x + a.y * y + a.z * (double(b.x) * c.y - double(b.y) * c.x)) / 6;
        ++faces;
    }
    // Each edge once in each direction; or any number of times, but equally often.
    bool IsClosed(bool once = true) const {
        for (const auto& [edge, count] : edges) {
            const auto back = edges.find({edge.second, edge.first});
            if (back == edges.end() || back->second != count || (once && count > 1)) return false;
        }
        return !edges.empty();
    }
};

void Sweep(const std::vector<std::int32_t>& run, std::int32_t step, bool outside, bool inside, bool twice) {
    ResetModel();
    for (const std::int32_t i : run) {
        if (outside) SweepOutsideWall(i, 0, step, twice);
        if (inside) SweepInsideWall(i, 0, step, twice);
    }
}

TEST_F(TunnelMeshTest, WallsWithTheirCapsAreAClosedSurfaceAtEveryDetail) {
    MakeTrack(WindingCircuit());
    ASSERT_TRUE(TraceTrack());
    TracedSegments[1].Samples.resize(9);
    TracedSegments[2].Samples.resize(5);
    TracedSegments[3].Samples.resize(1);
    // The rings of the three walls at each detail, without the bridges'.
    for (const auto& [step, rings] :
         {std::pair{1, 15}, {2, 5 + 3 + 1}, {4, 3 + 2 + 1}, {6, 2 + 1 + 1}, {8, 2 + 1 + 1}})
        for (const bool rounded : {false, true}) {
            SCOPED_TRACE("step " + std::to_string(step));
            MakePresetShape(rounded);
            const int nodes = rounded ? 8 : 4;
            for (const bool twice : {false, true}) {
                Sweep({1, 2, 3}, step, true, true, twice);
                EXPECT_EQ(Surface().faces, (twice ? 8 : 4) * rings * nodes);
                EXPECT_EQ(Surface().IsClosed(false), twice) << "the ends are open";
                CapTunnelEntry(1, 0, twice);
                CapTunnelExit(4, 0, twice);
                EXPECT_TRUE(Surface().IsClosed(!twice));
                EXPECT_EQ(Surface().points.size(), static_cast<std::size_t>(2 * nodes * (rings + 1)));
                EXPECT_TRUE(twice || Surface().volume > 0);
            }
            for (const bool outside : {true, false}) {  // a wall all around needs no caps
                Sweep({0, 1, 2, 3, 4, 5}, step, outside, !outside, false);
                EXPECT_TRUE(Surface().IsClosed());
                EXPECT_EQ(Surface().volume > 0, outside) << "the inside wall faces inwards";
            }
        }
}

}  // namespace boreforge
