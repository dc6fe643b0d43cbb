// The sample tracks. Each replaces TrackFile.
#pragma once

namespace boreforge {

void MakeSmallCircuit();     // one tunnel and nothing else
void MakeMountainCircuit();  // some of everything that a track file can hold
void MakeLongCircuit();      // 16,000 units of path

}  // namespace boreforge
