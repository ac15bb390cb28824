// Runs the benchmarks and prints their table. Exit status 0 only if every result was right; a
// missed target is not a failure.
// usage: benchmarks [options of the benchmark library, such as --benchmark_filter=Scan]

#include "Bench.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <vector>

namespace {

// The value below which `part` of all values are.
double Quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    return values.at(static_cast<std::size_t>(static_cast<double>(values.size() - 1) * part + 0.5));
}

// Prints the line of each benchmark as soon as it is done.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override {
        std::puts(
            "| Benchmark                          | program |   floor |  ratio |     middle half |"
            " target | met |\n"
            "| ---                                |    ---: |    ---: |   ---: |            ---: |"
            "   ---: | --- |");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const bool met = run.counters.at("result") <= run.counters.at("target");
            std::printf("| %-34s | %7s | %7s | %6s | %6s - %6s | %6s | %-3s |\n",
                        run.run_name.function_name.c_str(), Cell(run, "program").data(),
                        Cell(run, "floor").data(), Cell(run, "result").data(),
                        Cell(run, "low").data(), Cell(run, "high").data(),
                        Cell(run, "target").data(), met ? "yes" : "NO");
            std::fflush(stdout);
            ++Rows;
            Met += met ? 1 : 0;
        }
    }

    void Finalize() override {
        std::printf("\nMilliseconds, or MiB. %d of %d rows meet their target.\n", Met, Rows);
    }

private:
    static std::array<char, 20> Cell(const Run& run, const char* counter) {
        std::array<char, 20> text{};
        if (const auto found = run.counters.find(counter); found != run.counters.end()) {
            std::snprintf(text.data(), text.size(), "%.3g", found->second.value);
        }
        return text;
    }

    int Rows = 0;
    int Met = 0;
};

} // namespace

void Bench::Compare(benchmark::State& state, double target, const Work& program,
                    const Work& floor) {
    const Work other = floor ? floor : [] { return 1.0; };
    std::vector<double> programs;
    std::vector<double> floors;
    std::vector<double> results;
    program();
    other();
    for ([[maybe_unused]] auto iteration : state) {
        programs.push_back(program());
        floors.push_back(other());
        results.push_back(programs.back() / floors.back());
    }
    state.counters = {{"program", Quantile(programs, 0.5)},
                      {"result", Quantile(results, 0.5)},
                      {"low", Quantile(results, 0.25)},
                      {"high", Quantile(results, 0.75)},
                      {"target", target}};
    if (floor) {
        state.counters["floor"] = Quantile(floors, 0.5);
    }
}

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    try {
        Table table;
        return benchmark::RunSpecifiedBenchmarks(&table) > 0 ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
