// The engine's speed: the model store, the track files, the whole job, the tracer. bench/ratios compares the
// times with the minimum that the same work could cost, measured in the same run, so that the ratios hold on
// every machine.
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "LiteralScan.h"
#include "Measure.h"
#include "job/mMain.h"
#include "platform/Files.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "tunnelmesh/TunnelMesh.h"

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
    BeginObject("SEGT", 0, false, true);
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

// Makes a track file of about `bytes` bytes: a fifth each for path and segments of all kinds, scenery points,
// scenery objects, structure records and the terrain.
bool MakeLargeTrack(const std::string& path, int bytes) {
    const auto fifthOf = [bytes](int recordBytes) { return std::size_t(bytes / 5 / recordBytes); };
    BuildCircuit(int(fifthOf(60 + 33 + (4 + 130 + 40 + 32 + 54) / 5)), 8);
    std::int32_t kind = 0;
    for (TrackSegment& segment : TrackFile.Segments)
        segment.SegmentKind = kind++ % 5;
    TrackFile.SceneryPoints.assign(fifthOf(64), {1, 2, 3, 0.5f, 4});
    TrackFile.SceneryObjects.assign(fifthOf(112),
                                    {"station-building.3ds", "dummy", {1, 0, 0, 0, 1}, {2, 0, 1}, {}});
    const std::size_t structures = fifthOf(92 + (4 + 3 * 24) + 28 + 48 + (28 + 16));
    TrackFile.FundRecords.assign(structures, {{2, 0, 1}, kTrue, 3, kFalse, 1});
    TrackFile.RascRecords.assign(structures, {{{1, 2}, {3, 4}, {5, 6}}});
    TrackFile.FrenRecords.assign(structures, {{3, 1, 0}});
    TrackFile.TubeRecords.assign(structures, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    TrackFile.CatwRecords.assign(structures, {1, 2, 3, 4, 5, 6, 16});
    TrackFile.HasTerrain = kTrue;
    TrackFile.TerrainGrid.assign(fifthOf(4), 7);
    TrackFile.TerrainWidth = std::int32_t(fifthOf(4));
    TrackFile.TerrainDepth = 1;
    return bool(WriteTrackFile(path));
}

bool LoadAndSave(const std::string& track) {
    return ReadTrackFile(track) && WriteTrackFile(WorkFile("job.zrtrack"));
}

void MeasureOnTrack(State& state, bool (*work)(const std::string&), const std::string& track, bool flush) {
    const auto workOnTrack = [&] { return work(track); };
    Measure(state, workOnTrack, [flush] { StartAfresh(flush); });
}

// --- The job

struct Tunnel {
    int pieces;  // of a circuit; 0: the sample track
    int nodes;   // of a round shape
};
constexpr Tunnel kLongCircuit{0, 32}, kSmall{54, 32}, kLarge{40 * 54, 32};

// The job saves its track to another file, so that the next one starts with the same.
void OpenJob(Tunnel tunnel, bool flush) {
    StartAfresh(flush);
    MakeRoundShape(tunnel.nodes, 3);
    BuildCircuit(tunnel.pieces, 20);
    TrackLoaded = TraceTrack();
    if (tunnel.pieces == 0) (void)OpenTrack(BOREFORGE_PROJECT "/tracks/long-circuit.zrtrack");
    TrackFilePath = WorkFile("job.zrtrack");
}

// A job with the program's default settings except for the finest detail.
bool RunJob() {
    TunnelChoices choices;
    choices.detailItem = 0;
    return bool(RunTunnelJob(DeriveJobSettings(choices, WorkFile("job.3ds"))));
}

void MeasureJob(State& state, Tunnel tunnel, bool flush) {
    Measure(state, RunJob, [&] { OpenJob(tunnel, flush); });
    std::int64_t faces = 0;
    for (const Mesh3DS& mesh : Model3DS.Meshes)
        faces += mesh.FaceCount();
    state.SetItemsProcessed(state.iterations() * faces);
}

// The copy isn't flushed to the disk.
void MeasureCopyOfObject(State& state) {
    OpenJob(kLongCircuit, false);
    const auto copy = [object = RunJob() ? WorkFile("job.3ds") : ""] { return CopyFile(object); };
    Measure(state, copy, [] { ::unlink(WorkFile("copy").c_str()); });
}

void MeasureTrace(State& state) {
    BuildCircuit(kLarge.pieces, 20);
    Measure(state, TraceTrack);
    std::int64_t points = 0;
    for (const TracedSegment& traced : TracedSegments)
        points += 200 + std::llround(10 * traced.Length);  // to measure the piece, then to walk it
    state.SetItemsProcessed(state.iterations() * points);
}

// The peak memory of a child process. It starts with the pages of this one, which are few after StartAfresh.
void MeasureMemory(State& state, bool (*work)()) {
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

}  // namespace

int main(int count, char** arguments) {
    AddCase("AddFace", MeasureFill, FillByFaces);
    AddCase("sweep of a wall", MeasureFill, FillBySweep);
    AddCase("literal scan", MeasureScan);
    for (const int megabytes : {50, 100}) {
        const std::string size = std::to_string(megabytes) + " MB", track = WorkFile(size + ".zrtrack");
        if (!MakeLargeTrack(track, megabytes * 1'000'000)) return 1;
        AddCase("load and save, " + size, MeasureOnTrack, LoadAndSave, track, true);
        AddCase("copy, " + size, MeasureOnTrack, CopyFile, track, true);
        AddCase("load and save unflushed, " + size, MeasureOnTrack, LoadAndSave, track, false);
        AddCase("copy unflushed, " + size, MeasureOnTrack, CopyFile, track, false);
    }
    AddCase("memory of load and save, 100 MB", MeasureMemory,
            [] { return LoadAndSave(WorkFile("100 MB.zrtrack")); });
    AddCase("job on the long circuit", MeasureJob, kLongCircuit, true);
    AddCase("copy of its object", MeasureCopyOfObject);
    // How the time for a face grows, without the flush:
    AddCase("job of 250,000 faces", MeasureJob, kSmall, false);
    AddCase("job of 10 million faces", MeasureJob, kLarge, false);
    for (const int nodes : {8, 32, 128, 512})
        AddCase("job of " + std::to_string(nodes) + " nodes", MeasureJob, Tunnel{54, nodes}, false);
    AddCase("memory of 10 million faces", MeasureMemory, [] {
        OpenJob(kLarge, true);
        return RunJob();
    });
    AddCase("Bezier points of a trace", MeasureTrace);
    return RunCases(count, arguments);
}
