#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>

#include "editor/TunnelShape.h"
#include "export3ds/VertexIndex.h"
#include "export3ds/mSave3DSObject.h"
#include "shared/ObjectSurfaces.h"
#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"
#include "tunnelmesh/TunnelCaps.h"
#include "tunnelmesh/TunnelSweep.h"

namespace boreforge {

using TunnelMeshTest = CoreTest;

// The surfaces of all meshes together.
std::vector<ObjectSurface> Surfaces() {
    Object3DS object;
    for (const Mesh3DS& mesh : Model3DS.Meshes) {
        const auto index = [first = object.Points.size()](std::int16_t corner) {
            return static_cast<std::uint32_t>(first + static_cast<std::size_t>(corner));
        };
        for (const MeshFace& face : mesh.Faces)
            object.Faces.push_back({index(face.a), index(face.b), index(face.c)});
        object.Points.insert(object.Points.end(), mesh.Points.begin(), mesh.Points.end());
    }
    return FindSurfaces(object);
}

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
    const struct {
        int step;
        std::size_t rings;  // of the three walls, without those of the next segments
    } details[] = {{1, 9 + 5 + 1}, {2, 5 + 3 + 1}, {4, 3 + 2 + 1}, {6, 2 + 1 + 1}, {8, 2 + 1 + 1}};
    for (const auto& [step, rings] : details)
        for (const bool rounded : {false, true}) {
            SCOPED_TRACE("step " + std::to_string(step));
            MakePresetShape(rounded);
            const std::size_t nodes = rounded ? 8 : 4;
            for (const bool twice : {false, true}) {
                Sweep({1, 2, 3}, step, true, true, twice);
                CapTunnelEntry(1, 0, twice);
                CapTunnelExit(4, 0, twice);
                const auto surfaces = Surfaces();
                ASSERT_EQ(surfaces.size(), 1u);
                EXPECT_EQ(surfaces[0].FaceCount, (twice ? 8 : 4) * nodes * (rings + 1));
                EXPECT_EQ(surfaces[0].OpenEdges, 0u);
                EXPECT_EQ(surfaces[0].IsDoubleSided(), twice);
                EXPECT_EQ(surfaces[0].Faces, twice ? Facing::NotJudged : Facing::Outwards);
            }
            for (const bool outside : {true, false}) {  // a wall all around needs no caps
                Sweep({0, 1, 2, 3, 4, 5}, step, outside, !outside, false);
                EXPECT_EQ(Surfaces().at(0).Faces, outside ? Facing::Outwards : Facing::Inwards);
            }
        }
}

// A wall made in the simplest way: ring by ring, face by face.
void AddWallByFaces(std::size_t step, bool outward, bool inward) {
    const auto& samples = TracedSegments[0].Samples;
    const auto& nodes = TunnelShape.OutsideNodes;
    std::vector<Vector3D> previous, current;
    const auto addBandTo = [&](const TraceSample& sample) {
        current.clear();
        for (const Vector3D& node : nodes)
            current.push_back(MatTransformPoint(sample.WorldMatrix, node));
        for (std::size_t k = 0; k < previous.size(); ++k) {
            const std::size_t k2 = (k + 1) % nodes.size();
            if (outward) AddFace(previous[k], current[k], current[k2], {}, {}, {});
            if (outward) AddFace(current[k2], previous[k2], previous[k], {}, {}, {});
            if (inward) AddFace(previous[k2], current[k2], current[k], {}, {}, {});
            if (inward) AddFace(current[k], previous[k], previous[k2], {}, {}, {});
        }
        previous = current;
    };
    BeginObject("SEGT", 0, false, true);
    for (std::size_t s = 0; s < samples.size(); s += step)
        addBandTo(samples[s]);
    addBandTo(TracedSegments[1].Samples.front());
    FlushObject();
}

struct MeshContent {
    std::string name;
    std::vector<std::array<std::uint32_t, 3>> pointBits;
    std::vector<MeshFace> faces;
    friend bool operator==(const MeshContent&, const MeshContent&) = default;
};

std::vector<MeshContent> ModelContent() {
    std::vector<MeshContent> content;
    for (const Mesh3DS& mesh : Model3DS.Meshes) {
        content.push_back({mesh.Name, {}, {mesh.Faces.begin(), mesh.Faces.end()}});
        for (const Vector3D& point : mesh.Points)
            content.back().pointBits.push_back(std::bit_cast<std::array<std::uint32_t, 3>>(point));
    }
    return content;
}

std::vector<Vector3D> RoundContour(int nodes) {
    std::vector<Vector3D> contour;
    for (int k = 0; k < nodes; ++k) {
        const double angle = 2 * std::numbers::pi * k / nodes;
        contour.push_back({static_cast<float>(3 * std::cos(angle)), static_cast<float>(3 * std::sin(angle))});
    }
    return contour;
}

// Lays the frames of segment 0 along z, and after them that of segment 1. Sample `repeated` has the frame of
// the one before it, unless it is the first.
void LayFrames(std::size_t samples, const Matrix3D& frame, std::size_t repeated) {
    TrackFile.Segments.resize(2);
    TracedSegments.resize(2);
    for (TracedSegment& traced : TracedSegments)
        traced.Samples.assign(samples, {.Orientation = {}, .WorldMatrix = frame});
    for (std::size_t j = 0; j < samples; ++j)
        TracedSegments[0].Samples[j].WorldMatrix[11] += static_cast<float>(j == repeated ? j : j + 1);
    TracedSegments[1].Samples[0].WorldMatrix[11] += static_cast<float>(samples + 1);
}

TEST_F(TunnelMeshTest, WallsHaveTheMeshesThatAddFaceMakes) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    // The frames keep the sign of a zero: nodes at (0, 1) and (-0, 1) become points that differ in it.
    const Matrix3D signedZeros{{1, -0.0f, -0.0f, -0.0f, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    const Matrix3D turned = MatMultiply(MatTranslation(70, -8, 30), MatRotateX(0.7f));
    const struct {
        const char* name;
        std::vector<Vector3D> contour;
        std::size_t samples;
        Matrix3D frame;
        std::size_t repeated;  // the sample that has the frame of the one before
    } cases[] = {
        {"no node", {}, 3, turned, 0},
        {"one node", {{1, 2, 0}}, 3, turned, 0},
        {"two nodes", {{1, 2, 0}, {-1, 2, 0}}, 3, turned, 0},
        {"a short wall", RoundContour(32), 1, turned, 0},
        {"a wall of several meshes", RoundContour(32), 400, turned, 0},
        {"bands of more than one mesh", RoundContour(6000), 3, turned, 0},
        {"more points than a mesh has", RoundContour(16000), 2, turned, 0},
        {"equal nodes", {{1, 2, 0}, {4, 2, 0}, {1, 2, 0}, {-1, 5, 0}}, 3, turned, 0},
        {"equal rings", RoundContour(32), 9, turned, 5},
        {"equal rings in the last mesh", RoundContour(32), 400, turned, 399},
        {"0 and -0", {{0, 1, 0}, {4, 2, 0}, {-0.0f, 1, 0}, {4, 5, 0}}, 3, signedZeros, 0},
        {"NaN", {{1, 2, 0}, {4, 2, 0}, {nan, 3, 0}, {-1, 5, 0}}, 3, turned, 0},
    };
    for (const auto& [name, contour, samples, frame, repeated] : cases)
        for (const bool twice : {false, true}) {
            SCOPED_TRACE(std::string(name) + (twice ? ", double-sided" : ""));
            TunnelShape.OutsideNodes = contour;
            LayFrames(samples, frame, repeated);
            ResetModel();
            ObjectPartNumber = 0;
            AddWallByFaces(1, true, twice);
            AddWallByFaces(2, true, twice);
            const std::vector<MeshContent> expected = ModelContent();

            ResetModel();
            ObjectPartNumber = 0;
            SweepOutsideWall(0, 0, 1, twice);
            SweepOutsideWall(0, 0, 2, twice);
            EXPECT_EQ(ModelContent(), expected);
            EXPECT_EQ(static_cast<std::size_t>(ObjectPartNumber), expected.size());
            EXPECT_EQ(ObjectBuffer.PointCount(), 0);
        }
}

TEST_F(TunnelMeshTest, TheSizeOfAWallIsThatOfItsMeshes) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    TunnelShape.OutsideNodes = {{1, 2, 0}, {4, nan, 0}, {nan, 5, 0}, {-1, 5, 0}, {0, 0, nan}};
    LayFrames(600, MatTranslation(70, -8, 30), 0);
    for (const std::int32_t step : {1, 2, 7, 1000})
        for (const bool twice : {false, true}) {
            ResetModel();
            SweepOutsideWall(0, 0, step, twice);
            std::ptrdiff_t faces = 0, unshared = 0;
            for (const Mesh3DS& mesh : Model3DS.Meshes) {
                faces += mesh.FaceCount();
                unshared += std::ranges::count_if(mesh.Points, HasNaN);
            }
            const WallSize size = SizeOfWall(TunnelShape.OutsideNodes, 0, step, twice);
            EXPECT_EQ(size.faces, faces) << step;
            EXPECT_EQ(size.unsharedPoints, unshared) << step;
        }
}

}  // namespace boreforge
