#include "XCoverSolver.h"

#include "XCoverMip.h"

#include <algorithm>
#include <map>
#include <memory>
#include <queue>
#include <random>
#include <utility>

namespace {

// Work (row visits and allele flips) allowed to the swap search per core
// size and per solve, so that the heuristic part ends the same way on every
// machine.
const long long swapWorkPerSize = 20000000;
const long long swapWorkTotal = 400000000;
// Work allowed to the iterated swap search, counted on from the above.
const long long kickWorkTotal = 1200000000;
const int kickRounds = 60;
// Branch-and-bound nodes per need in the first round; each later round
// allows ten times more, until the deadline.
const long firstNodeLimit = 50;

} // namespace

// The state of one solve: best cores per size, bounds per need, and the
// coverage counters the greedy and swap searches share.
struct XCoverSolver::Search
{
    XCoverSolver const& problem;
    std::function<bool()> const& stop;
    Clock::time_point deadline;
    int n;
    int totalWeight = 0;

    // bestSet[k]: the k rows with the most weight found; bestWeight[k] its
    // weight, -1 when there is none yet.
    std::vector<std::vector<int>> bestSet;
    std::vector<int> bestWeight;

    // Coverage counters of the current set.
    std::vector<int> count;
    std::vector<int> gain;
    std::vector<char> chosen;
    int covered = 0;
    long long work = 0;
    bool stopped = false;
    std::minstd_rand generator{20240601u};

    Search(XCoverSolver const& p, std::function<bool()> const& s, Clock::time_point d)
        : problem(p), stop(s), deadline(d), n(int(p.m_rows.size()))
    {
        for (int w : p.m_weight)
            totalWeight += w;
        bestSet.assign(n + 1, {});
        bestWeight.assign(n + 1, -1);
        bestWeight[0] = 0;
    }

    bool halted()
    {
        if (!stopped && stop())
            stopped = true;
        return stopped;
    }

    void clear()
    {
        count.assign(problem.m_weight.size(), 0);
        chosen.assign(n, 0);
        gain.assign(n, 0);
        for (int i = 0; i < n; ++i) {
            for (int a : problem.m_rowAlleles[i])
                gain[i] += problem.m_weight[a];
        }
        covered = 0;
        work += n;
    }

    void add(int row)
    {
        chosen[row] = 1;
        for (int a : problem.m_rowAlleles[row]) {
            if (count[a]++ == 0) {
                const int w = problem.m_weight[a];
                covered += w;
                for (int h : problem.m_holders[a])
                    gain[h] -= w;
                work += static_cast<long long>(problem.m_holders[a].size());
            }
        }
        work += static_cast<long long>(problem.m_rowAlleles[row].size());
    }

    void remove(int row)
    {
        chosen[row] = 0;
        for (int a : problem.m_rowAlleles[row]) {
            if (--count[a] == 0) {
                const int w = problem.m_weight[a];
                covered -= w;
                for (int h : problem.m_holders[a])
                    gain[h] += w;
                work += static_cast<long long>(problem.m_holders[a].size());
            }
        }
        work += static_cast<long long>(problem.m_rowAlleles[row].size());
    }

    void load(std::vector<int> const& rows)
    {
        clear();
        for (int r : rows)
            add(r);
    }

    // Weight that only `row` of the current set holds.
    int unique(int row) const
    {
        int weight = 0;
        for (int a : problem.m_rowAlleles[row]) {
            if (count[a] == 1)
                weight += problem.m_weight[a];
        }
        return weight;
    }

    void record(std::vector<int> rows, int weight)
    {
        const int k = int(rows.size());
        if (weight > bestWeight[k]) {
            std::sort(rows.begin(), rows.end());
            bestSet[k] = std::move(rows);
            bestWeight[k] = weight;
        }
    }

    // Greedy by largest new weight, ties to the lowest row: every prefix is
    // a first core of its size.
    void greedy()
    {
        clear();
        std::priority_queue<std::pair<int, int>> queue;
        for (int i = 0; i < n; ++i)
            queue.push({gain[i], -i});
        std::vector<int> rows;
        while (covered < totalWeight && !queue.empty()) {
            const auto top = queue.top();
            queue.pop();
            const int row = -top.second;
            if (gain[row] != top.first) {
                queue.push({gain[row], -row});
                continue;
            }
            add(row);
            rows.push_back(row);
            record(rows, covered);
        }
    }

    // Swaps one row of the set for a row outside while that adds weight,
    // until no swap does, `target` is reached or the work runs out.
    void swapSearch(std::vector<int>& rows, int target)
    {
        load(rows);
        const long long limit = work + swapWorkPerSize;
        bool improved = true;
        while (improved && covered < target && work < limit && work < swapWorkTotal) {
            improved = false;
            for (int& row : rows) {
                if (halted())
                    return;
                const int loss = unique(row);
                remove(row);
                int best = -1;
                for (int c = 0; c < n; ++c) {
                    if (!chosen[c] && c != row && gain[c] > loss &&
                        (best < 0 || gain[c] > gain[best]))
                        best = c;
                }
                work += n;
                if (best >= 0) {
                    add(best);
                    row = best;
                    improved = true;
                    if (covered >= target)
                        break;
                } else {
                    add(row);
                }
            }
        }
    }

    // The most weight found for k rows, improved by the swap search from the
    // best k-set known and from the best (k+1)-set less its weakest row.
    void improveSize(int k, int target)
    {
        if (k < 1 || k > n)
            return;
        std::vector<std::vector<int>> starts;
        if (bestWeight[k] >= 0)
            starts.push_back(bestSet[k]);
        if (k + 1 <= n && bestWeight[k + 1] >= 0) {
            std::vector<int> rows = bestSet[k + 1];
            load(rows);
            int weakest = 0;
            for (int i = 1; i < int(rows.size()); ++i) {
                if (unique(rows[i]) < unique(rows[weakest]))
                    weakest = i;
            }
            rows.erase(rows.begin() + weakest);
            starts.push_back(rows);
        }
        for (std::vector<int>& rows : starts) {
            swapSearch(rows, target);
            if (stopped)
                return;
            record(rows, covered);
            if (covered >= target)
                return;
        }
    }

    // Iterated swap search for `k` rows holding `target`: kicks a few rows of
    // the best k-set out for others drawn from a fixed-seed generator, then
    // swaps again; keeps any set that holds more.
    bool kick(int k, int target, int rounds)
    {
        if (k < 1 || k > n || bestWeight[k] < 0)
            return false;
        for (int round = 0; round < rounds && work < kickWorkTotal; ++round) {
            if (Clock::now() >= deadline)
                return false;
            std::vector<int> rows = bestSet[k];
            load(rows);
            const int kicked = 1 + int(generator() % 3);
            for (int m = 0; m < kicked && m < k; ++m) {
                const int at = int(generator() % unsigned(k));
                int other = int(generator() % unsigned(n));
                while (chosen[other])
                    other = (other + 1) % n;
                remove(rows[at]);
                add(other);
                rows[at] = other;
            }
            swapSearch(rows, target);
            if (stopped)
                return false;
            record(rows, covered);
            if (covered >= target)
                return true;
        }
        return false;
    }

    // Rounds a relaxation: rows by falling value until the need is met, then
    // rows of the lowest value left out while the need stays met, then the
    // swap search for the most weight at that size.
    void round(std::vector<double> const& value, int need)
    {
        std::vector<int> order(n);
        for (int i = 0; i < n; ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(),
                         [&value](int x, int y) { return value[x] > value[y]; });
        clear();
        std::vector<int> rows;
        for (int i : order) {
            if (covered >= need)
                break;
            if (gain[i] > 0) {
                add(i);
                rows.push_back(i);
            }
        }
        for (int at = int(rows.size()) - 1; at >= 0; --at) {
            if (covered - unique(rows[at]) >= need) {
                remove(rows[at]);
                rows.erase(rows.begin() + at);
            }
        }
        if (covered < need)
            return;
        swapSearch(rows, totalWeight);
        record(rows, covered);
    }

    int sizeFor(int need) const
    {
        for (int k = 0; k <= n; ++k) {
            if (bestWeight[k] >= need)
                return k;
        }
        return n + 1;
    }
};

XCoverSolver::XCoverSolver(std::vector<std::vector<int>> const& rowAlleles, int alleleCount)
    : m_rowCount(int(rowAlleles.size())), m_alleleCount(alleleCount), m_original(rowAlleles)
{
    for (auto& row : m_original) {
        std::sort(row.begin(), row.end());
        row.erase(std::unique(row.begin(), row.end()), row.end());
    }
}

void XCoverSolver::reduce()
{
    // Drop every row whose alleles another row holds too (of two equal rows
    // the first stays): a core can always take the other row instead.
    std::vector<std::vector<int>> holders(m_alleleCount);
    for (int i = 0; i < m_rowCount; ++i) {
        for (int a : m_original[i])
            holders[a].push_back(i);
    }
    const int words = (m_alleleCount + 63) / 64;
    std::vector<std::vector<unsigned long long>> bits(m_rowCount,
                                                      std::vector<unsigned long long>(words));
    for (int i = 0; i < m_rowCount; ++i) {
        for (int a : m_original[i])
            bits[i][a / 64] |= 1ull << (a % 64);
    }
    m_rows.clear();
    for (int i = 0; i < m_rowCount; ++i) {
        std::vector<int> const& mine = m_original[i];
        if (mine.empty())
            continue;
        // Only holders of this row's rarest allele can contain it.
        int rarest = mine.front();
        for (int a : mine) {
            if (holders[a].size() < holders[rarest].size())
                rarest = a;
        }
        bool dominated = false;
        for (int j : holders[rarest]) {
            if (j == i || m_original[j].size() < mine.size())
                continue;
            if (m_original[j].size() == mine.size() && j > i)
                continue;
            bool inside = true;
            for (int w = 0; w < words && inside; ++w)
                inside = (bits[i][w] & ~bits[j][w]) == 0;
            if (inside) {
                dominated = true;
                break;
            }
        }
        if (!dominated)
            m_rows.push_back(i);
    }

    // Alleles held by exactly the same kept rows become one weighted allele.
    std::vector<std::vector<int>> keptHolders(m_alleleCount);
    for (int k = 0; k < int(m_rows.size()); ++k) {
        for (int a : m_original[m_rows[k]])
            keptHolders[a].push_back(k);
    }
    std::map<std::vector<int>, int> merged;
    m_weight.clear();
    m_holders.clear();
    m_rowAlleles.assign(m_rows.size(), {});
    for (int a = 0; a < m_alleleCount; ++a) {
        if (keptHolders[a].empty())
            continue;
        auto found = merged.find(keptHolders[a]);
        if (found != merged.end()) {
            ++m_weight[found->second];
            continue;
        }
        const int id = int(m_weight.size());
        merged.emplace(keptHolders[a], id);
        m_weight.push_back(1);
        m_holders.push_back(keptHolders[a]);
        for (int k : keptHolders[a])
            m_rowAlleles[k].push_back(id);
    }
}

bool XCoverSolver::solve(std::vector<int> const& needs, std::function<bool()> const& stop,
                         Clock::time_point deadline, Outcome& outcome)
{
    reduce();
    Search search(*this, stop, deadline);
    const int count = int(needs.size());
    std::vector<int> lower(count, 0);
    std::vector<int> size(count, 0);

    // Sum of the k heaviest rows: no k rows hold more.
    std::vector<int> heaviest;
    for (auto const& row : search.problem.m_rowAlleles) {
        int weight = 0;
        for (int a : row)
            weight += m_weight[a];
        heaviest.push_back(weight);
    }
    std::sort(heaviest.rbegin(), heaviest.rend());
    for (int p = 0; p < count; ++p) {
        int k = 0;
        long long sum = 0;
        while (sum < needs[p] && k < int(heaviest.size()))
            sum += heaviest[k++];
        lower[p] = k;
    }

    search.greedy();
    if (search.halted())
        return false;

    // Bounds carry upwards (a larger need takes no fewer rows) and across
    // equal needs.
    auto refresh = [&]() {
        for (int p = count - 2; p >= 0; --p) {
            if (needs[p] == needs[p + 1])
                lower[p] = std::max(lower[p], lower[p + 1]);
        }
        for (int p = 0; p < count; ++p) {
            size[p] = search.sizeFor(needs[p]);
            if (p > 0)
                lower[p] = std::max(lower[p], lower[p - 1]);
            lower[p] = std::min(lower[p], size[p]);
        }
    };
    refresh();

    // Swap search: for each need, try one row fewer than the best core.
    for (int p = 0; p < count; ++p) {
        while (size[p] > lower[p] && search.work < swapWorkTotal) {
            const int k = size[p] - 1;
            search.improveSize(k, needs[p]);
            if (search.halted())
                return false;
            if (search.bestWeight[k] < needs[p])
                break;
            size[p] = k;
        }
        refresh();
    }

    // Integer programme per open need: first the relaxation alone for every
    // need, then more branch-and-bound nodes each round.
    std::unique_ptr<XCoverMip> mip;
    for (long nodeLimit = 0; Clock::now() < deadline;
         nodeLimit = nodeLimit == 0 ? firstNodeLimit : std::min(nodeLimit * 10, 1000000000L)) {
        bool open = false;
        for (int p = count - 1; p >= 0; --p) {
            if (size[p] > lower[p])
                open = true;
        }
        if (!open)
            break;
        if (!mip)
            mip = std::make_unique<XCoverMip>(m_holders, m_weight, int(m_rows.size()));
        // The relaxation pass runs from the last need down: the large needs
        // are the ones most often asked for, and their relaxations are the
        // quick and strong ones. Branching rounds run upwards, so that each
        // proof lifts the bounds of the needs above.
        std::vector<int> order;
        for (int p = 0; p < count; ++p)
            order.push_back(nodeLimit == 0 ? count - 1 - p : p);
        bool asked = false;
        for (int p : order) {
            if (size[p] <= lower[p] || (p + 1 < count && needs[p] == needs[p + 1]))
                continue;
            asked = true;
            if (Clock::now() >= deadline)
                break;
            // The whole collection gets its branching at once: it is the
            // entry most asked for.
            const long limit = nodeLimit == 0 && p == count - 1 ? firstNodeLimit : nodeLimit;
            XCoverMip::Answer answer = mip->run(needs[p], size[p], lower[p], limit, stop, deadline);
            if (answer.stopped || search.halted())
                return false;
            if (!answer.relaxation.empty())
                search.round(answer.relaxation, needs[p]);
            if (!answer.core.empty()) {
                std::vector<int> rows = answer.core;
                search.swapSearch(rows, search.totalWeight);
                search.record(rows, search.covered);
            }
            lower[p] = std::max(lower[p], answer.lowerBound);
            refresh();
        }
        if (!asked)
            break;
        // Once the relaxation has shown which needs stay open, spend the
        // iterated swap search on them.
        if (nodeLimit == 0) {
            for (int p = 0; p < count; ++p) {
                while (size[p] > lower[p] && search.kick(size[p] - 1, needs[p], kickRounds))
                    refresh();
                if (search.halted())
                    return false;
            }
        }
    }
    refresh();

    outcome.cores.assign(count, {});
    outcome.lowerBounds.assign(count, 0);
    for (int p = 0; p < count; ++p) {
        for (int k : search.bestSet[size[p]])
            outcome.cores[p].push_back(m_rows[k]);
        std::sort(outcome.cores[p].begin(), outcome.cores[p].end());
        outcome.lowerBounds[p] = lower[p];
    }
    return true;
}
