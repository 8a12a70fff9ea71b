#pragma once

#include "XRowSets.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QStringList>

#include <atomic>
#include <climits>
#include <cstdint>
#include <memory>
#include <vector>

class XRandom;

// The randomised search for one core size, on dense integer ids instead of
// (marker, allele) strings. It reproduces the working-map bookkeeping of the
// search exactly, drift included: a key subtracted while absent comes in
// with count -1 and stays until a subtraction brings it to exactly 0.
//
// Where the time goes, and why it stays low:
// - A candidate can only gain through alleles the working map lacks: each
//   row keeps a bit per column whose allele the map lacks (its gaps), updated
//   as keys come and go, and rows are found by their number of gaps.
// - Only alleles held exactly once can be lost. A candidate with g gaps
//   gains at most g, so it must lose fewer than g: in all but g - 1 of those
//   columns it holds no allele or the sample row's. With q of those columns
//   in hand, every candidate of at most q gaps is among the rows empty or
//   equal in one of them, and the rest have more than q gaps; the search
//   picks the q that make the fewest rows to try. On a tall table most rows
//   are never looked at.
//
// The search reads only its own state and the generator it is given, so
// copies of one built search may run different sizes on different threads;
// what never changes after build() is shared by the copies.
class XCoverageSearch
{
public:
    using Matrix = QList<QList<int>>;
    using AlleleMap = QMap<QPair<QString, int>, int>;

    // Interns the sorted matrix and the starting collection's map. False when
    // memory ran out.
    bool build(Matrix const& matrix, QStringList const& headers, AlleleMap const& startMap);

    // Up to `iterations` attempts at size k, fewer once one covers `total`
    // alleles; each attempt draws exactly k values from `random`. Returns
    // early when `stop` or `alsoStop` is set. False when memory ran out.
    bool search(int k, int iterations, int total, XRandom& random, std::atomic<bool> const& stop,
                bool keepMap = false, std::atomic<bool> const* alsoStop = nullptr);
    // Attempts the last search completed.
    int attempts() const { return m_attempts; }

    // Whether the last search found an attempt with at least one allele; the
    // accessors below describe that attempt.
    bool improved() const { return m_bestCoverage > 0; }
    int bestCoverage() const { return m_bestCoverage; }
    QList<int> const& bestIndices() const { return m_bestIndices; }
    // Matrix positions of the best sample, in sample order.
    std::vector<int> const& bestSample() const { return m_bestSample; }
    // The best attempt's working map (only with keepMap).
    AlleleMap bestMap() const;

private:
    // What never changes after build().
    struct Tables
    {
        // Key id per cell, 0 where no allele counts (keys are numbered from
        // 1): two bytes a cell while there are few enough keys, else four.
        bool wide = false;
        std::vector<uint16_t> narrowCells;
        std::vector<uint32_t> wideCells;
        std::vector<int> length; // elements per row
        std::vector<int> rowNumber;
        // Per row, a bit per compared column (1 .. width - 2) holding an allele.
        std::vector<uint64_t> valid;
        // Where each key occurs in the compared columns, as row * width +
        // column, rows ascending.
        std::vector<int> occurrenceStart;
        std::vector<uint32_t> occurrences;
        QStringList markerNames;
        std::vector<int> keyMarker;
        std::vector<int> keyValue;
        std::vector<int> startCount; // Absent for a key the starting collection lacks
        int startCoverage = 0;
        std::vector<int> fullCount; // per key, its cells in the whole table
        std::vector<uint64_t> keyRandom;
        // Per compared column, its rows without an allele: how many, and (on
        // a wide table) a bit per row.
        std::vector<int> emptyCount;
        std::vector<uint64_t> emptyRows;
    };

    // Gap counts up to this many are told apart; rows with more share the last set.
    static constexpr int Levels = 16;

    void setPresence(int key, bool present);
    void setRow(int row);
    void compareRow();
    template <typename Cell> Cell const* cellsOf(int row) const;
    template <typename Cell> void collectCritical();
    template <typename Cell> void prepareCritical();
    void syncGaps();
    void moveGaps(int key, bool present);
    void gapCountChanged(int row, int before, int after);
    void setHasGaps(int row, bool has);
    template <typename Cell> int gain(int c) const;
    template <typename Cell> bool gains(int c) const;
    template <typename Cell> int nextSwap(int from);
    void setSample(int position, int row);
    template <typename Cell> void attempt(int k, XRandom& random);
    bool halted() const
    {
        return m_stop->load(std::memory_order_relaxed) ||
               (m_alsoStop && m_alsoStop->load(std::memory_order_relaxed));
    }
    // False when the current state was already reached in this attempt.
    bool rememberState();
    uint64_t keyHash(int key, int count) const;
    bool sameAsEarlier();
    // Row and column of a cell number, without a division.
    void split(uint32_t cell, int& row, int& column) const
    {
        int64_t r = int64_t(double(cell) * m_inverseWidth);
        if (r * m_width > int64_t(cell))
            --r;
        else if ((r + 1) * m_width <= int64_t(cell))
            ++r;
        row = int(r);
        column = int(int64_t(cell) - r * m_width);
    }
    static int occurrenceCount(int key, Tables const& tables)
    {
        return tables.occurrenceStart[size_t(key) + 1] - tables.occurrenceStart[size_t(key)];
    }

    int m_rows = 0;
    int m_width = 0; // longest row, element 0 included; shorter rows pad with 0
    int m_keyCount = 0;
    int m_words = 0; // words of a row's column bits
    double m_inverseWidth = 0;
    std::shared_ptr<Tables const> m_tables;

    // Working map of the current attempt.
    // Per key (entry 0 is scratch): its count, Absent while the map lacks
    // it; and the pass that last journaled it.
    static constexpr int Absent = INT_MIN;
    struct KeyState
    {
        int count = Absent;
        int stamp = -1;
    };
    std::vector<KeyState> m_keys;
    // Per key, compactly for the scans: whether the map counts it once,
    // whether it occurs in more than one compared cell of the table, and in
    // more than FewCells.
    enum KeyFlag : uint8_t { Once = 1, Shared = 2, Common = 4 };
    static constexpr int FewCells = 32;
    std::vector<uint8_t> m_keyFlags;
    int m_coverage = 0;

    // The gaps: per row a bit per compared column whose key the working map
    // lacks, and their number. They follow m_gapPresent, which is the
    // working map's presence while m_trackGaps.
    std::vector<uint64_t> m_gapBits;
    std::vector<int> m_gapCount;
    std::vector<uint8_t> m_gapPresent;
    bool m_trackGaps = false;
    // Set t - 1: the rows with at least t gaps, t = 1 .. Levels.
    XRowSets m_atLeast;
    // Per compared column, the rows with a gap that hold no allele there;
    // kept only on a tall table.
    bool m_keepEmpty = false;
    int m_rowWords = 0;
    XRowSets m_emptyWithGap; // set j for column j
    // While the gaps are brought up to date in bulk, the rows whose
    // having-gaps may have changed, with what it was before.
    bool m_deferEmpty = false;
    std::vector<int> m_touched;
    std::vector<int8_t> m_touchedBefore;

    std::vector<uint8_t> m_used;
    std::vector<int> m_sample;

    // The sample row at the position being improved: its compared columns
    // with an allele (empty until wanted), its critical columns (allele held
    // once), those of them whose allele occurs in many cells, and the others
    // as bits.
    int m_row = -1;
    bool m_rowComparedReady = false;
    bool m_rowCritical = false;  // its critical columns are in hand
    std::vector<int> m_critical; // the first m_criticalCount
    int m_criticalCount = 0;
    std::vector<int> m_sharedCritical;
    // Per row, the critical columns where it holds the sample row's allele,
    // for alleles found in few cells; and the rows with any.
    std::vector<int> m_matches;
    std::vector<int> m_matchedRows;
    std::vector<uint64_t> m_rowCompared;
    std::vector<uint64_t> m_lostBits;
    std::vector<std::pair<long, int>> m_order;
    std::vector<int> m_swapColumns;
    unsigned m_scanned = 0;

    // The states at the end of the passes, as a hash of sample and working
    // map, plus a journal of the changes that lets an earlier state be
    // rebuilt when its hash comes back.
    struct Change
    {
        int what; // key id, or -1 - sample position
        int before;
    };
    uint64_t m_hash = 0;
    bool m_journaling = false;
    std::vector<Change> m_journal;
    std::vector<std::pair<uint64_t, size_t>> m_history;
    // Journal entries are the values before a pass's first change only.
    int m_pass = 0;
    std::vector<int> m_sampleStamp;
    std::vector<int> m_scratchValue;
    std::vector<int> m_scratchSample;
    int m_attempts = 0;
    std::atomic<bool> const* m_stop = nullptr;
    std::atomic<bool> const* m_alsoStop = nullptr;

    int m_bestCoverage = 0;
    QList<int> m_bestIndices;
    std::vector<int> m_bestSample;
    std::vector<int> m_bestCount;
};
