#pragma once

#include "XAnalysisRequest.h"
#include "XResult.h"

#include <QString>

#include <atomic>
#include <memory>

class XCsv;

// A search that turns the tables into a result: for each percentage 1..100
// of all alleles, a core that holds at least that share. XSearchRunner runs
// it on a thread of its own; run() itself knows no threads.
class XSearch
{
public:
    // What a search tells while it runs, called on the thread it runs on.
    class Progress
    {
    public:
        virtual ~Progress() = default;
        // Once for each p = 1..100, after the entry for p is decided.
        virtual void percentChanged(int percent) = 0;
        // The core size now searched, out of the table's accessions.
        virtual void searching(int size, int accessions) = 0;
    };

    // A result, or an error message for the user, or neither: stopped.
    struct Outcome
    {
        std::unique_ptr<XResult> result;
        QString error;
    };

    virtual ~XSearch();

    // The search the settings ask for, on the two tables (start may be
    // null). It reads shallow copies of the grids taken here, so the tables
    // may be deleted while it runs; but its result names them (XResult's
    // input() and source()), so whoever keeps the result keeps the tables.
    static std::unique_ptr<XSearch> create(XCsv const* input, XCsv const* start,
                                           XSearchSettings const& settings);

    // Runs the search once, to its end or until stop().
    virtual Outcome run(Progress& progress) = 0;
    // From any thread: run() returns soon after, with neither result nor
    // error. Before run() it makes run() return at once.
    void stop();
    bool stopped() const { return m_stop.load(std::memory_order_relaxed); }

    // The settings the search runs with: a clock seed is the number it became.
    virtual XSearchSettings settings() const = 0;

    // The error of either search for a cell that is not an allele.
    static QString invalidValueMessage();

    // The coverage a core needs for p % of `total` alleles, to five
    // decimals and times 100000: p × 0.01 × total × 100000, evaluated in that
    // order in extended precision and truncated. A core of `covered`
    // alleles meets it when covered × 100000 reaches it.
    static qint64 target(int percent, int total);
    // Whether `covered` alleles meet a target, formed in 64 bits: a 32-bit
    // product would wrap beyond 21,474 alleles.
    static bool meets(int covered, qint64 target) { return qint64(covered) * 100000 >= target; }
    // The least whole number of alleles that meets target(percent, total).
    static int leastCoverage(int percent, int total);

protected:
    // Called by stop() just before the flag is set.
    virtual void stopping() {}

    std::atomic<bool> m_stop{false};
};
