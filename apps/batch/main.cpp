// boreforge-batch: the tunnel job from a command line, for scripts.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "base/Text.h"
#include "batch/BatchOptions.h"
#include "batch/ShapeReport.h"
#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/Paths.h"
#include "shared/Report.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

using namespace boreforge;

namespace {

constexpr char kProgram[] = "boreforge-batch";

// What was said about a file, for the report in JSON. Each message is already on standard error.
struct Messages {
    std::vector<std::string> warnings, errors;
};

// What was made of a track.
struct TrackReport {
    BatchJob job;
    Messages messages;
    std::int64_t segments = 0, tunnels = 0, objects = 0, faces = 0, bytes = 0;
};

void Warn(const BatchOptions& options, const std::string& path, const std::string& text, Messages& messages) {
    PrintMessage(kProgram, path, options.strict, text);
    (options.strict ? messages.errors : messages.warnings).push_back(text);
}

void ReportError(const Outcome& outcome, Messages& messages) {
    messages.errors.push_back(FailureText(outcome.Why()));
    PrintFailure(kProgram, outcome.Why());
}

// Every output of all jobs is compared with every input and with every other output, also through links and
// other spellings. Returns the first conflict as a sentence, or an empty text. A track that is rewritten in
// place doesn't count as an output.
std::string ConflictOf(const BatchOptions& options) {
    std::map<FileIdentity, std::string> inputs, outputs;
    if (!options.shape.empty()) inputs.emplace(IdentityOf(options.shape), options.shape);
    for (const BatchJob& job : options.jobs)
        inputs.emplace(IdentityOf(job.track), job.track);
    for (const BatchJob& job : options.jobs)
        for (const std::string& output : {job.object, job.trackOut}) {
            if (output.empty()) continue;
            const FileIdentity file = IdentityOf(output);
            if (const auto input = inputs.find(file); input != inputs.end())
                return "'" + ToOneLine(output) + "' would replace '" + ToOneLine(input->second) + "'";
            if (const auto [other, isNew] = outputs.emplace(file, job.track); !isNew)
                return "'" + ToOneLine(other->second) + "' and '" + ToOneLine(job.track) +
                       "' would both make '" + ToOneLine(output) + "'";
        }
    return {};
}

void PrepareShape(const BatchOptions& options, Messages& messages) {
    if (options.shape.empty()) {
        LoadSampleShape(options.preset);
    } else if (const Outcome loaded = LoadTunnelShape(options.shape); !loaded) {
        const Failure context = {.headline = "Error - Invalid Tunnel Shape File!", .path = options.shape};
        return ReportError(loaded.With(context), messages);
    }
    for (const std::string& warning : ShapeWarnings(TunnelShape, options.choices.doubleSided))
        Warn(options, options.shape, warning, messages);
}

// What a save of the open track drops, or an empty text.
std::string DroppedBySave() {
    std::string lost;
    if (TrackOnDisk.foreignChunks > 0)
        lost = Count(TrackOnDisk.foreignChunks, "chunk") + " of an unknown kind";
    if (TrackOnDisk.bytesAfterEnd > 0)
        lost += (lost.empty() ? "" : " and ") + Count(TrackOnDisk.bytesAfterEnd, "byte") +
                " after the last chunk";
    return lost;
}

void PrintCounts(const BatchOptions& options, const TrackReport& report) {
    const std::string text = Count(report.segments, "segment") + ", " +
                             Count(report.tunnels, "tunnel segment") + ": " +
                             Count(report.objects, "object") + ", " + Count(report.faces, "face") + ", " +
                             Count(report.bytes, "byte") + (options.dryRun ? " for " : " in ") +
                             ToOneLine(report.job.object) + "\n";
    std::fputs(text.c_str(), stdout);
}

// Makes the object and the track. The counts are complete if there is no error.
TrackReport RunJob(const BatchOptions& options, const BatchJob& job) {
    TrackReport report;
    report.job = job;
    if (const Outcome opened = OpenTrack(job.track); !opened) {
        ReportError(opened, report.messages);
        return report;
    }
    if (const std::string lost = DroppedBySave(); !options.noTrack && !lost.empty())
        Warn(options, job.track, "It has " + lost + "; the saved track won't have them.", report.messages);
    if (!report.messages.errors.empty()) return report;
    if (!job.trackOut.empty()) TrackFilePath = job.trackOut;
    report.segments = TrackFile.SegmentCount();
    report.tunnels = CountTunnelSegments();  // before the job clears the flags
    const TunnelJobSettings settings = DeriveJobSettings(options.choices, job.object);
    const Outcome made = RunTunnelJob(settings, {.track = options.noTrack, .writing = options.dryRun});
    if (!made) {
        ReportError(made.With({.path = job.track}), report.messages);
        return report;
    }
    report.objects = Model3DS.MeshCount();
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        report.faces += mesh.FaceCount();
    report.bytes = Compute3DSLength();
    if (!options.json) PrintCounts(options, report);
    return report;
}

Json JsonOf(const BatchOptions& options, const TrackReport& report) {
    const BatchJob& job = report.job;
    const bool isMade = report.messages.errors.empty();
    const char* const success = options.dryRun ? "would be made" : "made";
    Json json = {{"track", job.track},
                 {"outcome", isMade ? success : "failed"},
                 {"warnings", report.messages.warnings},
                 {"errors", report.messages.errors}};
    if (!isMade) return json;
    json["segments"] = report.segments;
    json["tunnels"] = report.tunnels;
    json["objects"] = report.objects;
    json["faces"] = report.faces;
    json["bytes"] = report.bytes;
    json["object"] = job.object;
    if (!options.noTrack) json["savedTrack"] = job.trackOut.empty() ? job.track : job.trackOut;
    return json;
}

void PrintReport(const BatchOptions& options, const Messages& messages, const std::optional<Clearance>& room,
                 const std::vector<TrackReport>& reports) {
    Json json = {{"version", 1}, {"warnings", messages.warnings}, {"errors", messages.errors}};
    if (room) {
        json["clearWidth"] = ToJson(room->width);
        json["clearHeight"] = ToJson(room->height);
        json["clearAroundPath"] = ToJson(room->aroundPath);
    }
    json["tracks"] = Json::array();
    for (const TrackReport& report : reports)
        json["tracks"].push_back(JsonOf(options, report));
    PrintJson(json);
}

std::filesystem::path FolderOf(const BatchOptions& options) {
    return std::u8string(options.outputFolder.begin(), options.outputFolder.end());
}

// Makes the folder for the outputs. `isNew`: it was made, not found.
Outcome MakeFolder(const BatchOptions& options, bool& isNew) {
    std::error_code error;
    if (!options.outputFolder.empty()) isNew = std::filesystem::create_directory(FolderOf(options), error);
    if (!error) return {};
    return Failure{.headline = "Error - The Folder Can't Be Made!",
                   .path = options.outputFolder,
                   .reason = error.message() + "."};
}

void PrintRoom(const Clearance& room) {
    std::printf("The shape is %s wide and %s high inside, with %s around the path.\n",
                Number(room.width).c_str(), Number(room.height).c_str(), Number(room.aroundPath).c_str());
}

int RunBatch(const BatchOptions& options) {
    if (const std::string conflict = ConflictOf(options); !conflict.empty()) {
        PrintFailure(kProgram, {.reason = conflict});
        return kWrongUsage;
    }
    Messages messages;
    PrepareShape(options, messages);
    const std::optional<Clearance> room = ClearanceOf(TunnelShape);
    if (room && options.dryRun && !options.json) PrintRoom(*room);
    bool isNewFolder = false;
    if (messages.errors.empty())
        if (const Outcome made = MakeFolder(options, isNewFolder); !made) ReportError(made, messages);
    std::vector<TrackReport> reports;
    bool isGood = messages.errors.empty();
    if (isGood)
        for (const BatchJob& job : options.jobs)
            reports.push_back(RunJob(options, job));
    for (const TrackReport& report : reports)
        isGood = isGood && report.messages.errors.empty();
    std::error_code ignored;
    if (isNewFolder && options.dryRun) std::filesystem::remove(FolderOf(options), ignored);
    if (options.json) PrintReport(options, messages, room, reports);
    return isGood ? kDone : kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    BatchOptions options;
    CLI::App application("", kProgram);
    AddBatchOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return RunBatch(options); });
}
