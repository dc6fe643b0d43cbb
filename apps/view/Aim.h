// Where the eye must be to show the whole object, or one of the views for pictures.
#pragma once

#include "base/Outcome.h"
#include "shared/Read3DSObject.h"
#include "view/Camera.h"

namespace boreforge {

enum class ViewFrom { Above, Side, Inside };

struct Aim {
    CameraPose pose;
    CameraLens lens;
    double distance = 10;  // to the point that is looked at
};

// The view of the whole object, with which the window starts.
Aim AimAtWhole(const Object3DS& object, const CameraLens& lens);

// The entry of a tunnel, obliquely from outside, so that both the opening and the tunnel are visible.
Aim AimAtEntry(const CoveredStretch& tunnel, const TrackPath& path, CameraLens lens);

// A view for a picture. Fails if it needs a track that runs through the object and there is none.
Outcome AimFrom(ViewFrom view, const Object3DS& object, const TrackPath& path, CameraLens lens, Aim& aim);

}  // namespace boreforge
