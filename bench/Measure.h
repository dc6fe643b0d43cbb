// What the benchmarks share.
#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>

#include "editor/TunnelShape.h"

namespace boreforge {

inline constexpr double kFullTurn = 2 * std::numbers::pi;

inline float F(double value) { return static_cast<float>(value); }

// Adds a case. Real time is measured, since much of the work waits for the system.
template <class... Arguments>
void AddCase(const std::string& name, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), arguments...)->UseRealTime();
}

// Runs the cases with the library's flags. Returns the exit status: 0 unless a flag is unknown.
inline int RunCases(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

// The loop of a case. The time of `prepare` doesn't count. The case fails if `work` returns false.
template <class Work, class Prepare = void (*)()>
void Measure(
    benchmark::State& state, Work work, Prepare prepare = [] {}) {
    for (auto _ : state) {
        state.PauseTiming();
        prepare();
        state.ResumeTiming();
        if (!work()) return state.SkipWithError("the work failed");
    }
}

// The path of a file in the folder for temporary files, which bench/run makes and removes.
inline std::string WorkFile(const std::string& name) { return std::filesystem::temp_directory_path() / name; }

// Replaces the shape with two circles of `nodes` nodes; the wall is half a unit thick.
inline void MakeRoundShape(int nodes, double radius) {
    ResetTunnelShape();
    for (int i = 0; i < nodes; ++i) {
        const double x = std::cos(kFullTurn * i / nodes), y = std::sin(kFullTurn * i / nodes);
        AddShapeNode({F(radius * x), F(radius * y), 0});
        TunnelShape.OutsideNodes.back() = {F((radius + 0.5) * x), F((radius + 0.5) * y), 0};
    }
}

}  // namespace boreforge
