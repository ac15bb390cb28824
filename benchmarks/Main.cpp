// Runs the benchmarks and prints their table. Exit status 0 only if every result was right;
// a missed target shows in the table and is no failure.
// usage: benchmarks [--quick] [options of the benchmark library, such as --benchmark_filter=Scan]

#include "Rows.h"
#include "Table.h"

#include <QCoreApplication>

#include <string_view>

int main(int argc, char* argv[]) {
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--quick") {
            Bench::Quick = true;
        } else {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    Bench::AddFingerprintRows();
    Bench::AddImportRows();
    Bench::AddLedgerRows();
    Bench::AddDataFileRows();
    Bench::AddClipboardRows();
    Bench::AddWidgetRows();
    Bench::AddProcessRows();

    Table table;
    const std::size_t rows = benchmark::RunSpecifiedBenchmarks(&table);
    delete QCoreApplication::instance(); // if a row started it; it must not outlive main
    return rows > 0 && table.Failures() == 0 ? 0 : 1;
}
