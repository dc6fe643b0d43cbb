// boreforge-check: says whether objects are sound. Needs no display.
#include <cstdio>
#include <string>
#include <vector>

#include "check/Report.h"
#include "platform/Files.h"
#include "shared/CommandLine.h"
#include "shared/Json.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-check";

// Appends what there is to say about the object, as JSON or in words. Returns kDone if it is sound.
ExitStatus CheckObject(const std::string& path, bool asJson, std::vector<std::string>& reports) {
    Bytes file;
    if (const Outcome read = ReadWholeFile(path, file); !read) {
        if (asJson) reports.push_back(UnreadableJson(path, read.Why().reason));
        return Fail(kProgram, read.With({.headline = "Error - The 3DS Object Can't Be Read!", .path = path}));
    }
    const ObjectReport report = Examine(path, file);
    reports.push_back(asJson ? ReportJson(report) : ReportText(report));
    return report.result == Verdict::Sound ? kDone : kFailed;
}

int CheckObjects(const std::vector<std::string>& paths, bool asJson) {
    std::vector<std::string> reports;
    int status = kDone;
    for (const std::string& path : paths)
        if (CheckObject(path, asJson, reports) != kDone) status = kFailed;
    if (asJson) {
        std::puts(JsonObject({Field("version", 1), Field("files", JsonList(reports))}).c_str());
        return status;
    }
    for (const std::string& report : reports)
        std::printf("%s%s", &report == &reports.front() ? "" : "\n", report.c_str());
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
    application.add_option("OBJECT", paths, "The objects to check")->type_name("FILE.3ds")->required();
    application.add_flag("--json", asJson, "Report as JSON, for programs");
    return RunProgram(application, count, arguments, [&] { return CheckObjects(paths, asJson); });
}
