#pragma once

#include "platform/Files.h"

#include <cstdint>
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
        : Report(report), Filter(filter), MainReader(report), PeekReader(report) {}

    const std::filesystem::path& Report; // under which the file can be opened again
    const TurnFilter Filter;

    // Every line comes through the main reader. The peek reader sees the line behind it while a
    // sentence is gathered: at the start of each pass it is level with the main reader, or one
    // line ahead of it.
    LineReader MainReader;
    LineReader PeekReader;
    std::uint64_t MainLineCount = 0;
    std::uint64_t PeekLineCount = 0;

    std::string_view CurrentLine; // of the main reader, until it reads on
    std::string Sentence;         // the kill sentence, as far as it is gathered

    double TurnNumber = 0;      // of the latest turn header
    bool ReportRefused = false; // on: the rest of the report is read and ignored
    bool CrowdFlag = false;     // on: a crowd line came and no approach line since
};
