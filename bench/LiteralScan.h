// The rule for shared vertices, taken literally: one scan of all stored vertices, of which the last match
// wins. What was not found is appended. The tests compare the model store with it, the benchmarks its speed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "export3ds/mSave3DSObject.h"

namespace boreforge {

// At most kMaxFacesOfMesh faces, like a mesh.
struct LiteralScan {
    std::vector<Vector3D> points;
    std::vector<float> coords;  // one for each point: that of the face that stored it
    std::vector<MeshFace> faces;

    void Add(const Vector3D (&corners)[3], float coord = 0) {
        std::int16_t found[3] = {-1, -1, -1};
        for (std::size_t i = 0; i < points.size(); ++i)
            for (int c = 0; c < 3; ++c)
                if (points[i] == corners[c]) found[c] = static_cast<std::int16_t>(i);
        for (int c = 0; c < 3; ++c) {
            if (found[c] >= 0) continue;
            found[c] = static_cast<std::int16_t>(points.size());
            points.push_back(corners[c]);
            coords.push_back(coord);
        }
        faces.push_back({found[0], found[1], found[2]});
    }
};

}  // namespace boreforge
