#include "inputs.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <numbers>
#include <system_error>
#include <vector>

#include "editor/TunnelShape.h"
#include "trackfile/TrackDocument.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

float F(double value) { return static_cast<float>(value); }

struct WorkFolder {
    WorkFolder() {
        const char* const parent = std::getenv("TMPDIR");
        path = std::string(parent && *parent ? parent : ".") + "/boreforge-bench-XXXXXX";
        if (::mkdtemp(path.data())) return;
        std::perror(path.c_str());
        std::exit(1);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string path;
};

bool CopyBetween(int source, int target) {
    std::vector<char> piece(std::size_t{1} << 18);
    for (;;) {
        const ssize_t got = ::read(source, piece.data(), piece.size());
        if (got <= 0) return got == 0;
        if (::write(target, piece.data(), static_cast<std::size_t>(got)) != got) return false;
    }
}

}  // namespace

std::string WorkFile(const std::string& name) {
    static const WorkFolder folder;
    return folder.path + "/" + name;
}

std::int64_t FileSize(const std::string& path) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(path, failure);
    return failure ? 0 : static_cast<std::int64_t>(size);
}

bool CopyFile(const std::string& from, const std::string& to, bool flush) {
    const int source = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    const int target = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    bool good = source >= 0 && target >= 0 && CopyBetween(source, target);
    good = good && (!flush || ::fsync(target) == 0);
    if (source >= 0) ::close(source);
    return target >= 0 && ::close(target) == 0 && good;
}

double PeakMemoryOf(const std::function<bool()>& action) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(action() ? 0 : 1);
    int status = -1;
    struct rusage usage {};
    if (child > 0 && ::wait4(child, &status, 0, &usage) == child && status == 0)
        return static_cast<double>(usage.ru_maxrss) * 1024;
    std::fputs("The work of a child process failed.\n", stderr);
    std::exit(1);
}

ChildFigures FiguresOfChild(const std::function<ChildFigures()>& action) {
    void* const shared =
        ::mmap(nullptr, sizeof(ChildFigures), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) return {};
    PeakMemoryOf([&] {
        ::new (shared) ChildFigures(action());
        return true;
    });
    const ChildFigures figures = *static_cast<ChildFigures*>(shared);
    ::munmap(shared, sizeof(ChildFigures));
    return figures;
}

void MakeRoundShape(int nodes, double radius) {
    ResetTunnelShape();
    for (int i = 0; i < nodes; ++i) {
        const double x = std::cos(kFullTurn * i / nodes), y = std::sin(kFullTurn * i / nodes);
        AddShapeNode({F(radius * x), F(radius * y), 0});
        TunnelShape.OutsideNodes.back() = {F((radius + 0.5) * x), F((radius + 0.5) * y), 0};
    }
}

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

void BuildLargeTrack(std::int64_t bytes) {
    const auto fifthOf = [bytes](int recordBytes) { return static_cast<int>(bytes / 5 / recordBytes); };
    BuildCircuit(fifthOf(60 + 33 + (4 + 130 + 40 + 32 + 54) / 5), 8);
    std::int32_t kind = 0;
    for (TrackSegment& s : TrackFile.Segments) {
        s.SegmentKind = kind++ % 5;
        s.K1Float1 = s.K2Float1 = s.K3Float1 = s.K4Float1 = 12;
        s.K1Flag2 = s.K2Flag2 = s.K3Flag2 = s.K4Flag2 = kTrue;
    }
    for (int i = 0; i < fifthOf(64); ++i)
        TrackFile.SceneryPoints.push_back({F(i), 1, F(-i), 0.5f, i % 4});
    for (int i = 0; i < fifthOf(88 + 20); ++i)
        TrackFile.SceneryObjects.push_back({i % 2 == 0 ? "oak.3ds" : "station-building-two.3ds",
                                            "dummy",
                                            {1, 0, 0, 0, 1, 0, 0, 0, 1},
                                            {F(i), 0, 1},
                                            {}});
    for (int i = 0; i < fifthOf(92 + (4 + 3 * 24) + 28 + 48 + (28 + 16)); ++i) {
        TrackFile.FundRecords.push_back({{F(i), 0, 1}, kTrue, F(i), kFalse, 1});
        TrackFile.RascRecords.push_back({{{i, F(i)}, {i, 1}, {i, 2}}});
        TrackFile.FrenRecords.push_back({{F(i), 1, 0}});
        TrackFile.TubeRecords.push_back({i, i, i, 1, 2, 3, 4, 5, 6});
        TrackFile.CatwRecords.push_back({i, i, i, 1, 2, 3, 16});
    }
    TrackFile.HasTerrain = kTrue;
    TrackFile.TerrainWidth = 1000;
    TrackFile.TerrainDepth = fifthOf(4) / TrackFile.TerrainWidth;
    for (int i = 0; i < TrackFile.TerrainWidth * TrackFile.TerrainDepth; ++i)
        TrackFile.TerrainGrid.push_back(F(i % 997));
}

}  // namespace boreforge
