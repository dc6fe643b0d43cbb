// Runs the cases of a benchmark program and prints the medians of their repetitions as one table of ratios.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace boreforge {

// A row shows one figure and what it is of another one; both are named as their cases. Of the goals none or
// one is set: the figure's are in the row's unit.
struct RatioRow {
    const char* what;
    const char* unit;
    double unitSize;  // in seconds, or in whatever the figure counts
    const char* per = "";
    double mostRatio = 0;
    double mostFigure = 0;
    double leastFigure = 0;
};

// The figures of all repetitions. A case gives the seconds of an iteration under its own name, divided by its
// counter kEach if it has that; each of its other counters is a figure under the counter's name.
using Figures = std::map<std::string, std::vector<double>>;
inline constexpr char kEach[] = "each";

// Adds a case. `iteration` does one iteration and gives the seconds that count.
void AddCase(const std::string& name, const std::function<double(benchmark::State& state)>& iteration);

// The seconds that `work` takes; where it gives false the case has failed.
template <class Work>
double Timed(benchmark::State& state, Work work) {
    const auto start = std::chrono::steady_clock::now();
    const bool good = work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!good) state.SkipWithError("the work failed");
    return taken.count();
}

// Runs the cases and prints the rows. Arguments are "once", which runs each case a single time and only tells
// whether they work, and the flags of the benchmark library. `figures` were measured before. The result is
// the exit status: 0 when every case worked, whatever the ratios.
int RunCases(int count, char** arguments, std::span<const RatioRow> rows, Figures figures, bool withHeading);

}  // namespace boreforge
