// Runs the cases of a benchmark program and prints the medians of their repetitions as a table of ratios.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace boreforge {

// A row shows one figure and its ratio to another one; both have the names of their cases. At most one goal
// is set. Goals for the figure are in the row's unit.
struct RatioRow {
    const char* what;
    const char* unit;
    double unitSize;  // in seconds, or in the figure's own unit
    const char* per = "";
    double maxRatio = 0;
    double maxFigure = 0;
    double minFigure = 0;
};

// The figures of all repetitions. A case adds the seconds of an iteration under its own name, divided by its
// counter kEach if it has one, and each other counter under that counter's name.
using Figures = std::map<std::string, std::vector<double>>;
inline constexpr char kEach[] = "each";

// Adds a case. `iteration` runs one iteration and returns the seconds to count.
void AddCase(const std::string& name, const std::function<double(benchmark::State& state)>& iteration);

// The seconds that `work` takes. The case fails if it returns false.
template <class Work>
double Timed(benchmark::State& state, Work work) {
    const auto start = std::chrono::steady_clock::now();
    const bool good = work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!good) state.SkipWithError("the work failed");
    return taken.count();
}

// Runs the cases and prints the rows. The first argument may be "once", to run each case a single time and
// only tell whether it works; the others are flags of the benchmark library. `figures` are figures measured
// beforehand. Returns the exit status: 0 if every case worked, whatever the ratios.
int RunCases(int count, char** arguments, std::span<const RatioRow> rows, Figures figures, bool withHeading);

}  // namespace boreforge
