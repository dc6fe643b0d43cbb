// The report of boreforge-check on an object.
#pragma once

#include <string>
#include <vector>

#include "shared/ObjectSurfaces.h"

namespace boreforge {

enum class Verdict { Sound, FacingWrongly, Empty, Damaged, Unreadable };

struct ObjectReport {
    std::string path;
    Object3DS object;  // empty if the file is damaged
    ObjectDamage damage;
    std::vector<ObjectSurface> surfaces;
    Verdict result = Verdict::Damaged;
};

// Examines a whole file; `path` is its name in the report.
ObjectReport Examine(const std::string& path, const Bytes& file);

// The report as text for people, or as a JSON object for programs. Coordinates are in the file's axes: z is
// up.
std::string ReportText(const ObjectReport& report);
std::string ReportJson(const ObjectReport& report);

}  // namespace boreforge
