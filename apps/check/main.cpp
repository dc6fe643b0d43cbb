// boreforge-check: says whether objects are sound. Needs no display.
#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

#include "check/Report.h"
#include "platform/Files.h"
#include "shared/CommandLine.h"
#include "shared/Json.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-check";

// Says on standard error if the file can't be read.
ObjectReport Check(const std::string& path) {
    Bytes file;
    const Outcome read = ReadWholeFile(path, file);
    if (read) return Examine(path, file);
    std::ignore =
        Fail(kProgram, read.With({.headline = "Error - The 3DS Object Can't Be Read!", .path = path}));
    ObjectReport report;
    report.path = path;
    report.damage.reason = read.Why().reason;
    report.result = Verdict::Unreadable;
    return report;
}

int CheckObjects(const std::vector<std::string>& paths, bool asJson) {
    std::vector<std::string> reports;
    int status = kDone;
    for (const std::string& path : paths) {
        const ObjectReport report = Check(path);
        if (report.result != Verdict::Sound) status = kFailed;
        if (asJson)
            reports.push_back(ReportJson(report));
        else if (report.result != Verdict::Unreadable)
            std::printf("%s%s", &path == &paths.front() ? "" : "\n", ReportText(report).c_str());
    }
    if (asJson) std::puts(JsonObject({Field("version", 1), Field("files", JsonList(reports))}).c_str());
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
