// The engine's speed: the model store, the track files, the whole job, the tracer. bench/ratios compares the
// times with the minimum that the same work could cost, measured in the same run, so that the ratios hold on
// every machine.
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "Measure.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "support/LiteralScan.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "tunnelmesh/TunnelSweep.h"

using namespace boreforge;

namespace {

using benchmark::State;

// Replaces the open track with a hilly, banked circuit of `pieces` tunnel segments, each about `length` long.
void BuildCircuit(int pieces, double length) {
    ResetTrackFile();
    const double radius = pieces * length / kFullTurn;
    for (int i = 0; i < pieces; ++i) {
        const double angle = kFullTurn * i / pieces, x = std::cos(angle), z = std::sin(angle);
        const double height = 12 + 6 * std::sin(7 * angle), slope = 42 * std::cos(7 * angle) / radius;
        const auto ahead = [&](double by) -> Vector3D {
            return {F(radius * x - by * z), F(height + by * slope), F(radius * z + by * x)};
        };
        TrackFile.BezierNodes.push_back(
            {ahead(0), ahead(-length / 3), ahead(length / 3), F(0.3 * std::sin(5 * angle))});
        TrackFile.Segments.emplace_back().IsTunnel = kTrue;
    }
}

// --- The model store

constexpr int kObjects = 50;  // as many as in a job, so that the cost of fresh memory is included

// A wall of 100 bands between rings of 50 points: 10,000 faces, which make one mesh. It stays traced.
Mesh3DS SweepWall() {
    MakeRoundShape(50, 3);
    BuildCircuit(2, 100);
    if (TraceTrack()) TracedSegments[0].Samples.resize(100);
    ResetModel();
    SweepInsideWall(0, 0, 1, false);
    return Model3DS.Meshes.at(0);
}

template <class Add>
void ForEachFace(const Mesh3DS& mesh, Add add) {
    const auto point = [&](std::int16_t index) { return mesh.Points[static_cast<std::size_t>(index)]; };
    for (const MeshFace& face : mesh.Faces)
        add(point(face.a), point(face.b), point(face.c));
}

LiteralScan ScanOf(const Mesh3DS& mesh) {
    LiteralScan scan;
    ForEachFace(mesh, [&](const auto&... corners) { scan.Add({corners...}); });
    return scan;
}

void FillByFaces(const Mesh3DS& wall) {
    BeginObject(kObjectPrefix, 0, false, true);
    ForEachFace(wall, [](const auto&... corners) { AddFace(corners..., {}, {}, {}); });
}

void FillBySweep(const Mesh3DS&) { SweepInsideWall(0, 0, 1, false); }

void MeasureFill(State& state, void (*fill)(const Mesh3DS&)) {
    const Mesh3DS wall = SweepWall();
    const auto fillAll = [&] {
        for (int i = 0; i < kObjects; ++i)
            fill(wall);
        return Model3DS.MeshCount() == kObjects;
    };
    Measure(state, fillAll, ResetModel);
    state.SetItemsProcessed(state.iterations() * kObjects * kMaxFacesOfMesh);
    const LiteralScan scan = ScanOf(wall);
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        if (!std::ranges::equal(mesh.Points, scan.points) || !std::ranges::equal(mesh.Faces, scan.faces))
            return state.SkipWithError("not the mesh of the literal scan");
}

void MeasureScan(State& state) {
    const Mesh3DS wall = SweepWall();
    Measure(state, [&] { return ScanOf(wall).faces.size() == kMaxFacesOfMesh; });
    state.SetItemsProcessed(state.iterations() * kMaxFacesOfMesh);
}

// --- Track files

// As in a program that was just started: nothing is open, and all memory is fresh. Also removes the output of
// the last iteration. `flush` is whether files are flushed to the disk. The disk's speed isn't the program's,
// and its constant share would hide how the time grows.
void StartAfresh(bool flush) {
    ResetModel();
    ResetTrackFile();
    std::vector<TracedSegment>().swap(TracedSegments);
    malloc_trim(0);
    for (const char* name : {"job.3ds", "job.zrtrack", "copy"})
        ::unlink(WorkFile(name).c_str());
    fileCalls.flush = flush ? SystemFileCalls().flush : [](int) { return 0; };
}

// Copies in pieces of 256 KiB, like those in which an object is written.
bool CopyFile(const std::string& from) {
    const OpenFile source(::open(from.c_str(), O_RDONLY));
    const OpenFile target(::open(WorkFile("copy").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666));
    Bytes piece(std::size_t{1} << 18);
    for (;;) {
        const std::int64_t got = ReadFully(source.Get(), piece.data(), piece.size());
        if (got <= 0) return got == 0 && fileCalls.flush(target.Get()) == 0;
        if (!WriteFully(target.Get(), std::span(piece).first(static_cast<std::size_t>(got)))) return false;
    }
}

// Replaces the open track with one of about `bytes` bytes: a fifth each for path and segments of all kinds,
// scenery points, scenery objects, structure records and the terrain.
void BuildLargeTrack(int bytes) {
    const auto fifthOf = [bytes](int recordBytes) { return bytes / 5 / recordBytes; };
    BuildCircuit(fifthOf(60 + 33 + (4 + 130 + 40 + 32 + 54) / 5), 8);
    std::int32_t kind = 0;
    for (TrackSegment& segment : TrackFile.Segments)
        segment.SegmentKind = kind++ % 5;
    const auto points = static_cast<std::size_t>(fifthOf(64)),
               objects = static_cast<std::size_t>(fifthOf(112));
    const auto structures = static_cast<std::size_t>(fifthOf(92 + (4 + 3 * 24) + 28 + 48 + (28 + 16)));
    TrackFile.SceneryPoints.assign(points, {1, 2, 3, 0.5f, 4});
    TrackFile.SceneryObjects.assign(objects,
                                    {"station-building.3ds", "dummy", {1, 0, 0, 0, 1}, {2, 0, 1}, {}});
    TrackFile.FundRecords.assign(structures, {{2, 0, 1}, kTrue, 3, kFalse, 1});
    TrackFile.RascRecords.assign(structures, {{{1, 2}, {3, 4}, {5, 6}}});
    TrackFile.FrenRecords.assign(structures, {{3, 1, 0}});
    TrackFile.TubeRecords.assign(structures, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    TrackFile.CatwRecords.assign(structures, {1, 2, 3, 4, 5, 6, 16});
    TrackFile.HasTerrain = kTrue;
    TrackFile.TerrainWidth = fifthOf(4);
    TrackFile.TerrainDepth = 1;
    TrackFile.TerrainGrid.assign(static_cast<std::size_t>(TrackFile.TerrainWidth), 7);
}

// Makes the track if it isn't there yet.
std::string LargeTrack(int megabytes) {
    const std::string path = WorkFile(std::to_string(megabytes) + ".zrtrack");
    if (std::filesystem::exists(path)) return path;
    BuildLargeTrack(megabytes * 1'000'000);
    return WriteTrackFile(path) ? path : "";
}

bool LoadAndSave(const std::string& track) {
    return ReadTrackFile(track) && WriteTrackFile(WorkFile("job.zrtrack"));
}

void MeasureOnTrack(State& state, bool (*work)(const std::string&), int megabytes, bool flush) {
    const auto prepare = [&] { StartAfresh(flush); };
    Measure(
        state, [&, track = LargeTrack(megabytes)] { return work(track); }, prepare);
}

// --- The job

constexpr int kLongCircuit = 0;  // the sample track, in place of a number of pieces
constexpr int kPieces = 54, kManyPieces = 40 * kPieces;

// Prepares the shape and the traced track of a job. A job saves the track to another file, so that the next
// one starts with the same.
void OpenJob(int pieces, int nodes, bool flush) {
    StartAfresh(flush);
    MakeRoundShape(nodes, 3);
    if (pieces != kLongCircuit) BuildCircuit(pieces, 20);
    TrackLoaded = pieces != kLongCircuit ? TraceTrack()
                                         : bool(OpenTrack(BOREFORGE_PROJECT "/tracks/long-circuit.zrtrack"));
    TrackFilePath = WorkFile("job.zrtrack");
}

// A job with the program's default settings except for the finest detail.
bool RunJob() {
    TunnelChoices choices;
    choices.DetailItem = 0;
    return bool(RunTunnelJob(DeriveJobSettings(choices, WorkFile("job.3ds"))));
}

void MeasureJob(State& state, int pieces, int nodes, bool flush) {
    Measure(state, RunJob, [&] { OpenJob(pieces, nodes, flush); });
    std::int64_t faces = 0;
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        faces += mesh.FaceCount();
    state.SetItemsProcessed(state.iterations() * faces);
}

// Isn't flushed to the disk.
void MeasureCopyOfObject(State& state) {
    OpenJob(kLongCircuit, 32, false);
    const std::string object = RunJob() ? WorkFile("job.3ds") : "";
    Measure(
        state, [&] { return CopyFile(object); }, [] { ::unlink(WorkFile("copy").c_str()); });
}

void MeasureTrace(State& state) {
    BuildCircuit(kManyPieces, 20);
    Measure(state, TraceTrack);
    std::int64_t points = 0;
    for (const TracedSegment& traced : TracedSegments)
        points += 200 + std::llround(10 * traced.Length);  // to measure the piece, then to walk it
    state.SetItemsProcessed(state.iterations() * points);
}

// --- Memory

// The peak of a child process. It starts with the pages of this one, which are few after StartAfresh.
template <class Work>
void MeasureMemory(State& state, Work work) {
    for (auto _ : state) {
        StartAfresh(true);
        const pid_t child = ::fork();
        if (child == 0) ::_exit(work() ? 0 : 1);
        int status = -1;
        struct rusage usage {};
        if (::wait4(child, &status, 0, &usage) != child || status != 0)
            return state.SkipWithError("the work failed");
        state.counters["bytes"] = static_cast<double>(usage.ru_maxrss) * 1024;
    }
}

void MeasureMemoryOfTrack(State& state) {
    MeasureMemory(state, [track = LargeTrack(100)] { return LoadAndSave(track); });
}

void MeasureMemoryOfJob(State& state) {
    MeasureMemory(state, [] { return OpenJob(kManyPieces, 32, true), RunJob(); });
}

}  // namespace

int main(int count, char** arguments) {
    AddCase("AddFace", MeasureFill, FillByFaces);
    AddCase("sweep of a wall", MeasureFill, FillBySweep);
    AddCase("literal scan", MeasureScan);
    for (const int megabytes : {50, 100})
        for (const bool flush : {true, false}) {
            const std::string size = (flush ? ", " : " unflushed, ") + std::to_string(megabytes) + " MB";
            AddCase("load and save" + size, MeasureOnTrack, LoadAndSave, megabytes, flush);
            AddCase("copy" + size, MeasureOnTrack, CopyFile, megabytes, flush);
        }
    AddCase("memory of load and save, 100 MB", MeasureMemoryOfTrack);
    AddCase("job on the long circuit", MeasureJob, kLongCircuit, 32, true);
    AddCase("copy of its object", MeasureCopyOfObject);
    // How the time for a face grows, without the flush:
    AddCase("job of 250,000 faces", MeasureJob, kPieces, 32, false);
    AddCase("job of 10 million faces", MeasureJob, kManyPieces, 32, false);
    for (const int nodes : {8, 32, 128, 512})
        AddCase("job of " + std::to_string(nodes) + " nodes", MeasureJob, kPieces, nodes, false);
    AddCase("memory of 10 million faces", MeasureMemoryOfJob);
    AddCase("Bezier points of a trace", MeasureTrace);
    return RunCases(count, arguments);
}
