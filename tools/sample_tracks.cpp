#include "sample_tracks.h"

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
    {-70, 4, 20, -4}, {-70, 4, -15, -4}, {-69, 5, -50, -4}, {-46, 8, -86, -5}, {0, 11, -98, -6},
    {36, 12, -82, -2}, {58, 11, -46, 6}, {88, 9, -14, 6}, {98, 7, 26, 6}, {78, 6, 62, -2}, {38, 6, 70, -4},
    {4, 7, 52, -5}, {-28, 6, 64, -5}, {-56, 4, 72, -4}, 
};

// North, east, back through the middle with a loop, then around the south.
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
    {55, 39, 30.8, -35, kLoop, kTurn}, {43, 43.5, 32, -39.5, kLoop, kTurn}, {31, 39, 33.2, -35, kLoop, kTurn},
    {24, 27, 34.5, -23, kLoop, kTurn}, {30, 13, 36, -9, kLoop, kTurn}, {52, 7, 37, -3, kTarget}, {86, 7, 38, -3},
    {124, 9, 42, -3},
    // Over hills and valleys along the southern ridge.
    {160, 14, 58, -3}, {182, 21, 94, 2}, {176, 26, 136, 14}, {142, 24, 164, 10}, {98, 19, 168, -6},
    {54, 25, 158, -16}, {8, 33, 164, -18}, {-34, 31, 184, -4}, {-78, 25, 196, 10}, {-124, 24, 184, 12},
    {-160, 27, 152, -3}, {-184, 24, 108, -4}, {-197, 19, 55, 2},
};

}  // namespace

void MakeSmallCircuit() { ResetTrackFile(); LayTrack(kSmall, 20); }
void MakeMountainCircuit() { ResetTrackFile(); LayTrack(kMountain, 84); }
void MakeLongCircuit() { ResetTrackFile(); LayTrack(kSmall, 20); }

}  // namespace boreforge
