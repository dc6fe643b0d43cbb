#include "ratio_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace boreforge {

namespace {

constexpr char kLine[] = "%-41s %15s  %-30s %8s  %s\n";

double MedianOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

std::string Text(double value, const std::string& unit = "") {
    const int places = value == std::floor(value) || value >= 100 ? 0 : value >= 10 ? 1 : value < 0.1 ? 4 : 2;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", places, value);
    return text + (unit.empty() ? "" : " " + unit);
}

std::string GoalText(const RatioRow& row, double figure, double ratio) {
    const auto verdict = [](bool met) { return met ? "" : "  MISSED"; };
    if (row.maxRatio > 0) return "<= " + Text(row.maxRatio) + verdict(ratio <= row.maxRatio);
    if (row.maxFigure > 0) return "<= " + Text(row.maxFigure, row.unit) + verdict(figure <= row.maxFigure);
    if (row.minFigure > 0) return ">= " + Text(row.minFigure, row.unit) + verdict(figure >= row.minFigure);
    return "-";
}

void PrintRow(const RatioRow& row, const Figures& figures) {
    const auto what = figures.find(row.what), per = figures.find(row.per);
    const bool isRatio = *row.per != 0;
    if (what == figures.end() || (isRatio && per == figures.end())) return;  // left out by a filter
    const double median = MedianOf(what->second), figure = median / row.unitSize;
    const double ratio = isRatio ? median / MedianOf(per->second) : 0;
    std::printf(kLine, row.what, Text(figure, row.unit).c_str(), isRatio ? row.per : "-",
                isRatio ? Text(ratio).c_str() : "-", GoalText(row, figure, ratio).c_str());
}

class Collector : public benchmark::BenchmarkReporter {
  public:
    explicit Collector(Figures& figures) : figures_(figures) {}
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration) Report(run);
    }
    bool failed = false;

  private:
    void Report(const Run& run) {
        const std::string& name = run.run_name.function_name;
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
            failed = true;
            return;
        }
        double each = 1;
        for (const auto& [counter, value] : run.counters) {
            if (counter == kEach)
                each = value;
            else
                figures_[counter].push_back(value);
        }
        figures_[name].push_back(run.real_accumulated_time / static_cast<double>(run.iterations) / each);
    }

    Figures& figures_;
};

}  // namespace

void AddCase(const std::string& name, const std::function<double(benchmark::State& state)>& iteration) {
    const auto run = [iteration](benchmark::State& state) {
        for (auto _ : state) {
            state.SetIterationTime(iteration(state));
            if (state.error_occurred()) break;
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime();
}

int RunCases(int count, char** arguments, std::span<const RatioRow> rows, Figures figures, bool withHeading) {
    const bool once = count > 1 && std::string_view(arguments[1]) == "once";
    std::vector<std::string> flags{arguments[0], "--benchmark_min_time=0.1", "--benchmark_repetitions=11",
                                   "--benchmark_enable_random_interleaving=true"};
    if (once) flags = {arguments[0], "--benchmark_min_time=0.000001", "--benchmark_repetitions=1"};
    flags.insert(flags.end(), arguments + (once ? 2 : 1), arguments + count);
    std::vector<char*> pointers;
    for (std::string& flag : flags)
        pointers.push_back(flag.data());
    int flagCount = static_cast<int>(pointers.size());
    benchmark::Initialize(&flagCount, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(flagCount, pointers.data())) return 2;

    Collector collector(figures);
    const std::size_t cases = benchmark::RunSpecifiedBenchmarks(&collector);
    if (once) {
        std::printf("%s: %zu cases ran.\n", arguments[0], cases);
    } else {
        if (withHeading) std::printf(kLine, "what", "figure", "per what", "ratio", "goal");
        for (const RatioRow& row : rows)
            PrintRow(row, figures);
    }
    return collector.failed ? 1 : 0;
}

}  // namespace boreforge
