#include <algorithm>
#include <cmath>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"
#include "tunnelmesh/TunnelMesh.h"

namespace boreforge {

struct TunnelMeshTest : CoreTest {
    TunnelMeshTest() {
        MakeTrack(WindingCircuit());
        EXPECT_TRUE(TraceTrack());
    }
};

TEST_F(TunnelMeshTest, TheSizeOfAWallCountsBothSidesAndThePointsThatAreNaN) {
    TracedSegments[1].Samples.resize(9);
    const WallSize size = SizeOfWall({{1, 2, 0}, {4, NAN, 0}, {-1, 5, 0}}, 1, 2, true);
    EXPECT_EQ(size.faces, 5 * 2 * 3 * 2) << "bands, sides, quads, triangles of each";
    EXPECT_EQ(size.unsharedPoints, 5 * 2 * 2 * 3) << "bands, sides, quads at the node, corners of each";
}

TEST_F(TunnelMeshTest, ABandIsSplitIntoMeshesOfFiveThousandQuads) {
    const struct {
        int nodes;
        std::vector<std::int16_t> points, faces;  // of each mesh
    } cases[] = {{6000, {2 * 5001, 2 * 1001}, {10'000, 2000}},
                 // The 32,000 points of both rings are more than a mesh can have.
                 {16'000, {2 * 5001, 2 * 5001, 2 * 5001, 2 * 1001}, {10'000, 10'000, 10'000, 2000}}};
    TracedSegments[0].Samples.resize(1);
    for (const auto& [nodes, points, faces] : cases) {
        SCOPED_TRACE(nodes);
        ResetModel();
        TunnelShape.OutsideNodes.clear();
        for (int k = 0; k < nodes; ++k)
            TunnelShape.OutsideNodes.push_back({static_cast<float>(k), 0, 0});
        SweepOutsideWall(0, 0, 1, false);
        EXPECT_TRUE(std::ranges::equal(Model3DS.Meshes, points, {}, &Mesh3DS::PointCount));
        EXPECT_TRUE(std::ranges::equal(Model3DS.Meshes, faces, {}, &Mesh3DS::FaceCount));
    }
}

}  // namespace boreforge
