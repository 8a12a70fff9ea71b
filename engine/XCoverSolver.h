#pragma once

#include <chrono>
#include <functional>
#include <vector>

// Smallest sets of rows that hold at least a given number of alleles, with a
// proof of minimality or a lower bound. Plain C++: the thread, the tables and
// the result around it belong to XExactCore.
//
// Rows and alleles are numbered from 0. The solver first reduces the problem
// (rows whose alleles another row also holds are dropped, alleles held by the
// same rows become one weighted allele), then finds cores with a greedy start
// and swap search per core size, and proves or bounds them with an integer
// programme per need. Everything but the deadline is counted in work, not
// time, so a run that ends before its deadline is repeatable.
class XCoverSolver
{
public:
    using Clock = std::chrono::steady_clock;

    struct Outcome
    {
        // Per need: the rows of a smallest core found, ascending.
        std::vector<std::vector<int>> cores;
        // Per need: no core with fewer rows exists (equal to the size when
        // the core is proven minimal).
        std::vector<int> lowerBounds;
    };

    // rowAlleles[i]: the alleles row i holds; every allele below alleleCount.
    XCoverSolver(std::vector<std::vector<int>> const& rowAlleles, int alleleCount);

    // needs: non-decreasing, each at most the number of alleles some row
    // holds together. stop() is polled often; when it says true the solve
    // returns false at once. At the deadline the proof work ends and the
    // outcome keeps the bounds reached.
    bool solve(std::vector<int> const& needs, std::function<bool()> const& stop,
               Clock::time_point deadline, Outcome& outcome);

private:
    struct Search;
    friend struct Search;

    void reduce();

    int m_rowCount;
    int m_alleleCount;
    std::vector<std::vector<int>> m_original;
    // The reduced problem: kept rows (original numbers), their weighted
    // alleles, and each weighted allele's weight and holders.
    std::vector<int> m_rows;
    std::vector<std::vector<int>> m_rowAlleles;
    std::vector<int> m_weight;
    std::vector<std::vector<int>> m_holders;
};
