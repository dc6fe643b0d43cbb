// What boreforge-check says about an object.
#pragma once

#include <string>
#include <vector>

#include "shared/ObjectSurfaces.h"

namespace boreforge {

enum class Verdict { Sound, FacingWrongly, Empty, Damaged };

struct ObjectReport {
    std::string Path;
    Object3DS Object;  // empty when it is damaged
    ObjectDamage Damage;
    std::vector<ObjectSurface> Surfaces;
    Verdict Result = Verdict::Damaged;
};

// The report on a whole file, of which `path` is the name.
ObjectReport Examine(const std::string& path, const Bytes& file);

// The same report for people and for programs, with the file's axes: z is up.
std::string ReportText(const ObjectReport& report);
std::string ReportJson(const ObjectReport& report);

}  // namespace boreforge
