// boreforge-check: says whether objects are sound. Needs no display.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/Files.h"
#include "shared/CommandLine.h"
#include "shared/ObjectSurfaces.h"
#include "shared/Report.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-check";

enum class Verdict { Sound, FacingWrongly, Empty, Damaged, Unreadable };

struct ObjectReport {
    std::string path;
    Object3DS object;
    ObjectDamage damage;
    std::vector<ObjectSurface> surfaces;
    Verdict result = Verdict::Damaged;
};

// From the track's axes to the file's, where y is -z of the track, and z is y of the track.
ObjectBounds InFileAxes(const ObjectBounds& bounds) {
    const auto& [low, high] = bounds;
    return {{low.x, -high.z, low.y}, {high.x, -low.z, high.y}};
}

std::string BoundsText(const ObjectBounds& bounds) {
    const auto [low, high] = InFileAxes(bounds);
    return "x " + Number(low.x) + " to " + Number(high.x) + ", y " + Number(low.y) + " to " + Number(high.y) +
           ", z " + Number(low.z) + " to " + Number(high.z);
}

bool HasVolume(const ObjectSurface& surface) {
    return surface.facing == Facing::Outwards || surface.facing == Facing::Inwards;
}

std::string FacingText(const ObjectSurface& surface) {
    if (surface.facing == Facing::NotJudged) return "facing not judged";
    if (surface.facing == Facing::Mixed)
        return "FACING BOTH WAYS: " + Count(surface.opposedEdges, "edge") + " between opposite faces";
    return std::string(surface.facing == Facing::Outwards ? "facing outwards" : "FACING INWARDS") +
           ", volume " + Number(std::round(surface.volume * 1000) / 1000);
}

std::string StateText(const ObjectSurface& surface) {
    std::string text = surface.edgeCount == 0 ? "without area"
                       : surface.IsClosed()   ? "closed"
                                              : Count(surface.openEdges, "open edge");
    if (surface.IsDoubleSided())
        text += ", double-sided";
    else if (surface.crowdedEdges > 0)
        text += ", " + Count(surface.crowdedEdges, "edge") + " of more than two faces";
    text += ", " + FacingText(surface);
    if (surface.innerCapFaces > 0)
        text += "\n  " + Count(surface.innerCapFaces, "face") +
                " of a cap inside the wall, as a tunnel over the start of the track has";
    if (surface.facesWithoutArea > 0)
        text += "\n  " + Count(surface.facesWithoutArea, "face") + " with two equal corners";
    return text;
}

std::string MaterialNames(const ObjectReport& report, const ObjectSurface& surface) {
    std::string names;
    for (const std::uint32_t material : surface.materials)
        names += (names.empty() ? "" : ", ") + ToOneLine(Shorten(report.object.materials[material].name));
    return names;
}

bool HasNote(const ObjectSurface& surface) {
    return !surface.IsClosed() || (surface.crowdedEdges > 0 && !surface.IsDoubleSided());
}

std::string VerdictText(const ObjectReport& report) {
    const auto count = [&](auto property) {
        return static_cast<std::size_t>(std::ranges::count_if(report.surfaces, property));
    };
    if (report.result == Verdict::Damaged) return "Damaged. " + DamageText(report.damage);
    if (report.result == Verdict::Empty) return "Empty: there are no faces.";
    if (report.result == Verdict::FacingWrongly)
        return "Wrong: walls face the wrong way in " +
               std::to_string(count([](const auto& s) { return s.FacesWrongly(); })) + " of " +
               Count(report.surfaces.size(), "surface") + ".";
    const std::size_t notes = count(HasNote);
    const std::size_t notJudged = count([](const auto& s) { return s.facing == Facing::NotJudged; });
    std::string text = "Sound.";
    if (notes > 0)
        text += " With open edges or edges of more than two faces: " + Count(notes, "surface") + ".";
    if (notJudged > 0) text += " Facing not judged: " + Count(notJudged, "surface") + ".";
    return text;
}

Json BoundsJson(const ObjectBounds& bounds) {
    const auto [low, high] = InFileAxes(bounds);
    const auto corner = [](const Vector3D& p) { return Json{ToJson(p.x), ToJson(p.y), ToJson(p.z)}; };
    return {{"low", corner(low)}, {"high", corner(high)}};
}

Json SurfaceJson(const ObjectReport& report, const ObjectSurface& surface) {
    constexpr const char* kFacings[] = {"not judged", "outwards", "inwards", "both ways"};
    Json json = {{"faces", surface.faceCount},
                 {"facesWithoutArea", surface.facesWithoutArea},
                 {"innerCapFaces", surface.innerCapFaces},
                 {"edges", surface.edgeCount},
                 {"openEdges", surface.openEdges},
                 {"edgesOfMoreThanTwoFaces", surface.crowdedEdges},
                 {"edgesBetweenOppositeFaces", surface.opposedEdges},
                 {"closed", surface.IsClosed()},
                 {"doubleSided", surface.IsDoubleSided()},
                 {"facing", kFacings[static_cast<int>(surface.facing)]},
                 {"bounds", BoundsJson(surface.bounds)},
                 {"materials", Json::array()}};
    for (const std::uint32_t material : surface.materials)
        json["materials"].push_back(Shorten(report.object.materials[material].name));
    if (HasVolume(surface)) json["volume"] = surface.volume;
    return json;
}

// Coordinates are in the file's axes: z is up.
std::string ReportText(const ObjectReport& report) {
    const Object3DS& object = report.object;
    std::string text = ToOneLine(report.path) + "\n";
    if (report.result != Verdict::Damaged)
        text += Count(object.meshCount, "object") + ", " + Count(object.materials.size(), "material") + ", " +
                Count(object.points.size(), "point") + ", " + Count(object.faces.size(), "face") + "\n";
    if (!object.points.empty()) text += BoundsText(BoundsOf(object)) + "\n";
    std::size_t number = 0;
    for (const ObjectSurface& surface : report.surfaces)
        text += "\nSurface " + std::to_string(++number) + ": " + Count(surface.faceCount, "face") + " of " +
                MaterialNames(report, surface) + "\n  " + BoundsText(surface.bounds) + "\n  " +
                StateText(surface) + "\n";
    return text + "\n" + VerdictText(report) + "\n";
}

Json ReportJson(const ObjectReport& report) {
    constexpr const char* kVerdicts[] = {"sound", "facing wrongly", "empty", "damaged", "unreadable"};
    const Object3DS& object = report.object;
    Json json = {{"file", report.path}, {"verdict", kVerdicts[static_cast<int>(report.result)]}};
    if (report.result == Verdict::Damaged) json["byte"] = report.damage.byte;
    if (!report.damage.reason.empty()) {
        json["reason"] = report.damage.reason;
        return json;
    }
    json["objects"] = object.meshCount;
    json["points"] = object.points.size();
    json["faces"] = object.faces.size();
    json["materials"] = Json::array();
    for (const ObjectMaterial& material : object.materials)
        json["materials"].push_back(Shorten(material.name));
    if (!object.points.empty()) json["bounds"] = BoundsJson(BoundsOf(object));
    json["surfaces"] = Json::array();
    for (const ObjectSurface& surface : report.surfaces)
        json["surfaces"].push_back(SurfaceJson(report, surface));
    return json;
}

// Says on standard error if the file can't be read.
ObjectReport Examine(const std::string& path) {
    ObjectReport report;
    report.path = path;
    Bytes file;
    if (const Outcome read = ReadWholeFile(path, file); !read) {
        PrintFailure(kProgram,
                     read.With({.headline = "Error - The 3DS Object Can't Be Read!", .path = path}).Why());
        report.damage.reason = read.Why().reason;
        report.result = Verdict::Unreadable;
        return report;
    }
    if (!Read3DSObject(file, report.object, report.damage)) return report;
    report.surfaces = FindSurfaces(report.object);
    const bool isWrong = std::ranges::any_of(report.surfaces, &ObjectSurface::FacesWrongly);
    report.result = report.surfaces.empty() ? Verdict::Empty
                    : isWrong               ? Verdict::FacingWrongly
                                            : Verdict::Sound;
    return report;
}

int CheckObjects(const std::vector<std::string>& paths, bool asJson) {
    Json reports = Json::array();
    int status = kDone;
    for (const std::string& path : paths) {
        const ObjectReport report = Examine(path);
        if (report.result != Verdict::Sound) status = kFailed;
        if (asJson)
            reports.push_back(ReportJson(report));
        else if (report.result != Verdict::Unreadable)
            std::printf("%s%s", &path == &paths.front() ? "" : "\n", ReportText(report).c_str());
    }
    if (asJson) PrintJson({{"version", 1}, {"files", reports}});
    return status;
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<std::string> paths;
    bool asJson = false;
    CLI::App application("", kProgram);
    application.description("Checks objects and says what they consist of.");
    application.footer(
        "Exit status: 0 all are sound, 1 one is damaged, empty, or has walls that face the wrong way, 2 "
        "wrong usage.");
    application.add_option("OBJECT", paths, "The objects to check")
        ->type_name("FILE.3ds")
        ->check(NotEmpty())
        ->required();
    application.add_flag("--json", asJson, "Report as JSON, for programs");
    return RunProgram(application, count, arguments, [&] { return CheckObjects(paths, asJson); });
}
