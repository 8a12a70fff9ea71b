#pragma once

#include "XAlleles.h"
#include "XCsv.h"
#include "XRandom.h"
#include "XStopClock.h"

#include <QMap>
#include <QPair>
#include <QStringList>
#include <QThread>

#include <atomic>

class XResult;

// The worker thread that selects the cores: for each percentage 1..100 of
// all alleles, the smallest core it finds covering at least that share.
// Emits percentChanged(p) for each p, then completed() with a result the
// receiver owns, or error() instead; a stopped run emits nothing.
class XCore : public QThread
{
    Q_OBJECT

public:
    using Matrix = XAlleles::Matrix;
    using AlleleMap = XAlleles::AlleleMap;

    // Seed 0 takes the seed from the clock (seconds since the epoch), read
    // here. The search reads only shallow copies of both grids taken here, so
    // the tables may be deleted while the thread runs; but the result that
    // completed() hands over names these tables (XResult::input(), csv()),
    // so whoever uses that result keeps them.
    XCore(XCsv const* csv, XCsv const* src, int const& iterations, int const& seed,
          QObject* parent = nullptr);
    // Stops a running search and waits for the thread, so that destroying
    // the engine mid-run is safe; a stopped run emits nothing more.
    ~XCore() override;

    // The seed the run uses: the one given, or the clock's for 0.
    unsigned seed() const { return m_seed; }
    // Threads that search core sizes; 0 (the default) means one per core.
    // Any count gives the same result. Set before start().
    void setThreadCount(int threads) { m_threads = threads; }
    // Processor time in nanoseconds that the busiest engine thread spent
    // between the first stopIterating() and its end; -1 until both happened.
    qint64 stopLatency() const;

    // XAlleles::encode, stopping with the run; false after error().
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

signals:
    void percentChanged(int percent);
    // The core size now searched, out of the table's accessions.
    void searching(int size, int accessions);
    void error(QString message);
    void completed(XResult* result);

public slots:
    void stopIterating();

protected:
    void run() override;

private:
    bool stopped() const { return m_stop.load(std::memory_order_relaxed); }
    void fail(QString const& message);
    void search();

    std::atomic<bool> m_stop{false};
    XStopClock m_clock;
    unsigned m_seed;
    int m_threads = 0;
    mutable XRandom m_random;
    int m_iterations;
    XCsv const* m_csv;
    XCsv const* m_src;
    XCsv::Grid m_csvGrid;
    XCsv::Grid m_srcGrid;
};
