#pragma once

#include "files/Files.h"

#include <filesystem>
#include <string>
#include <string_view>

// The turns that a scan accepts, limits included; 0 is no limit.
struct TurnFilter {
    double FirstTurn = 0;
    double LastTurn = 0;
};

// The state of one scan of one report.
struct Scan {
    Scan(const std::filesystem::path& report, TurnFilter filter)
        : Report(report),
          Filter(filter),
          MainReader(report) {}

    const std::filesystem::path& Report;
    const TurnFilter Filter;
    LineReader MainReader;

    std::string_view CurrentLine; // valid until MainReader reads again
    std::string Sentence;         // the kill sentence gathered so far

    double TurnNumber = 0;      // of the latest turn header
    bool ReportRefused = false; // the rest of the report is read and ignored
    bool CrowdFlag = false;     // there was a crowd line, and no approach line since
};
