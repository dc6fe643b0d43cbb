// The colours of a picture: sun, sky and shadows on the object, the rails and the ground.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "export3ds/Read3DSObject.h"
#include "picture_camera.h"
#include "picture_path.h"
#include "picture_raster.h"
#include "picture_vector.h"

namespace boreforge {

struct PictureScene {
    const Object3DS& Object;
    const std::vector<RailPiece>& Rails;
    PictureCamera Camera;
    // For pictures from within: a lamp lights what is before the eye, and daylight comes from these ends.
    bool Lamp = false;
    std::vector<Vec> Portals;
};

// What the shading of a face needs, kept from sample to sample.
struct FaceLook {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    std::uint32_t Face = kNone;  // its index
    std::array<Vec, 3> Corners;
    Vec Normal, Color;
    double Area = 0;              // twice it
    std::array<double, 3> Sides;  // the length from each corner to the next
};

// Colours are linear: twice the number is twice the light. `way` leads from the eye to what is seen.
class PictureShader {
  public:
    explicit PictureShader(const PictureScene& scene);

    // `look` is set where it is still that of another face.
    Vec Face(std::uint32_t index, const Vec& way, FaceLook& look) const;
    // `side` as for SideOf.
    Vec Rail(const RailPiece& piece, std::uint32_t side, const Vec& way) const;
    // A face that hides a rail shows something of it, the more the closer it is: `depth` units.
    static Vec ThroughFace(const Vec& face, double depth);
    // Sky or ground.
    Vec Background(const Vec& ray) const;

  private:
    void LookAt(std::uint32_t index, FaceLook& look) const;
    Vec LightOn(const Vec& way, const Vec& normal) const;
    Vec Hazy(const Vec& color, double distance) const;

    const PictureScene& scene_;
    const PictureCamera& camera_;
    Vec sun_;
    ReachMap shadows_;
    std::vector<Vec> colors_;   // of the materials
    std::vector<Vec> portals_;  // those that matter
    double ground_ = 0;         // its height
    double haze_ = 1;           // the distance at which half of a colour is left
};

}  // namespace boreforge
