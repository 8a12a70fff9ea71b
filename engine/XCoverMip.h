#pragma once

#include <chrono>
#include <functional>
#include <vector>

struct glp_prob;

// The integer programme behind the exact search, on a reduced problem of rows
// and weighted alleles: choose rows x_i, credit allele a (0 <= y_a <= 1) only
// when a chosen row holds it, and minimise the rows chosen subject to
// sum w_a y_a >= need and sum x_i <= below - 1. The model is built once; each
// question only moves the bounds of two rows, so the simplex starts from the
// previous basis.
class XCoverMip
{
public:
    using Clock = std::chrono::steady_clock;

    struct Answer
    {
        // True when stop() ended the work.
        bool stopped = false;
        // No core reaching the need has fewer rows than this.
        int lowerBound = 0;
        // The smallest core found below `below`, or empty.
        std::vector<int> core;
        // The relaxation's value of each row when it was solved, or empty.
        std::vector<double> relaxation;
    };

    XCoverMip(std::vector<std::vector<int>> const& holders, std::vector<int> const& weight,
              int rowCount);
    ~XCoverMip();
    XCoverMip(XCoverMip const&) = delete;
    XCoverMip& operator=(XCoverMip const&) = delete;

    // Looks for a core of fewer than `below` rows holding `need` weight, or
    // proves there is none; lowerBound is known already. Gives up after
    // nodeLimit branch-and-bound nodes or at the deadline.
    Answer run(int need, int below, int lowerBound, long nodeLimit,
               std::function<bool()> const& stop, Clock::time_point deadline);

private:
    bool solveRelaxation(std::function<bool()> const& stop, Clock::time_point deadline,
                         bool* stopped);
    bool runSimplex(std::function<bool()> const& stop, Clock::time_point deadline, bool* stopped);

    // Null once a stop left GLPK in the middle of a simplex run.
    glp_prob* m_lp;
    int m_rowCount;
    int m_needRow;
    int m_sizeRow;
    bool m_solved = false;
    Clock::duration m_longestChunk{};
};
