#include "XExactCore.h"

#include "XAlleles.h"
#include "XCoverSolver.h"
#include "XResult.h"

#include <QHash>
#include <QPair>
#include <QSet>
#include <QStringList>

#include <glpk.h>

#include <algorithm>
#include <chrono>

namespace {

using Allele = QPair<QString, int>;

// Reads the alleles of every data row the way the reproducible search reads
// them. Values above 0 get an id in `ids`, in the order they are met;
// markers with a (marker, 0) pair are gathered in `zeros`.
bool readAlleles(XCsv::Grid const& grid, QStringList const& headers, QHash<Allele, int>& ids,
                 QSet<QString>& zeros, std::vector<std::vector<int>>& rows,
                 std::atomic<bool> const& stop)
{
    const XCsv table(grid);
    XAlleles::Matrix matrix;
    XAlleles::AlleleMap counts;
    if (!XAlleles::encode(table, headers, matrix, counts, &stop))
        return false;
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
        if (it.key().second == 0)
            zeros.insert(it.key().first);
    }
    for (QList<int> const& encoded : matrix) {
        std::vector<int> alleles;
        // Element 0 is the row number; 0 stands for no allele to cover.
        for (int j = 1; j < encoded.size(); ++j) {
            if (encoded.at(j) == 0)
                continue;
            const Allele key(headers.value(j), encoded.at(j));
            auto found = ids.constFind(key);
            if (found == ids.constEnd())
                found = ids.insert(key, ids.size());
            alleles.push_back(found.value());
        }
        rows.push_back(std::move(alleles));
    }
    return true;
}

} // namespace

XExactCore::XExactCore(XCsv const* csv, XCsv const* src, int const& budgetSeconds, QObject* parent)
    : QThread(parent), m_budget(std::max(0, budgetSeconds)), m_csv(csv), m_src(src)
{
    if (csv)
        m_csvGrid = csv->data();
    if (src)
        m_srcGrid = src->data();
}

XExactCore::~XExactCore()
{
    m_stop.store(true);
    wait();
}

void XExactCore::stopIterating()
{
    m_stop.store(true);
}

void XExactCore::run()
{
    using Clock = XCoverSolver::Clock;
    const Clock::time_point started = Clock::now();
    if (m_csvGrid.size() < 2) {
        emit error(tr("The input table has no accessions."));
        return;
    }
    QStringList headers;
    for (QVariant const& cell : m_csvGrid.at(0))
        headers << cell.toString();
    if (m_src && (m_srcGrid.isEmpty() || m_srcGrid.at(0) != m_csvGrid.at(0))) {
        emit error(tr("Different headers."));
        return;
    }

    QHash<Allele, int> ids;
    QSet<QString> zeros;
    std::vector<std::vector<int>> startRows;
    std::vector<std::vector<int>> inputRows;
    if ((m_src && !readAlleles(m_srcGrid, headers, ids, zeros, startRows, m_stop)) ||
        !readAlleles(m_csvGrid, headers, ids, zeros, inputRows, m_stop)) {
        emit error(tr("Invalid value in csv."));
        return;
    }
    if (m_stop.load())
        return;
    const int total = ids.size();
    std::vector<char> held(total, 0);
    int startCovered = 0;
    for (auto const& row : startRows) {
        for (int a : row) {
            if (!held[a]) {
                held[a] = 1;
                ++startCovered;
            }
        }
    }
    // The solver sees only the alleles the starting collection lacks.
    std::vector<int> open(total, -1);
    int openCount = 0;
    for (int a = 0; a < total; ++a) {
        if (!held[a])
            open[a] = openCount++;
    }
    std::vector<std::vector<int>> rows;
    for (auto const& row : inputRows) {
        std::vector<int> mine;
        for (int a : row) {
            if (open[a] >= 0)
                mine.push_back(open[a]);
        }
        rows.push_back(std::move(mine));
    }

    // The least coverage that meets p % of the total, by the same integer
    // comparison as the reproducible search, less what the start holds.
    std::vector<int> needs;
    for (int p = 1; p <= 100; ++p) {
        const qint64 target =
            static_cast<qint64>(static_cast<long double>(p) * 0.01 * total * 100000.0);
        qint64 covered = (target + 99999) / 100000;
        needs.push_back(int(std::max<qint64>(0, covered - startCovered)));
    }

    // Progress follows the budget used; the last steps follow the result.
    const auto budget = std::chrono::seconds(m_budget);
    int shown = 0;
    auto stop = [&]() {
        if (m_stop.load(std::memory_order_relaxed))
            return true;
        if (m_budget > 0) {
            const int percent = int(std::min<long long>(
                99,
                100 *
                    std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - started)
                        .count() /
                    std::chrono::duration_cast<std::chrono::milliseconds>(budget).count()));
            while (shown < percent)
                emit percentChanged(++shown);
        }
        return false;
    };
    XCoverSolver solver(rows, openCount);
    XCoverSolver::Outcome outcome;
    const bool solved = solver.solve(needs, stop, started + budget, outcome);
    // Each thread keeps its own solver environment; free this one's.
    glp_free_env();
    if (!solved || m_stop.load())
        return;

    XResult::Entries entries;
    QList<int> bounds;
    for (int p = 0; p < 100; ++p) {
        QList<int> chosen;
        std::vector<char> have = held;
        int count = startCovered;
        for (int r : outcome.cores[p]) {
            chosen << r + 1;
            for (int a : inputRows[r]) {
                if (!have[a]) {
                    have[a] = 1;
                    ++count;
                }
            }
        }
        entries << XResult::Entry(count, chosen);
        bounds << outcome.lowerBounds[p];
    }
    m_total = total;
    m_zeroPairs = zeros.size();
    while (shown < 100)
        emit percentChanged(++shown);
    XResult* result = new XResult(entries, m_csv, m_src);
    result->setLowerBounds(bounds);
    emit completed(result);
}
