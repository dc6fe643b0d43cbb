// boreforge-check: says whether an object is sound. Needs no display.
#include <cstdio>
#include <string>

#include "check/Report.h"
#include "platform/Files.h"
#include "shared/CommandLine.h"

using namespace boreforge;

namespace {

void Print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

int CheckObject(const std::string& path, bool asJson) {
    Bytes file;
    if (const Outcome read = ReadWholeFile(path, file); !read) {
        if (asJson) Print(UnreadableJson(path, read.Why().reason));
        return Fail(read.With({.headline = "Error - The 3DS Object Can't Be Read!", .path = path}).Why());
    }
    const ObjectReport report = Examine(path, file);
    Print(asJson ? ReportJson(report) : ReportText(report));
    return report.result == Verdict::Sound ? kDone : kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    std::string path;
    bool asJson = false;
    CLI::App application("", "boreforge-check");
    application.description("Checks an object and says what it consists of.");
    application.footer(
        "Exit status: 0 sound, 1 damaged, empty, or with walls that face the wrong way, 2 wrong usage.");
    AddPath(application, "OBJECT", path, "FILE.3ds", "The object to check")->required();
    application.add_flag("--json", asJson, "Report as JSON, for programs");
    return RunProgram(application, count, arguments, [&] { return CheckObject(path, asJson); });
}
