// The engine's speed: the model store, the track files, the whole job, the tracer. Times are compared with
// the minimum that the same work could cost, measured in the same run, so that the ratios hold on every
// machine.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "inputs.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "ratio_table.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"
#include "tunnelmesh/TunnelSweep.h"

using namespace boreforge;

namespace {

using benchmark::State;

// --- AddFace: a wall of 100 bands between rings of 50 points, 10,000 faces that make one mesh

constexpr std::size_t kNodes = 50, kBands = 100;
constexpr int kObjects = 50;  // as many as in a job, so that the cost of fresh memory is included
std::vector<std::vector<Vector3D>> wall;

void LayWall() {
    MakeRoundShape(kNodes, 3);
    BuildCircuit(2, 100);
    if (!TraceTrack()) std::abort();
    TracedSegments[0].Samples.resize(kBands);
    wall.assign(kBands + 1, {});
    for (std::size_t i = 0; i < kBands; ++i)
        CarryContour(TunnelShape.InsideNodes, TracedSegments[0].Samples[i].WorldMatrix, wall[i]);
    CarryContour(TunnelShape.InsideNodes, TracedSegments[1].Samples[0].WorldMatrix, wall[kBands]);
}

// Calls `add` with the points of each triangle, in the order of the sweep of an inside wall.
template <class Add>
void SweepOver(Add add) {
    for (std::size_t band = 1; band <= kBands; ++band) {
        const std::vector<Vector3D>& previous = wall[band - 1];
        const std::vector<Vector3D>& current = wall[band];
        for (std::size_t k = 0; k < kNodes; ++k) {
            const std::size_t k2 = k + 1 < kNodes ? k + 1 : 0;
            add(previous[k2], current[k2], current[k]);
            add(current[k], previous[k], previous[k2]);
        }
    }
}

void FillByFaces() {
    BeginObject(kObjectPrefix, 0, false, true);
    SweepOver([none = TexCoord()](const Vector3D& a, const Vector3D& b, const Vector3D& c) {
        AddFace(a, b, c, none, none, none);
    });
}

void FillBySweep() { SweepInsideWall(0, 0, 1, false); }

// The simplest way to share vertices: compare each stored point with all three points of a face; the last
// equal one counts.
struct ScannedObject {
    std::vector<Vector3D> points;
    std::vector<BufferFace> faces;

    void Add(const Vector3D& a, const Vector3D& b, const Vector3D& c) {
        BufferFace face{-1, -1, -1};
        const auto count = static_cast<std::int32_t>(points.size());
        for (std::int32_t i = 0; i < count; ++i) {
            const Vector3D& point = points[static_cast<std::size_t>(i)];
            if (a == point) face.a = i;
            if (b == point) face.b = i;
            if (c == point) face.c = i;
        }
        if (face.a < 0) face.a = Store(a);
        if (face.b < 0) face.b = Store(b);
        if (face.c < 0) face.c = Store(c);
        faces.push_back(face);
    }
    std::int32_t Store(const Vector3D& point) {
        points.push_back(point);
        return static_cast<std::int32_t>(points.size()) - 1;
    }
};

ScannedObject Scan() {
    ScannedObject object;
    SweepOver([&](const Vector3D& a, const Vector3D& b, const Vector3D& c) { object.Add(a, b, c); });
    return object;
}

// Whether `fill` makes one mesh with the same points and faces as the scan.
bool MakesTheSame(void (*fill)(), const ScannedObject& scanned) {
    ResetModel();
    fill();
    if (Model3DS.MeshCount() != 1) return false;
    const Mesh3DS& mesh = Model3DS.Meshes.front();
    const auto same = [](const MeshFace& one, const BufferFace& other) {
        return one.a == other.a && one.b == other.b && one.c == other.c;
    };
    return std::equal(mesh.Points.begin(), mesh.Points.end(), scanned.points.begin(), scanned.points.end()) &&
           std::equal(mesh.Faces.begin(), mesh.Faces.end(), scanned.faces.begin(), scanned.faces.end(), same);
}

void AddFillCase(const char* name, void (*fill)()) {
    AddCase(name, [fill](State& state) {
        LayWall();
        ResetModel();
        state.counters[kEach] = double{kObjects} * kMaxFacesOfMesh;
        return Timed(state, [&] {
            for (int i = 0; i < kObjects; ++i)
                fill();
            return Model3DS.MeshCount() == kObjects;
        });
    });
}

bool AddFaceCases() {
    LayWall();
    const ScannedObject scanned = Scan();
    if (!MakesTheSame(FillByFaces, scanned) || !MakesTheSame(FillBySweep, scanned)) {
        std::fputs("AddFace or the sweep makes a different mesh than the literal scan\n", stderr);
        return false;
    }
    AddFillCase("AddFace", FillByFaces);
    AddFillCase("sweep of a wall", FillBySweep);
    AddCase("literal scan", [](State& state) {
        state.counters[kEach] = kMaxFacesOfMesh;
        return Timed(state, [] { return Scan().faces.size() == kMaxFacesOfMesh; });
    });
    return true;
}

// --- Track files

// Sets whether a save flushes its file to the disk. The disk's speed isn't the program's, and its constant
// share would hide how the time grows.
void SetFlush(bool flush) {
    fileCalls.flush = flush ? SystemFileCalls().flush : [](int) { return 0; };
}

std::string LargeTrack(int megabytes) { return WorkFile(std::to_string(megabytes) + ".zrtrack"); }

// A load and a save to another file in the same folder, and a copy of the same file, each with and without a
// flush at the end. The new file never exists beforehand.
void AddTrackCases(int megabytes) {
    const std::string track = LargeTrack(megabytes), copy = WorkFile("copy.zrtrack");
    for (const bool flush : {true, false}) {
        const std::string size = (flush ? ", " : " unflushed, ") + std::to_string(megabytes) + " MB";
        AddCase("load and save" + size, [=](State& state) {
            SetFlush(flush);
            const double seconds = Timed(state, [&] {
                return ReadTrackFile(track) && WriteTrackFile(copy) && FileSize(copy) == FileSize(track);
            });
            ResetTrackFile();
            malloc_trim(0);  // so that the next load also starts with fresh memory
            ::unlink(copy.c_str());
            return seconds;
        });
        AddCase("copy" + size, [=](State& state) {
            const double seconds = Timed(state, [&] { return CopyFile(track, copy, flush); });
            ::unlink(copy.c_str());
            return seconds;
        });
    }
}

// --- The job

// Prepares the shape and the open, traced track of a job.
using Open = std::function<bool()>;

Open OnCircuit(int pieces, int nodes) {
    return [=] {
        MakeRoundShape(nodes, 3);
        BuildCircuit(pieces, 20);
        return TraceTrack();
    };
}

Open OnLongCircuit(void (*makeShape)()) {
    return [=] {
        makeShape();
        return bool(OpenTrack(BOREFORGE_TRACKS "/long-circuit.zrtrack"));
    };
}

// Prepares a job as if it were the first. The track is saved to another file, so that the next run starts
// with the same one.
bool OpenJob(const Open& open) {
    ResetModel();
    TrackLoaded = open();
    TrackFilePath = WorkFile("job.zrtrack");
    return TrackLoaded;
}

// A job with the program's default settings except for the finest detail.
bool RunJob(const std::string& object) {
    TunnelChoices choices;
    choices.DetailItem = 0;
    return bool(RunTunnelJob(DeriveJobSettings(choices, object)));
}

double TimeJob(State& state, const Open& open, bool flush) {
    const std::string object = WorkFile("job.3ds");
    SetFlush(flush);
    const bool opened = OpenJob(open);
    const double seconds = Timed(state, [&] { return opened && RunJob(object); });
    ::unlink(object.c_str());
    ::unlink(TrackFilePath.c_str());
    return seconds;
}

// Copies the object of a job, which runs once beforehand. The copy isn't flushed to the disk.
double TimeCopy(State& state, const Open& open, const std::string& object) {
    const std::string copy = WorkFile("copy.3ds");
    const bool made = FileSize(object) > 0 || (OpenJob(open) && RunJob(object));
    const double seconds = Timed(state, [&] { return made && CopyFile(object, copy, false); });
    ::unlink(copy.c_str());
    return seconds;
}

// The whole job, including the flushes of object and track.
void AddLongCircuitCases(const std::string& shape, void (*makeShape)()) {
    const Open open = OnLongCircuit(makeShape);
    const std::string object = WorkFile(shape + ".3ds");
    AddCase("job on the long circuit, " + shape, [=](State& state) { return TimeJob(state, open, true); });
    AddCase("copy of its object, " + shape, [=](State& state) { return TimeCopy(state, open, object); });
}

// The time for each face, without the flush. Each job runs in a process of its own: in the same process,
// later jobs would reuse pages that were freed a moment ago, small jobs all of them.
void AddGrowthCase(const std::string& name, int pieces, int nodes) {
    AddCase(name, [=](State& state) {
        const ChildFigures job = FiguresOfChild([&]() -> ChildFigures {
            const double seconds = TimeJob(state, OnCircuit(pieces, nodes), false);
            double faces = 0;
            for (const Mesh3DS& mesh : Model3DS.Meshes)
                faces += mesh.FaceCount();
            return {seconds, state.error_occurred() ? 0 : faces};
        });
        if (job.count < 1) state.SkipWithError("the job failed");
        state.counters[kEach] = job.count;
        return job.seconds;
    });
}

// The system's share of the growth: the time to copy a megabyte of the object.
void AddGrowthCopyCase(const std::string& name, int pieces, int nodes) {
    const std::string object = WorkFile(name + ".3ds");
    AddCase(name, [=](State& state) {
        const double seconds = TimeCopy(state, OnCircuit(pieces, nodes), object);
        state.counters[kEach] = static_cast<double>(FileSize(object)) / 1e6;
        return seconds;
    });
}

constexpr int kPieces = 54, kManyPieces = 40 * kPieces, kRoundNodes = 32;

// --- The tracer

double TimeTrace(State& state) {
    BuildCircuit(kManyPieces, 20);
    const double seconds = Timed(state, TraceTrack);
    double points = 0;
    for (const TracedSegment& traced : TracedSegments)
        points += 200 + 10 * double{traced.Length};  // to measure the piece, then to walk it
    state.counters["Bezier points of a trace"] =
        benchmark::Counter(points, benchmark::Counter::kIsIterationInvariantRate);
    return seconds;
}

// --- Memory

// Runs before any case, while this process is small. Also makes the large tracks, each in a child process of
// its own.
Figures MeasureMemory() {
    const std::string track = LargeTrack(100), copy = WorkFile("copy.zrtrack"), object = WorkFile("job.3ds");
    for (const int megabytes : {50, 100})
        PeakMemoryOf([=] {
            BuildLargeTrack(megabytes * std::int64_t{1000000});
            return bool(WriteTrackFile(LargeTrack(megabytes)));
        });
    Figures figures;
    figures["peak memory of load and save, 100 MB"] = {
        PeakMemoryOf([&] { return ReadTrackFile(track) && WriteTrackFile(copy); })};
    figures["size of the track"] = {static_cast<double>(FileSize(copy))};
    figures["peak memory of 10 million faces"] = {
        PeakMemoryOf([&] { return OpenJob(OnCircuit(kManyPieces, kRoundNodes)) && RunJob(object); })};
    figures["3 times the object plus 30 MB"] = {3.0 * static_cast<double>(FileSize(object)) + 30e6};
    for (const std::string& path : {copy, object, WorkFile("job.zrtrack")})
        ::unlink(path.c_str());
    return figures;
}

constexpr RatioRow kRows[] = {
    {"AddFace", "ns/face", 1e-9, "literal scan", 0, 15},
    {"sweep of a wall", "ns/face", 1e-9, "literal scan", 0, 15},
    {"load and save, 50 MB", "ms", 1e-3, "copy, 50 MB"},
    {"load and save, 50 MB", "ms", 1e-3, "copy unflushed, 50 MB"},
    {"load and save unflushed, 50 MB", "ms", 1e-3, "copy unflushed, 50 MB"},
    {"load and save, 100 MB", "ms", 1e-3, "copy, 100 MB", 3},
    {"load and save, 100 MB", "ms", 1e-3, "copy unflushed, 100 MB", 3},
    {"load and save unflushed, 100 MB", "ms", 1e-3, "copy unflushed, 100 MB", 3},
    {"peak memory of load and save, 100 MB", "MB", 1e6, "size of the track", 3},
    {"job on the long circuit, box", "ms", 1e-3, "copy of its object, box"},
    {"job on the long circuit, 32 nodes", "ms", 1e-3, "copy of its object, 32 nodes"},
    {"job of 10 million faces", "ns/face", 1e-9, "job of 250,000 faces", 1.1},
    {"copy of 10 million faces", "us/MB", 1e-6, "copy of 250,000 faces"},
    {"job of 32 nodes", "ns/face", 1e-9, "job of 8 nodes", 1.1},
    {"job of 128 nodes", "ns/face", 1e-9, "job of 8 nodes", 1.1},
    {"job of 512 nodes", "ns/face", 1e-9, "job of 8 nodes", 1.1},
    {"peak memory of 10 million faces", "MB", 1e6, "3 times the object plus 30 MB", 1},
    {"Bezier points of a trace", "M/s", 1e6, "", 0, 0, 5},
};

}  // namespace

int main(int count, char** arguments) {
    if (!AddFaceCases()) return 1;
    AddTrackCases(50);
    AddTrackCases(100);
    AddLongCircuitCases("box", [] { MakePresetShape(kPresetBox); });
    AddLongCircuitCases("32 nodes", [] { MakeRoundShape(kRoundNodes, 3); });
    AddGrowthCase("job of 250,000 faces", kPieces, kRoundNodes);
    AddGrowthCase("job of 10 million faces", kManyPieces, kRoundNodes);
    AddGrowthCopyCase("copy of 250,000 faces", kPieces, kRoundNodes);
    AddGrowthCopyCase("copy of 10 million faces", kManyPieces, kRoundNodes);
    for (const int nodes : {8, 32, 128, 512})
        AddGrowthCase("job of " + std::to_string(nodes) + " nodes", kPieces, nodes);
    AddCase("trace", TimeTrace);
    return RunCases(count, arguments, kRows, MeasureMemory(), true);
}
