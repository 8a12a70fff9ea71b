#include "XCore.h"

#include "XAlleles.h"
#include "XCoverageSearch.h"
#include "XParallelSearch.h"
#include "XResult.h"

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

XCore::XCore(XCsv const* csv, XCsv const* src, int const& iterations, int const& seed,
             QObject* parent)
    : QThread(parent), m_seed(seed != 0 ? unsigned(seed) : unsigned(time(nullptr))),
      m_random(m_seed), m_iterations(iterations), m_csv(csv), m_src(src)
{
    if (csv)
        m_csvGrid = csv->data();
    if (src)
        m_srcGrid = src->data();
}

XCore::~XCore()
{
    stopIterating();
    wait();
}

void XCore::stopIterating()
{
    m_clock.stop();
    m_stop.store(true);
}

qint64 XCore::stopLatency() const
{
    return m_clock.latency();
}

void XCore::fail(QString const& message)
{
    emit error(message);
}

bool XCore::readCsv(XCsv const* csv, QStringList const& headers, Matrix& matrix, AlleleMap& alleles)
{
    if (XAlleles::encode(*csv, headers, matrix, alleles, &m_stop))
        return true;
    fail(tr("Invalid value in csv."));
    return false;
}

bool XCore::csortMatrix(Matrix& matrix, int const& column)
{
    const int n = matrix.size();
    std::vector<int> order;
    try {
        order.resize(n);
    } catch (std::bad_alloc const&) {
        fail(tr("Error while allocating memory."));
        return false;
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
        !search.search(k, m_iterations, fullMap.size(), m_random, m_stop, true)) {
        fail(tr("Error while allocating memory."));
        return false;
    }
    if (search.improved()) {
        bestRows.clear();
        for (int position : search.bestSample())
            bestRows << matrix.at(position);
        bestMap = search.bestMap();
        bestIndices = search.bestIndices();
    }
    return true;
}

void XCore::run()
{
    const int thread = m_clock.enter();
    search();
    m_clock.leave(thread);
}

void XCore::search()
{
    if (m_iterations < 1) {
        emit error(tr("The number of iterations must be at least 1."));
        return;
    }
    if (m_csvGrid.isEmpty()) {
        emit error(tr("The input table has no accessions."));
        return;
    }
    // Only the grids copied at construction are read from here on.
    XCsv input(m_csvGrid);
    const QStringList headers = input.headers();

    Matrix startMatrix;
    AlleleMap startMap;
    if (m_src) {
        if (m_srcGrid.isEmpty() || m_srcGrid.at(0) != m_csvGrid.at(0)) {
            emit error(tr("Different headers."));
            return;
        }
        XCsv start(m_srcGrid);
        if (!readCsv(&start, headers, startMatrix, startMap) || stopped())
            return;
    }
    AlleleMap fullMap = startMap;
    Matrix matrix;
    if (!readCsv(&input, headers, matrix, fullMap) || stopped())
        return;
    if (matrix.isEmpty()) {
        emit error(tr("The input table has no accessions."));
        return;
    }
    const int width = matrix.at(0).size();
    for (int j = width - 2; j >= 1; --j) {
        if (!csortMatrix(matrix, j) || stopped())
            return;
    }

    XCoverageSearch search;
    if (!search.build(matrix, headers, startMap)) {
        emit error(tr("Error while allocating memory."));
        return;
    }
    const int total = fullMap.size();
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
        // Percent of the total to five decimals, compared as integers.
        const qint64 target =
            static_cast<qint64>(static_cast<long double>(p) * 0.01 * total * 100000.0);
        // The coverage side is formed in 64 bits: a 32-bit product would wrap
        // beyond 21,474 alleles and hand the whole table to every share above.
        // With all n rows in the core nothing more can be covered: stop there.
        while (qint64(covered) * 100000 < target && k < n) {
            ++k;
            emit searching(k, n);
            XParallelSearch::Outcome outcome;
            if (!sizes.result(k, position, outcome)) {
                if (sizes.outOfMemory())
                    emit error(tr("Error while allocating memory."));
                return;
            }
            if (stopped())
                return;
            position += uint64_t(outcome.attempts) * uint64_t(k);
            if (outcome.coverage > 0) {
                bestMapSize = outcome.coverage;
                bestIndices = outcome.indices;
            }
            covered = bestMapSize;
        }
        entries << XResult::Entry(covered, bestIndices);
        emit percentChanged(p);
    }
    emit completed(new XResult(entries, m_csv, m_src));
}
