#pragma once

#include "platform/Files.h"

#include <filesystem>
#include <string>
#include <string_view>

// The turns that a scan accepts, both limits included; 0 is no limit.
struct TurnFilter {
    double FirstTurn = 0;
    double LastTurn = 0;
};

// The working state of one scan of one report. Nothing of it outlives the scan.
struct Scan {
    Scan(const std::filesystem::path& report, TurnFilter filter)
        : Report(report), Filter(filter), Reader(report) {}

    const std::filesystem::path& Report; // under which the file can be opened again
    const TurnFilter Filter;

    // Every line comes through it. While a sentence is gathered, the line behind is looked at
    // before it is taken.
    LineReader Reader;

    std::string_view CurrentLine; // until a sentence is gathered or the next line read
    std::string Sentence;         // the kill sentence, as far as it is gathered

    double TurnNumber = 0;      // of the latest turn header
    bool ReportRefused = false; // on: the rest of the report is read and ignored
    bool CrowdFlag = false;     // on: a crowd line came and no approach line since
};
