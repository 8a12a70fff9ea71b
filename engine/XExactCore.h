#pragma once

#include "XCsv.h"
#include "XSearch.h"

#include <QCoreApplication>

// The exact search: for each percentage 1..100 of all alleles, a core of
// the fewest input rows that, with the whole starting collection, holds that
// share, and a lower bound on that size (equal to it when the core is proven
// minimal). Its alleles leave the (marker, 0) pairs out (see XAlleles).
// Reports percentages as its time budget is used, then the last ones as the
// result is made. Deterministic whenever the proof work ends before the
// budget does.
class XExactCore : public XSearch
{
    Q_DECLARE_TR_FUNCTIONS(XExactCore)

public:
    // budgetSeconds: how long the proof work may last (0: none beyond the
    // cheap bounds). Keeps shallow copies of both grids.
    XExactCore(XCsv const* csv, XCsv const* src,
               int const& budgetSeconds = XSearchSettings::defaultBudget);

    Outcome run(Progress& progress) override;
    XSearchSettings settings() const override;

    // After a completed run: the number of alleles, and the distinct
    // (marker, 0) pairs that were left out of them.
    int totalAlleles() const { return m_total; }
    int zeroPairs() const { return m_zeroPairs; }

private:
    int m_budget;
    XCsv const* m_csv;
    XCsv const* m_src;
    XCsv::Grid m_csvGrid;
    XCsv::Grid m_srcGrid;
    int m_total = 0;
    int m_zeroPairs = 0;
};
