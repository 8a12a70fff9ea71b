#include "XCore.h"

#include "TableRules.h"
#include "XAlleles.h"
#include "XCoverageSearch.h"
#include "XParallelSearch.h"
#include "XResult.h"

#include <QThread>

#include <algorithm>
#include <ctime>
#include <new>
#include <vector>

namespace {

// What a table row looks like to the engine; short rows read as 0.
int element(QList<int> const& row, int column)
{
    return row.value(column);
}

} // namespace

XCore::XCore(XCsv const* csv, XCsv const* src, int const& iterations, int const& seed)
    : m_seed(seed != 0 ? unsigned(seed) : unsigned(time(nullptr))), m_random(m_seed),
      m_iterations(iterations), m_csv(csv), m_src(src)
{
    if (csv)
        m_csvGrid = csv->data();
    if (src)
        m_srcGrid = src->data();
}

void XCore::stopping()
{
    m_clock.stop();
}

XSearchSettings XCore::settings() const
{
    XSearchSettings settings = XSearchSettings::reproducible(m_iterations, int(m_seed));
    settings.threads = m_threads;
    return settings;
}

qint64 XCore::stopLatency() const
{
    return m_clock.latency();
}

bool XCore::fail(QString const& message)
{
    m_error = message;
    return false;
}

bool XCore::readCsv(XCsv const* csv, QStringList const& headers, Matrix& matrix, AlleleMap& alleles)
{
    if (XAlleles::encode(*csv, headers, matrix, alleles, &m_stop))
        return true;
    return fail(XSearch::invalidValueMessage());
}

bool XCore::csortMatrix(Matrix& matrix, int const& column)
{
    const int n = matrix.size();
    std::vector<int> order;
    try {
        order.resize(n);
    } catch (std::bad_alloc const&) {
        return fail(tr("Error while allocating memory."));
    }
    for (int i = 0; i < n; ++i)
        order[i] = i;
    // std::stable_sort falls back to an in-place merge when it cannot get a
    // buffer, so huge allele values cost nothing extra.
    std::stable_sort(order.begin(), order.end(), [&](int x, int y) {
        return element(matrix.at(x), column) < element(matrix.at(y), column);
    });
    Matrix sorted;
    sorted.reserve(n);
    for (int i : order)
        sorted << matrix.at(i);
    matrix = sorted;
    return true;
}

bool XCore::iterate(Matrix const& matrix, AlleleMap const& fullMap, AlleleMap const& startMap,
                    QStringList const& headers, Matrix& bestRows, AlleleMap& bestMap,
                    QList<int>& bestIndices, int const& k)
{
    XCoverageSearch search;
    if (!search.build(matrix, headers, startMap) ||
        !search.search(k, m_iterations, fullMap.size(), m_random, m_stop, true))
        return fail(tr("Error while allocating memory."));
    if (search.improved()) {
        bestRows.clear();
        for (int position : search.bestSample())
            bestRows << matrix.at(position);
        bestMap = search.bestMap();
        bestIndices = search.bestIndices();
    }
    return true;
}

XSearch::Outcome XCore::run(Progress& progress)
{
    const int thread = m_clock.enter();
    Outcome outcome = search(progress);
    m_clock.leave(thread);
    return outcome;
}

bool XCore::encodeTables(QStringList const& headers, Matrix& matrix, AlleleMap& startMap,
                         AlleleMap& fullMap)
{
    if (m_src) {
        XCsv start(m_srcGrid);
        Matrix startMatrix;
        if (!readCsv(&start, headers, startMatrix, startMap) || stopped())
            return false;
    }
    fullMap = startMap;
    XCsv input(m_csvGrid);
    if (!readCsv(&input, headers, matrix, fullMap) || stopped())
        return false;
    const int width = matrix.at(0).size();
    for (int j = width - 2; j >= 1; --j) {
        if (!csortMatrix(matrix, j) || stopped())
            return false;
    }
    return true;
}

XSearch::Outcome XCore::search(Progress& progress)
{
    Outcome none;
    auto failed = [](QString const& message) {
        Outcome outcome;
        outcome.error = message;
        return outcome;
    };
    if (m_iterations < 1)
        return failed(tr("The number of iterations must be at least 1."));
    if (!TableRules::hasAccessions(m_csvGrid))
        return failed(tr("The input table has no accessions."));
    // Only the grids copied at construction are read from here on.
    const QStringList headers = XCsv(m_csvGrid).headers();
    if (m_src && !TableRules::sameHeaders(m_csvGrid, m_srcGrid))
        return failed(tr("Different headers."));
    Matrix matrix;
    AlleleMap startMap;
    AlleleMap fullMap;
    if (!encodeTables(headers, matrix, startMap, fullMap)) {
        if (m_error.isEmpty())
            return none; // stopped
        return failed(m_error);
    }

    XCoverageSearch search;
    if (!search.build(matrix, headers, startMap))
        return failed(tr("Error while allocating memory."));
    // (marker, 0) pairs count in this total, though no core covers them.
    const int total = XAlleles::total(fullMap, XAlleles::ZeroPairs::Counted);
    const int n = matrix.size();
    const int threads = m_threads > 0 ? m_threads : QThread::idealThreadCount();
    XParallelSearch sizes(std::move(search), m_seed, m_iterations, total, n, threads, m_stop,
                          &m_clock);
    uint64_t position = 0;
    int covered = startMap.size();
    int bestMapSize = 0;
    QList<int> bestIndices;
    int k = 0;
    XResult::Entries entries;
    for (int p = 1; p <= 100; ++p) {
        const qint64 target = XSearch::target(p, total);
        // With all n rows in the core nothing more can be covered: stop there.
        while (!XSearch::meets(covered, target) && k < n) {
            ++k;
            progress.searching(k, n);
            XParallelSearch::Outcome outcome;
            if (!sizes.result(k, position, outcome)) {
                if (sizes.outOfMemory())
                    return failed(tr("Error while allocating memory."));
                return none;
            }
            if (stopped())
                return none;
            position += uint64_t(outcome.attempts) * uint64_t(k);
            if (outcome.coverage > 0) {
                bestMapSize = outcome.coverage;
                bestIndices = outcome.indices;
            }
            covered = bestMapSize;
        }
        entries << XResult::Entry(covered, bestIndices);
        progress.percentChanged(p);
    }
    Outcome done;
    done.result = std::make_unique<XResult>(entries, m_csv, m_src);
    return done;
}
