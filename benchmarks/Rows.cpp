#include "Rows.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <utility>

namespace Bench {

bool Quick = false;

namespace {

std::map<std::string, Row>& Rows() {
    static std::map<std::string, Row> rows;
    return rows;
}

// The repetitions of one row. The input is made with the first and dropped with the last, so
// that no two rows hold theirs at once.
class Runner {
public:
    explicit Runner(Row row) : Measured(std::move(row)) {}

    void Repeat(benchmark::State& state) {
        double seconds = 0;
        for ([[maybe_unused]] auto iteration : state) {
            try {
                seconds = Measure(state);
            } catch (const std::exception& failure) {
                state.SkipWithError(failure.what());
                break;
            }
            state.SetIterationTime(seconds);
        }
        if (++Done == Measured.Repetitions) {
            Works = {};
        }
    }

private:
    // The two change places from one repetition to the next: neither always finds what the other
    // left in the caches.
    double Measure(benchmark::State& state) {
        if (!Works.Program) {
            Works = Measured.Prepare();
            Works.Program(); // warms up, and is not counted
            Floor();
        }
        const bool floorFirst = Done % 2 == 0;
        double floor = floorFirst ? Floor() : 0;
        const double program = Works.Program();
        floor = floorFirst ? floor : Floor();
        state.counters[ProgramCounter] = program;
        state.counters[FloorCounter] = floor;
        return program;
    }

    double Floor() const { return Works.Floor ? Works.Floor() : 0; }

    Row Measured;
    Pair Works;
    int Done = 0;
};

} // namespace

void Add(Row row) {
    if (Quick) {
        row.Repetitions = 1;
    }
    const auto runner = std::make_shared<Runner>(row);
    benchmark::RegisterBenchmark(row.Name.c_str(),
                                 [runner](benchmark::State& state) { runner->Repeat(state); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(row.Repetitions);
    const std::string name = row.Name;
    Rows().emplace(name, std::move(row));
}

const Row& Find(const std::string& name) {
    return Rows().at(name);
}

} // namespace Bench
