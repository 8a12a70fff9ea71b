#pragma once

#include "XAlleles.h"
#include "XCsv.h"
#include "XRandom.h"
#include "XSearch.h"
#include "XStopClock.h"

#include <QCoreApplication>
#include <QMap>
#include <QPair>
#include <QStringList>

// The reproducible search: for each percentage 1..100 of all alleles, the
// smallest core it finds covering at least that share, by random draws
// improved by swaps, repeatable from its seed. Reports each percentage and
// each core size it searches.
class XCore : public XSearch
{
    Q_DECLARE_TR_FUNCTIONS(XCore)

public:
    using Matrix = XAlleles::Matrix;
    using AlleleMap = XAlleles::AlleleMap;

    // Seed 0 takes the seed from the clock (seconds since the epoch), read
    // here. Reads shallow copies of both grids taken here (see
    // XSearch::create).
    XCore(XCsv const* csv, XCsv const* src, int const& iterations, int const& seed);

    // The seed the run uses: the one given, or the clock's for 0.
    unsigned seed() const { return m_seed; }
    // Threads that search core sizes; 0 (the default) means one per core.
    // Any count gives the same result. Set before run().
    void setThreadCount(int threads) { m_threads = threads; }
    // Processor time in nanoseconds that the busiest engine thread spent
    // between the first stop() and its end; -1 until both happened.
    qint64 stopLatency() const;

    Outcome run(Progress& progress) override;
    XSearchSettings settings() const override;
    // The message of the last step below that failed.
    QString lastError() const { return m_error; }

    // XAlleles::encode, stopping with the run; false, with lastError(), at
    // a cell that is not an allele.
    bool readCsv(XCsv const* csv, QStringList const& headers, Matrix& matrix, AlleleMap& alleles);
    // Stable sort of the rows by element `column`.
    bool csortMatrix(Matrix& matrix, int const& column);
    // The search for core size k: up to `iterations` attempts, each a random
    // draw of k rows improved by swaps, drawing on from where this object's
    // sequence stands. Replaces the three outputs only with
    // an attempt that covers more than every earlier attempt of this call.
    bool iterate(Matrix const& matrix, AlleleMap const& fullMap, AlleleMap const& startMap,
                 QStringList const& headers, Matrix& bestRows, AlleleMap& bestMap,
                 QList<int>& bestIndices, int const& k);

protected:
    void stopping() override;

private:
    bool fail(QString const& message);
    Outcome search(Progress& progress);
    // The tables as the search reads them: the input's matrix, sorted, the
    // starting collection's alleles and those of both. False after a
    // failure (lastError()) or once stopped.
    bool encodeTables(QStringList const& headers, Matrix& matrix, AlleleMap& startMap,
                      AlleleMap& fullMap);

    XStopClock m_clock;
    QString m_error;
    unsigned m_seed;
    int m_threads = 0;
    mutable XRandom m_random;
    int m_iterations;
    XCsv const* m_csv;
    XCsv const* m_src;
    XCsv::Grid m_csvGrid;
    XCsv::Grid m_srcGrid;
};
