#include "Table.h"

#include "Rows.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Bench::Rule;

template <class... Values>
std::string Format(const char* format, Values... values) {
    std::array<char, 120> text{};
    const int length = std::snprintf(text.data(), text.size(), format, values...);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string Time(double seconds) {
    for (const auto& [unit, factor] : {std::pair("ns", 1e9), {"us", 1e6}, {"ms", 1e3}}) {
        if (seconds * factor < 1000) {
            return Format("%.3g %s", seconds * factor, unit);
        }
    }
    return Format("%.3g s", seconds);
}

std::string Amount(Rule rule, double value) {
    return rule == Rule::Growth ? Format("%.1f MiB", value) : Time(value);
}

// What is judged, of one repetition.
double Judged(Rule rule, double program, double floor) {
    switch (rule) {
    case Rule::Throughput:
        return floor / program;
    case Rule::Limit:
        return program;
    case Rule::Growth:
        return program - floor;
    default:
        return program / floor;
    }
}

std::string Result(Rule rule, double value) {
    switch (rule) {
    case Rule::Limit:
        return Time(value);
    case Rule::Growth:
        return Format("%+.1f MiB", value);
    default:
        return Format("%.2f", value);
    }
}

std::string Target(Rule rule, double value) {
    const bool atLeast = rule == Rule::Throughput;
    return (atLeast ? ">= " : "<= ") + Result(rule, value);
}

// The value with `part` of all values below it. Sorts them.
double Quantile(std::vector<double>& values, double part) {
    std::sort(values.begin(), values.end());
    return values.at(static_cast<std::size_t>(static_cast<double>(values.size() - 1) * part + 0.5));
}

void PrintLine(const std::array<std::string, 7>& cells) {
    constexpr std::array<int, 7> widths = {-35, -8, -8, -9, -21, -12, -3};
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::printf("| %*s ", widths.at(i), cells.at(i).c_str());
    }
    std::puts("|");
    std::fflush(stdout);
}

} // namespace

bool Table::ReportContext(const Context& context) {
    const std::time_t now = std::time(nullptr);
    std::array<char, 20> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%d %H:%M", std::localtime(&now));
    std::printf("%s, %d processors, %.0f MHz%s\n\n", date.data(), context.cpu_info.num_cpus,
                context.cpu_info.cycles_per_second / 1e6,
                Bench::Quick ? "; small input, each once: no target is judged" : "");
    PrintLine({"Benchmark", "program", "floor", "ratio", "middle half", "target", "met"});
    PrintLine({"---", "---", "---", "---", "---", "---", "---"});
    return true;
}

void Table::ReportRuns(const std::vector<Run>& repetitions) {
    std::vector<double> program;
    std::vector<double> floor;
    std::vector<double> judged;
    const std::string& name = repetitions.front().run_name.function_name;
    const Bench::Row& row = Bench::Find(name);
    for (const Run& run : repetitions) {
        if (run.run_type == Run::RT_Aggregate) {
            return; // the library's own means, of the program's time alone
        }
        if (run.error_occurred) {
            ++Failed;
            std::printf("| %-35s | FAILED: %s\n", name.c_str(), run.error_message.c_str());
            return;
        }
        program.push_back(run.counters.at(Bench::ProgramCounter));
        floor.push_back(run.counters.at(Bench::FloorCounter));
        judged.push_back(Judged(row.Judge, program.back(), floor.back()));
    }
    const double middle = Quantile(judged, 0.5);
    const bool met = row.Judge == Rule::Throughput ? middle >= row.Target : middle <= row.Target;
    ++(met ? Met : Missed);
    PrintLine({name, Amount(row.Judge, Quantile(program, 0.5)),
               row.Judge == Rule::Limit ? "" : Amount(row.Judge, Quantile(floor, 0.5)),
               Result(row.Judge, middle),
               Result(row.Judge, Quantile(judged, 0.25)) + " - " +
                   Result(row.Judge, Quantile(judged, 0.75)),
               Target(row.Judge, row.Target),
               Bench::Quick ? "-"
               : met        ? "yes"
                            : "NO"});
}

void Table::Finalize() {
    if (Bench::Quick) {
        std::printf("\n%zu rows ran, %zu failed\n", Met + Missed, Failed);
    } else {
        std::printf("\n%zu met, %zu not met, %zu failed. Medians of repetitions in which program "
                    "and floor took turns; ratio of the program's to the floor's, or the "
                    "other way round where it must be at least the target.\n",
                    Met, Missed, Failed);
    }
}
