#pragma once

#include "XCsv.h"

#include <QThread>

#include <atomic>

class XResult;

// The worker thread of the exact search: for each percentage 1..100 of all
// alleles, a core of the fewest input rows that, with the whole starting
// collection, holds that share, and a lower bound on that size (equal to it
// when the core is proven minimal). An allele is a (marker, value) pair with
// a value above 0. Same signals as XCore: percentChanged(p) for p = 1..100,
// then completed() with a result (carrying the bounds) the receiver owns, or
// error(); a stopped run emits nothing. Deterministic whenever the proof work
// ends before the time budget does.
class XExactCore : public QThread
{
    Q_OBJECT

public:
    static constexpr int defaultBudget = 60;

    // budgetSeconds: how long the proof work may last (0: none beyond the
    // cheap bounds). Keeps shallow copies of both grids.
    XExactCore(XCsv const* csv, XCsv const* src, int const& budgetSeconds = defaultBudget,
               QObject* parent = nullptr);
    ~XExactCore() override;

    // After a completed run: the number of alleles, and the distinct
    // (marker, 0) pairs that were left out of them.
    int totalAlleles() const { return m_total; }
    int zeroPairs() const { return m_zeroPairs; }

signals:
    void percentChanged(int percent);
    void error(QString message);
    void completed(XResult* result);

public slots:
    void stopIterating();

protected:
    void run() override;

private:
    std::atomic<bool> m_stop{false};
    int m_budget;
    XCsv const* m_csv;
    XCsv const* m_src;
    XCsv::Grid m_csvGrid;
    XCsv::Grid m_srcGrid;
    int m_total = 0;
    int m_zeroPairs = 0;
};
