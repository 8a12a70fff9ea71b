#include "XExactCore.h"

#include "TableRules.h"
#include "XAlleles.h"
#include "XCoverSolver.h"
#include "XResult.h"

#include <QHash>
#include <QPair>
#include <QStringList>

#include <glpk.h>

#include <algorithm>
#include <chrono>

namespace {

using Allele = QPair<QString, int>;

// Reads the alleles of every data row the way the reproducible search reads
// them, counting every pair in `counts`. Alleles a core covers get an id in
// `ids`, in the order they are met.
bool readAlleles(XCsv::Grid const& grid, QStringList const& headers, QHash<Allele, int>& ids,
                 XAlleles::AlleleMap& counts, std::vector<std::vector<int>>& rows,
                 std::atomic<bool> const& stop)
{
    const XCsv table(grid);
    XAlleles::Matrix matrix;
    if (!XAlleles::encode(table, headers, matrix, counts, &stop))
        return false;
    for (QList<int> const& encoded : matrix) {
        std::vector<int> alleles;
        // Element 0 is the row number.
        for (int j = 1; j < encoded.size(); ++j) {
            if (!XAlleles::isCovered(encoded.at(j)))
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

// The input rows as the solver sees them: only the alleles the starting
// collection lacks, numbered 0 .. openCount - 1. Marks in `held` the
// alleles the starting collection holds, and counts them in startCovered.
std::vector<std::vector<int>> openRows(std::vector<std::vector<int>> const& startRows,
                                       std::vector<std::vector<int>> const& inputRows, int total,
                                       std::vector<char>& held, int& startCovered, int& openCount)
{
    held.assign(total, 0);
    startCovered = 0;
    for (auto const& row : startRows) {
        for (int a : row) {
            if (!held[a]) {
                held[a] = 1;
                ++startCovered;
            }
        }
    }
    std::vector<int> open(total, -1);
    openCount = 0;
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
    return rows;
}

// Each percentage's core as a result entry, with the alleles it holds
// together with the starting collection (whose alleles `held` marks and
// counts `startCovered`), and its lower bound.
void coreEntries(XCoverSolver::Outcome const& outcome,
                 std::vector<std::vector<int>> const& inputRows, std::vector<char> const& held,
                 int startCovered, XResult::Entries& entries, QList<int>& bounds)
{
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
}

} // namespace

XExactCore::XExactCore(XCsv const* csv, XCsv const* src, int const& budgetSeconds)
    : m_budget(std::max(0, budgetSeconds)), m_csv(csv), m_src(src)
{
    if (csv)
        m_csvGrid = csv->data();
    if (src)
        m_srcGrid = src->data();
}

XSearchSettings XExactCore::settings() const
{
    return XSearchSettings::exact(m_budget);
}

XSearch::Outcome XExactCore::run(Progress& progress)
{
    using Clock = XCoverSolver::Clock;
    const Clock::time_point started = Clock::now();
    Outcome none;
    auto failed = [](QString const& message) {
        Outcome outcome;
        outcome.error = message;
        return outcome;
    };
    if (!TableRules::hasAccessions(m_csvGrid))
        return failed(tr("The input table has no accessions."));
    QStringList headers;
    for (QVariant const& cell : m_csvGrid.at(0))
        headers << cell.toString();
    if (m_src && !TableRules::sameHeaders(m_csvGrid, m_srcGrid))
        return failed(tr("Different headers."));

    QHash<Allele, int> ids;
    XAlleles::AlleleMap counts;
    std::vector<std::vector<int>> startRows;
    std::vector<std::vector<int>> inputRows;
    if ((m_src && !readAlleles(m_srcGrid, headers, ids, counts, startRows, m_stop)) ||
        !readAlleles(m_csvGrid, headers, ids, counts, inputRows, m_stop))
        return failed(XSearch::invalidValueMessage());
    if (stopped())
        return none;
    // The (marker, 0) pairs are left out: no core covers them.
    const int total = XAlleles::total(counts, XAlleles::ZeroPairs::LeftOut);
    Q_ASSERT(total == ids.size());
    std::vector<char> held;
    int startCovered = 0;
    int openCount = 0;
    const std::vector<std::vector<int>> rows =
        openRows(startRows, inputRows, total, held, startCovered, openCount);

    // The least coverage that meets p % of the total, by the same integer
    // comparison as the reproducible search, less what the start holds.
    std::vector<int> needs;
    for (int p = 1; p <= 100; ++p)
        needs.push_back(std::max(0, XSearch::leastCoverage(p, total) - startCovered));

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
                progress.percentChanged(++shown);
        }
        return false;
    };
    XCoverSolver solver(rows, openCount);
    XCoverSolver::Outcome outcome;
    const bool solved = solver.solve(needs, stop, started + budget, outcome);
    // Each thread keeps its own solver environment; free this one's.
    glp_free_env();
    if (!solved || stopped())
        return none;

    XResult::Entries entries;
    QList<int> bounds;
    coreEntries(outcome, inputRows, held, startCovered, entries, bounds);
    m_total = total;
    m_zeroPairs = XAlleles::zeroPairs(counts);
    while (shown < 100)
        progress.percentChanged(++shown);
    Outcome done;
    done.result = std::make_unique<XResult>(entries, m_csv, m_src);
    done.result->setLowerBounds(bounds);
    return done;
}
