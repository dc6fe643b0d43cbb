#include "sample_tracks.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/Values.h"
#include "sample_path.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace {

constexpr RollStyle kTarget = RollStyle::Target, kAdded = RollStyle::Added, kLoop = RollStyle::Loop;
constexpr double kTurn = -0.11;  // radians

constexpr Waypoint kSmall[] = {
    {-75, 4, 20, -4},  {-75, 4, -20, -4}, {-71, 6, -58, -4}, {-44, 9, -92, -5}, {0, 11, -100, -6},
    {38, 12, -80, -3}, {62, 11, -44, 6},  {92, 9, -14, 6},   {108, 7, 26, 6},   {94, 6, 66, -3},
    {54, 6, 82, -4},   {12, 7, 74, -5},   {-28, 6, 80, -5},  {-62, 4, 62, -4},
};

// North, east, back through the middle with a loop, then around the south.
// clang-format off
constexpr Waypoint kMountain[] = {
    // Through the first hill and up the western slope.
    {-200, 18, 0, 14}, {-200, 18, -45, 14}, {-199, 19, -85, -3}, {-190, 22, -130, -4}, {-160, 28, -172, -4},
    {-112, 35, -186, -4, kAdded}, {-62, 42, -172, -5, kAdded}, {-16, 48, -176, -3, kAdded},
    // The summit tunnel and down the eastern side.
    {28, 53, -200, 15}, {78, 55, -208, 22}, {126, 52, -190, 16}, {158, 47, -152, -3}, {172, 42, -105, -12},
    {160, 38, -60, -14}, {122, 35, -34, -12}, {76, 33, -40, -4}, {34, 31, -66, 10}, {-8, 28, -92, 16},
    {-54, 24, -96, -2}, {-92, 20, -74, -4}, {-104, 16, -32, -4}, {-84, 12, 4, -4}, {-44, 9, 22, -3},
    // The loop.
    {0, 7.5, 26, -3}, {34, 7, 27, -3}, {56, 13, 28, -9, kLoop, kTurn}, {62, 27, 29.5, -23, kLoop, kTurn},
    {55, 39, 30.8, -35, kLoop, kTurn}, {43, 43.5, 32, -39.5, kLoop, kTurn},
    {31, 39, 33.2, -35, kLoop, kTurn}, {24, 27, 34.5, -23, kLoop, kTurn}, {30, 13, 36, -9, kLoop, kTurn},
    {52, 7, 37, -3}, {86, 7, 38, -3}, {124, 9, 42, -3},
    // Over hills and valleys along the southern ridge.
    {160, 14, 58, -5}, {182, 21, 94, 0}, {176, 26, 136, 14}, {142, 24, 164, 10}, {98, 19, 168, -6},
    {54, 25, 158, -16}, {8, 33, 164, -18}, {-34, 31, 184, -4}, {-78, 25, 196, 10}, {-124, 24, 184, 12},
    {-160, 27, 152, -5}, {-184, 24, 108, -4}, {-197, 19, 55, 2},
};

// The meaning of these fields is known only to Zephyrail; the values have a plausible size.
constexpr TrackSegment kKinds[] = {
    {.SegmentKind = 0},
    {.SegmentKind = 1, .K1Float1 = 6, .K1Float2 = 1.5f, .K1Float3 = 1.25f, .K1Float4 = 12, .K1Flag1 = kTrue,
     .K1Float5 = 30, .K1Byte1 = 1, .K1Byte2 = 2, .K1Byte3 = 40, .K1Flag2 = kTrue, .K1Float6 = 0.5f,
     .K1Float7 = 0.75f, .K1Float8 = 2, .K1Float9 = 6, .K1Float10 = 8, .K1Float11 = 90},
    {.SegmentKind = 2, .K2Float1 = 5, .K2Float2 = 2, .K2Float3 = 0.5f, .K2Byte1 = 1, .K2Flag1 = kTrue},
    {.SegmentKind = 3, .K3Float1 = 9, .K3Float2 = 3, .K3Float3 = 0.25f, .K3Byte1 = 2, .K3Flag2 = kTrue},
    {.SegmentKind = 4, .K4Flag1 = kTrue, .K4Float1 = 8, .K4Float2 = 2.5f, .K4Float3 = 1, .K4Flag3 = kTrue,
     .K4Float4 = 10, .K4Float5 = 20, .K4Float6 = 0.5f, .K4Float7 = 16, .K4Flag5 = kTrue},
};
// clang-format on

// Up and down in eight parallel lanes, and back along their southern ends. Each letter of the pattern is the
// stretch after one waypoint: # a tunnel, - close to the ground, _ a viaduct.
std::vector<Waypoint> LongWaypoints() {
    constexpr std::string_view kPattern = "---##-__-###-----_-###----";
    constexpr int kLanes = 8, kInLane = 7, kHomeward = 10;
    constexpr double kLaneWidth = 300, kReach = 595, kHome = 1000;
    std::vector<Waypoint> waypoints;
    const auto add = [&](double x, double z) {
        const char letter = kPattern[waypoints.size() % kPattern.size()];
        const double cover = letter == '#' ? 20 : letter == '_' ? -24 : -6;
        const RollStyle roll = waypoints.size() % 11 > 7 ? kAdded : kTarget;
        waypoints.push_back({x, 45 + 35 * Relief(x, z, 450) + (letter == '_' ? 8 : 0), z, cover, roll});
    };
    for (int lane = 0; lane < kLanes; ++lane) {
        const double x = (lane - 0.5 * (kLanes - 1)) * kLaneWidth, north = lane % 2 == 0 ? -1 : 1;
        for (int i = 0; i < kInLane; ++i) {
            const bool straight = lane == 0 && i < 2;  // the start
            const double along = north * kReach * (2.0 * i / (kInLane - 1) - 1);
            add(x + (straight ? 0 : 55 * Scatter(lane, i)), along + (straight ? 0 : 25 * Scatter(i, lane)));
        }
        if (lane + 1 < kLanes) add(x + kLaneWidth / 2, north * (kReach + 150));
    }
    for (int i = 0; i < kHomeward; ++i)
        add((0.5 - i / (kHomeward - 1.0)) * (kLanes - 1) * kLaneWidth, kHome + 30 * Scatter(i, 99));
    return waypoints;
}

// Kind 1 at the start, 2 uphill, 3 downhill, 4 here and there, otherwise 0.
std::size_t KindOf(std::size_t index) {
    const TrackBezierNode& node = TrackFile.BezierNodes[index];
    const float rise = node.ControlOut.y - node.Position.y;
    if (index < 3) return 1;
    if (rise > 1 || rise < -1) return rise > 0 ? 2 : 3;
    return index % 9 == 8 ? 4 : 0;
}

// Sets the kinds, and gives some segments, including tunnels, their own colours.
void DressSegments() {
    for (std::size_t i = 0; i < TrackFile.Segments.size(); ++i) {
        TrackSegment& segment = TrackFile.Segments[i];
        const Truth isTunnel = segment.IsTunnel;
        segment = kKinds[KindOf(i)];
        segment.IsTunnel = isTunnel;
        if (i % 16 > 4) continue;
        segment.UseOwnColors = kTrue;
        segment.Color1 = PackColor(208, 64 + 8 * static_cast<int>(i % 16), 40);
        segment.Color2 = PackColor(236, 228, 212);
        segment.Color3 = PackColor(96, 92, 88);
    }
}

void StartTrack(const char* info) {
    ResetTrackFile();
    TrackFile.InfoText = info;
    TrackFile.DefaultColor1 = PackColor(52, 96, 148);
    TrackFile.DefaultColor2 = PackColor(224, 224, 220);
    TrackFile.DefaultColor3 = PackColor(120, 116, 112);
    TrackFile.ExtraColor1 = PackColor(140, 132, 120);
    TrackFile.ExtraColor2 = PackColor(92, 84, 72);
    TrackFile.ExtraColor3 = PackColor(176, 60, 44);
    TrackFile.ExtraColor4 = PackColor(64, 72, 80);
    TrackFile.ExtraColor5 = PackColor(248, 244, 232);
}

// To the right of the direction of travel, level and of length 1.
Vector3D RightOf(const TrackBezierNode& node) {
    const Vector3D way = VecSubtract(node.Position, node.ControlOut);
    const double length = std::sqrt(double(way.x) * way.x + double(way.z) * way.z);
    return {OnGrid(-way.z / length), 0, OnGrid(way.x / length)};
}

// The place on the ground `aside` units to the right of a node.
Vector3D PlaceBeside(const TrackBezierNode& node, double aside, const Ground& ground) {
    const Vector3D right = RightOf(node);
    const double x = node.Position.x + aside * right.x, z = node.Position.z + aside * right.z;
    return {OnGrid(x), OnGrid(ground.HeightAt(x, z)), OnGrid(z)};
}

// Plausible structures: pillars where the track is high above the ground, fences, a tube for each tunnel, a
// catwalk at every tenth segment.
void BuildStructures(const Ground& ground) {
    const auto& segments = TrackFile.Segments;
    for (std::size_t n = 0; n < segments.size(); ++n) {
        const TrackBezierNode& node = TrackFile.BezierNodes[n];
        const auto i = static_cast<std::int32_t>(n);
        const Vector3D foot = PlaceBeside(node, 0, ground);
        const float height = node.Position.y - foot.y;
        if (height > 2) TrackFile.FundRecords.push_back({foot, kTrue, height, ToTruth(height > 10), 0.75f});
        if (n % 4 == 0 && height > 0) TrackFile.FrenRecords.push_back({PlaceBeside(node, 6, ground)});
        if (segments[n].IsTunnel && !segments[(n + segments.size() - 1) % segments.size()].IsTunnel)
            TrackFile.TubeRecords.push_back({i, i + 1, 2, 1, 8, 4, 255, 0, 0.5f});
        if (n % 10 == 5) TrackFile.CatwRecords.push_back({i, i + 1, i % 2, 1, 2, 0, i / 10 % 3 * 8});
        if (n % 12 != 6) continue;
        TrackRascRecord record;
        for (std::int32_t entry = 0; entry < i / 12 % 4; ++entry)
            record.Entries.push_back({i + entry, 0.25f * static_cast<float>(entry + 1)});
        TrackFile.RascRecords.push_back(record);
    }
}

// Trees along the track, and a few objects turned to face along it.
void PlantScenery(const Ground& ground) {
    const auto& nodes = TrackFile.BezierNodes;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        const int i = static_cast<int>(n);
        const Vector3D tree = PlaceBeside(nodes[n], (n % 2 == 0 ? 1 : -1) * (18 + 6 * Scatter(i, 7)), ground);
        TrackFile.SceneryPoints.push_back({tree.x, tree.y, tree.z, OnGrid(1 + 0.25 * Scatter(i, 8)), i % 4});
    }
    for (const std::size_t n : {7u, 26u, 46u, 70u}) {
        const Vector3D right = RightOf(nodes[n]), place = PlaceBeside(nodes[n], 12, ground);
        TrackFile.SceneryObjects.push_back({n == 46 ? "station.3ds" : "hut.3ds",
                                            "dummy",
                                            {right.x, 0, -right.z, 0, 1, 0, right.z, 0, right.x},
                                            {place.x, place.y, place.z},
                                            {}});
    }
}

// A grid of heights `spacing` units apart, with the origin in its middle.
void RaiseTerrain(const Ground& ground, int spacing, int width, int depth) {
    TrackFile.HasTerrain = kTrue;
    TrackFile.TerrainWidth = width;
    TrackFile.TerrainDepth = depth;
    TrackFile.TerrainFloat1 = TrackFile.TerrainFloat2 = static_cast<float>(spacing);
    TrackFile.TerrainText1 = "grass.bmp";
    TrackFile.TerrainFloat3 = 16;
    TrackFile.TerrainText2 = "rock.bmp";
    TrackFile.TerrainFloat4 = 8;
    TrackFile.TerrainText3 = "snow.bmp";
    TrackFile.TerrainFloat5 = 60;
    TrackFile.TerrainByte = 1;
    TrackFile.TerrainFlag = kTrue;
    for (int row = 0; row < depth; ++row)
        for (int column = 0; column < width; ++column)
            TrackFile.TerrainGrid.push_back(OnGrid(ground.HeightAt((column - 0.5 * (width - 1)) * spacing,
                                                                   (row - 0.5 * (depth - 1)) * spacing)));
    TrackFile.EnvironmentText1 = "clear-day";
    TrackFile.EnvironmentText2 = "valley";
}

}  // namespace

void MakeSmallCircuit() {
    StartTrack("Small circuit: one tunnel.");
    LayTrack(kSmall, 20);
}

void MakeMountainCircuit() {
    StartTrack("Mountain circuit: five tunnels, one of them across the start, and a loop.");
    TrackFile.TrackValueA = 3;
    TrackFile.TrackValueB = 1;
    TrackFile.ColorSets = {
        {kTrue, PackColor(196, 40, 36), PackColor(244, 240, 228), PackColor(40, 44, 52), 0, "Express"},
        {kFalse, PackColor(36, 96, 60), PackColor(216, 188, 96), PackColor(72, 52, 36), 0, "Forest"},
        {kFalse, PackColor(90, 90, 96), PackColor(160, 160, 168), PackColor(30, 30, 30), 0, ""},
    };
    LayTrack(kMountain, 84);
    TrackFile.SegmentListFlag = kTrue;
    DressSegments();
    const Ground ground(kMountain);
    BuildStructures(ground);
    PlantScenery(ground);
    RaiseTerrain(ground, 8, 65, 65);
}

void MakeLongCircuit() {
    StartTrack("Long circuit: 400 segments, two fifths of them in tunnels.");
    const std::vector<Waypoint> waypoints = LongWaypoints();
    LayTrack(waypoints, 400);
    DressSegments();
    RaiseTerrain(Ground(waypoints), 30, 85, 71);
}

}  // namespace boreforge
