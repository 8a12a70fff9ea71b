#include "XCoverMip.h"

#include <glpk.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>

namespace {

// Simplex iterations between two looks at the stop flag. Each call restarts
// the simplex, which costs a factorisation and loses the pricing weights, so
// the chunks cannot be much smaller without slowing large relaxations down.
const int chunkIterations = 1000;

struct Watch
{
    std::function<bool()> const* stop;
    XCoverMip::Clock::time_point deadline;
    long nodeLimit;
    long nodes = 0;
    int knownBound;
    double bound = -1e300;
    bool stopped = false;
};

bool expired(Watch const& watch)
{
    return XCoverMip::Clock::now() >= watch.deadline;
}

void watchTree(glp_tree* tree, void* info)
{
    Watch& watch = *static_cast<Watch*>(info);
    const int best = glp_ios_best_node(tree);
    if (best != 0)
        watch.bound = std::max(watch.bound, glp_ios_node_bound(tree, best));
    if (glp_ios_reason(tree) == GLP_ISELECT)
        ++watch.nodes;
    if ((*watch.stop)()) {
        watch.stopped = true;
        glp_ios_terminate(tree);
        return;
    }
    if (watch.nodes > watch.nodeLimit || expired(watch)) {
        glp_ios_terminate(tree);
        return;
    }
    // A core as small as the bound already known cannot be beaten.
    if (glp_ios_reason(tree) == GLP_IBINGO) {
        glp_prob* lp = glp_ios_get_prob(tree);
        if (std::lround(glp_mip_obj_val(lp)) <= watch.knownBound)
            glp_ios_terminate(tree);
    }
}

// A simplex run cannot be interrupted from outside, but it reports its
// progress through the terminal hook every few milliseconds. When a stop is
// asked for meanwhile, the hook raises a GLPK error, whose hook leaves the
// solver by longjmp: the only way out that GLPK offers.
struct Escape
{
    std::jmp_buf to;
    std::function<bool()> const* stop;
    bool leaving;
};

int watchOutput(void* info, const char*)
{
    Escape* escape = static_cast<Escape*>(info);
    if (!escape->leaving && (*escape->stop)()) {
        escape->leaving = true;
        glp_error("stopped\n");
    }
    // Nothing is printed.
    return 1;
}

void leave(void* info)
{
    std::longjmp(static_cast<Escape*>(info)->to, 1);
}

// Milliseconds between two looks at the stop flag inside the simplex.
const int lookMilliseconds = 10;

int ceilBound(double value)
{
    return int(std::ceil(value - 1e-6));
}

} // namespace

XCoverMip::XCoverMip(std::vector<std::vector<int>> const& holders, std::vector<int> const& weight,
                     int rowCount)
    : m_lp(glp_create_prob()), m_rowCount(rowCount)
{
    glp_term_out(GLP_OFF);
    const int alleles = int(weight.size());
    glp_set_obj_dir(m_lp, GLP_MIN);
    // Columns: x_1..x_n (rows chosen), then y_1..y_m (alleles credited).
    glp_add_cols(m_lp, rowCount + alleles);
    for (int i = 1; i <= rowCount; ++i) {
        glp_set_col_kind(m_lp, i, GLP_BV);
        glp_set_obj_coef(m_lp, i, 1.0);
    }
    for (int a = 1; a <= alleles; ++a)
        glp_set_col_bnds(m_lp, rowCount + a, GLP_DB, 0.0, 1.0);
    // Rows: y_a - sum of its holders' x <= 0, then the need, then the size.
    glp_add_rows(m_lp, alleles + 2);
    std::vector<int> index(1);
    std::vector<double> value(1);
    for (int a = 0; a < alleles; ++a) {
        index.resize(1);
        value.resize(1);
        index.push_back(rowCount + a + 1);
        value.push_back(1.0);
        for (int row : holders[a]) {
            index.push_back(row + 1);
            value.push_back(-1.0);
        }
        glp_set_row_bnds(m_lp, a + 1, GLP_UP, 0.0, 0.0);
        glp_set_mat_row(m_lp, a + 1, int(index.size()) - 1, index.data(), value.data());
    }
    m_needRow = alleles + 1;
    index.resize(1);
    value.resize(1);
    for (int a = 0; a < alleles; ++a) {
        index.push_back(rowCount + a + 1);
        value.push_back(weight[a]);
    }
    glp_set_mat_row(m_lp, m_needRow, alleles, index.data(), value.data());
    m_sizeRow = alleles + 2;
    index.resize(1);
    value.resize(1);
    for (int i = 1; i <= rowCount; ++i) {
        index.push_back(i);
        value.push_back(1.0);
    }
    glp_set_mat_row(m_lp, m_sizeRow, rowCount, index.data(), value.data());
    glp_std_basis(m_lp);
}

XCoverMip::~XCoverMip()
{
    if (m_lp)
        glp_delete_prob(m_lp);
}

bool XCoverMip::solveRelaxation(std::function<bool()> const& stop, Clock::time_point deadline,
                                bool* stopped)
{
    if (!m_lp) {
        *stopped = true;
        return false;
    }
    Escape escape;
    escape.stop = &stop;
    escape.leaving = false;
    glp_term_hook(watchOutput, &escape);
    glp_error_hook(leave, &escape);
    glp_term_out(GLP_ON);
    if (setjmp(escape.to) == 0) {
        const bool solved = runSimplex(stop, deadline, stopped);
        glp_term_out(GLP_OFF);
        glp_error_hook(nullptr, nullptr);
        glp_term_hook(nullptr, nullptr);
        return solved;
    }
    // Left by the error hook: GLPK's state is undefined now, so all of its
    // memory in this thread goes, the model included.
    glp_free_env();
    m_lp = nullptr;
    *stopped = true;
    return false;
}

bool XCoverMip::runSimplex(std::function<bool()> const& stop, Clock::time_point deadline,
                           bool* stopped)
{
    glp_smcp parm;
    glp_init_smcp(&parm);
    // Progress lines are what lets the terminal hook look at the stop flag.
    parm.msg_lev = GLP_MSG_ON;
    parm.out_frq = lookMilliseconds;
    parm.out_dly = 0;
    // The first solve starts from the slack basis, where the primal simplex
    // does best; later ones start from an optimal basis whose bounds moved,
    // which is the dual simplex's case.
    parm.meth = m_solved ? GLP_DUALP : GLP_PRIMAL;
    parm.it_lim = chunkIterations;
    // Degenerate relaxations of small cores can stall for a long time and
    // bound little: give up after a fixed number of iterations.
    const long long limit = glp_get_num_rows(m_lp) + glp_get_num_cols(m_lp);
    long long iterations = 0;
    bool restarted = false;
    while (iterations < limit) {
        if (stop()) {
            *stopped = true;
            return false;
        }
        // A chunk cannot be interrupted: start one only when the last one
        // would still have ended before the deadline.
        const Clock::time_point begun = Clock::now();
        if (begun + m_longestChunk >= deadline)
            return false;
        const int code = glp_simplex(m_lp, &parm);
        m_longestChunk = std::max(m_longestChunk, Clock::now() - begun);
        iterations += parm.it_lim;
        if (code == 0) {
            m_solved = true;
            return true;
        }
        if (code == GLP_EITLIM)
            continue;
        // A basis the last branch and bound left unusable: start afresh once.
        if (restarted)
            return false;
        restarted = true;
        glp_std_basis(m_lp);
        parm.meth = GLP_PRIMAL;
    }
    return false;
}

XCoverMip::Answer XCoverMip::run(int need, int below, int lowerBound, long nodeLimit,
                                 std::function<bool()> const& stop, Clock::time_point deadline)
{
    Answer answer;
    answer.lowerBound = lowerBound;
    if (!m_lp) {
        answer.stopped = true;
        return answer;
    }
    glp_set_row_bnds(m_lp, m_needRow, GLP_LO, double(need), 0.0);
    glp_set_row_bnds(m_lp, m_sizeRow, GLP_UP, 0.0, double(below - 1));
    if (!solveRelaxation(stop, deadline, &answer.stopped))
        return answer;
    const int status = glp_get_status(m_lp);
    if (status == GLP_NOFEAS || status == GLP_INFEAS) {
        // Not even a fractional choice of fewer rows reaches the need.
        answer.lowerBound = std::max(lowerBound, below);
        return answer;
    }
    if (status != GLP_OPT)
        return answer;
    answer.relaxation.resize(m_rowCount);
    for (int i = 0; i < m_rowCount; ++i)
        answer.relaxation[i] = glp_get_col_prim(m_lp, i + 1);
    const int rootBound = ceilBound(glp_get_obj_val(m_lp));
    answer.lowerBound = std::max(lowerBound, std::min(rootBound, below));
    if (answer.lowerBound >= below || nodeLimit <= 0)
        return answer;

    Watch watch;
    watch.stop = &stop;
    watch.deadline = deadline;
    watch.nodeLimit = nodeLimit;
    watch.knownBound = answer.lowerBound;
    glp_iocp parm;
    glp_init_iocp(&parm);
    parm.msg_lev = GLP_MSG_OFF;
    parm.presolve = GLP_OFF;
    // Measured on the example tables: branching on the most fractional row
    // and taking the node of best bound next closes the most needs; GLPK's
    // cuts cost more time than their bounds gain.
    parm.br_tech = GLP_BR_MFV;
    parm.bt_tech = GLP_BT_BLB;
    parm.cb_func = watchTree;
    parm.cb_info = &watch;
    const int code = glp_intopt(m_lp, &parm);
    answer.stopped = watch.stopped;
    if (watch.stopped)
        return answer;
    const int mipStatus = glp_mip_status(m_lp);
    int found = below;
    if (mipStatus == GLP_OPT || mipStatus == GLP_FEAS) {
        for (int i = 1; i <= m_rowCount; ++i) {
            if (glp_mip_col_val(m_lp, i) > 0.5)
                answer.core.push_back(i - 1);
        }
        found = int(answer.core.size());
    }
    if (code == 0 && (mipStatus == GLP_OPT || mipStatus == GLP_NOFEAS)) {
        // The search tree was closed: nothing smaller than `found` exists.
        answer.lowerBound = std::max(answer.lowerBound, found);
        return answer;
    }
    if (watch.bound > -1e299)
        answer.lowerBound =
            std::max(answer.lowerBound, std::min({ceilBound(watch.bound), found, below}));
    return answer;
}
