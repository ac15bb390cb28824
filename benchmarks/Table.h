#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

// Prints the rows as one table, each as soon as its repetitions are through.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& repetitions) override;
    void Finalize() override;

    // Rows in which something went wrong: a result, not a target.
    std::size_t Failures() const { return Failed; }

private:
    std::size_t Failed = 0;
    std::size_t Met = 0;
    std::size_t Missed = 0;
};
