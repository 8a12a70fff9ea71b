#pragma once

#include <QList>
#include <QMap>
#include <QPair>
#include <QStringList>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

class XRandom;

// The randomised search for one core size, on dense integer ids instead of
// (marker, allele) strings. It reproduces the working-map bookkeeping of the
// search exactly, drift included: a key subtracted while absent comes in
// with count -1 and stays until a subtraction brings it to exactly 0.
//
// Speed comes from two facts: a candidate can only gain through alleles the
// working map lacks, so each row keeps the list of its columns whose allele
// the map lacks (its gaps), updated as keys come and go, and a candidate's
// gain costs its number of gaps; and only alleles held exactly once can be
// lost, so the loss is counted over that short list of columns.
//
// The search reads only its own state and the generator it is given, so
// copies of one built search may run different sizes on different threads.
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
    void setKey(int key, bool present, int count);
    void add(int key);
    void subtract(int key);
    void setPresence(int key, bool present);
    void collectCritical(int const* row, int length);
    void syncGaps();
    // The first row from `from` on with a gap; INT_MAX when none.
    int nextGapRow(int from) const;
    void moveGaps(int key, bool present);
    void setSample(int position, int row);
    void attempt(int k, XRandom& random);
    bool halted() const
    {
        return m_stop->load(std::memory_order_relaxed) ||
               (m_alsoStop && m_alsoStop->load(std::memory_order_relaxed));
    }
    // False when the current state was already reached in this attempt.
    bool rememberState();
    uint64_t keyHash(int key, int count) const;
    bool sameAsEarlier();

    int m_rows = 0;
    int m_width = 0; // longest row, element 0 included; shorter rows pad with -1
    // What never changes after build(), shared by the copies that search on
    // other threads.
    struct Tables
    {
        std::vector<int> cells;   // key id per cell, -1 where no allele counts
        std::vector<int> columns; // the same, column after column
        // Where each key occurs in the compared columns, one entry per cell.
        std::vector<int> occurrenceRow;
        std::vector<int> occurrenceColumn;
    };
    std::shared_ptr<Tables const> m_tables;
    std::vector<int> m_length; // elements per row
    std::vector<int> m_rowNumber;

    QStringList m_markerNames;
    std::vector<int> m_keyMarker;
    std::vector<int> m_keyValue;

    std::vector<int> m_occurrenceStart;

    std::vector<int> m_startCount;
    std::vector<uint8_t> m_startPresent;

    // Working map of the current attempt.
    std::vector<int> m_count;
    std::vector<uint8_t> m_present;
    int m_coverage = 0;
    // Per row, in a slice of m_width entries: the compared columns whose key
    // the working map lacks, in no particular order, and where each column
    // sits in that list; they follow m_gapPresent, which is the working
    // map's presence while m_trackGaps.
    std::vector<int> m_gaps;
    std::vector<int> m_gapKeys;
    std::vector<int> m_gapSlot;
    std::vector<int> m_missing;
    std::vector<uint8_t> m_gapPresent;
    std::vector<uint64_t> m_gapRows; // bit per row: has a gap
    bool m_trackGaps = false;

    std::vector<uint8_t> m_used;
    std::vector<int> m_sample;
    QList<int> m_indices;
    std::vector<int> m_critical;

    // The states at the end of the passes, as a hash of sample and working
    // map kept up to date with every change, plus a journal of the changes
    // that lets an earlier state be rebuilt when its hash comes back.
    struct Change
    {
        int what; // key id, or -1 - sample position
        int before;
    };
    std::vector<uint64_t> m_keyRandom;
    uint64_t m_hash = 0;
    bool m_journaling = false;
    std::vector<Change> m_journal;
    std::vector<std::pair<uint64_t, size_t>> m_history;
    // Journal entries are the values before a pass's first change only.
    int m_pass = 0;
    std::vector<int> m_keyStamp;
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
    std::vector<uint8_t> m_bestPresent;
};
