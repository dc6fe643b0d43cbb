// Where a picture is taken from.
#pragma once

#include <string>
#include <vector>

#include "export3ds/Read3DSObject.h"
#include "picture_path.h"
#include "picture_raster.h"
#include "picture_vector.h"

namespace boreforge {

struct PictureSize {
    int Width = 0, Height = 0;
};

enum class PictureView { Above, Side, Inside };

// A pinhole camera; its axes have the length 1 and stand at right angles.
struct PictureCamera {
    Vec Eye, Right, Up, Forward;
    double Focal = 1;  // pixels that a unit has at a distance of 1
    PictureSize Size;

    // A point in the camera's axes: to the right, up and ahead.
    Vec Seen(const Vec& point) const {
        const Vec way = point - Eye;
        return {Dot(way, Right), Dot(way, Up), Dot(way, Forward)};
    }
    // Where a point as given by Seen lies in the picture, with `samples` samples along a pixel's side. It
    // must be ahead.
    RasterPoint Place(const Vec& seen, int samples) const {
        const double w = 1 / seen.z;
        return {(0.5 * Size.Width + Focal * seen.x * w) * samples,
                (0.5 * Size.Height - Focal * seen.y * w) * samples, w};
    }
    // The direction from the eye through a place of the picture, 1 long ahead.
    Vec Ray(double x, double y) const {
        return Forward + Right * ((x - 0.5 * Size.Width) / Focal) + Up * ((0.5 * Size.Height - y) / Focal);
    }
};

// Sets `camera` for a view. False when the view needs a track, or one that runs through the object: `reason`
// then says so.
bool AimCamera(PictureView view, PictureSize size, const Object3DS& object, const TrackPath& path,
               PictureCamera& camera, std::string& reason);

}  // namespace boreforge
