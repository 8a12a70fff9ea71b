#pragma once

#include "AnalysisInputs.h"

#include <memory>

class XCsv;

// Which search makes the cores.
enum class XSearchKind {
    // Randomised, repeatable from its seed (iterations, seed).
    Reproducible,
    // The fewest accessions for each share, proven or bounded (budget).
    Exact
};

// How a search is to run: its kind and the settings that kind reads. The
// defaults are the ones the wizard and vireon-cli offer.
struct XSearchSettings
{
    static constexpr int defaultBudget = 60;

    XSearchKind kind = XSearchKind::Reproducible;
    // Reproducible: attempts per core size (at least 1), and the random seed
    // (0 takes it from the clock when the search is made).
    int iterations = 1;
    int seed = 0;
    // Reproducible: threads that search core sizes; 0 is one per processor.
    // Any count gives the same result.
    int threads = 0;
    // Exact: seconds the proof work may last (0: none beyond the cheap bounds).
    int budgetSeconds = defaultBudget;

    static XSearchSettings reproducible(int iterations, int seed);
    static XSearchSettings exact(int budgetSeconds);
};

// Everything an analysis needs before its search: the input table, the
// optional starting collection, the search and its settings, and the files
// the tables came from (an exclusion list will join them). It owns its
// tables, so it moves rather than copies: from the wizard (or vireon-cli) to
// whoever runs the search, and on success into the workspace, which takes
// them over; a request dropped on the way deletes them.
struct XAnalysisRequest
{
    XAnalysisRequest();
    // Takes both tables; start may be null.
    XAnalysisRequest(XCsv* input, XCsv* start, XSearchSettings const& settings);
    XAnalysisRequest(XAnalysisRequest&&) noexcept;
    XAnalysisRequest& operator=(XAnalysisRequest&&) noexcept;
    ~XAnalysisRequest();

    std::unique_ptr<XCsv> input;
    std::unique_ptr<XCsv> start;
    XSearchSettings settings;
    // The files the tables were read from, which no output may replace;
    // empty for a table built by hand.
    AnalysisInputs files;
};
