#include <algorithm>
#include <cmath>

#include "editor/TunnelShape.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "shared/ObjectSurfaces.h"
#include "shared/Read3DSObject.h"
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

TEST_F(TunnelMeshTest, WallsWithTheirCapsAreAClosedSurface) {
    MakePresetShape(kPresetBox);  // four nodes
    TracedSegments[1].Samples.resize(9);
    TracedSegments[2].Samples.resize(5);
    const struct {
        int step;
        bool doubleSided;
        std::size_t bands;  // of both segments
        Facing facing;
    } cases[] = {{1, false, 9 + 5, Facing::Outwards},
                 {2, false, 5 + 3, Facing::Outwards},
                 {6, false, 2 + 1, Facing::Outwards},
                 {4, true, 3 + 2, Facing::NotJudged}};
    for (const auto& [step, doubleSided, bands, facing] : cases) {
        SCOPED_TRACE(step);
        ResetModel();
        AddMaterial({}, {}, {}, 0, 0, 0);
        for (const int segment : {1, 2}) {
            SweepOutsideWall(segment, 0, step, doubleSided);
            SweepInsideWall(segment, 0, step, doubleSided);
        }
        CapTunnelEntry(1, 0, doubleSided);
        CapTunnelExit(3, 0, doubleSided);
        ASSERT_TRUE(Save3DSFile(In("o.3ds")));
        Object3DS object;
        ObjectDamage damage;
        ASSERT_TRUE(Read3DSObject(ReadBytes(In("o.3ds")), object, damage));
        const auto surfaces = FindSurfaces(object);
        ASSERT_EQ(surfaces.size(), 1u);
        // Each band of either wall and each cap has two triangles for each node.
        EXPECT_EQ(surfaces[0].faceCount, (doubleSided ? 2 : 1) * 2 * 4 * (2 * bands + 2));
        EXPECT_EQ(surfaces[0].openEdges, 0u);
        EXPECT_EQ(surfaces[0].IsDoubleSided(), doubleSided);
        EXPECT_EQ(surfaces[0].facing, facing);
    }
}

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
