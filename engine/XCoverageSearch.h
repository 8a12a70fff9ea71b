#pragma once

#include <QList>
#include <QMap>
#include <QPair>
#include <QStringList>

#include <atomic>
#include <cstdint>
#include <vector>

// The randomised search for one core size, on dense integer ids instead of
// (marker, allele) strings. It reproduces the working-map bookkeeping of the
// search exactly, drift included: a key subtracted while absent comes in
// with count -1 and stays until a subtraction brings it to exactly 0.
//
// Speed comes from two facts: a candidate can only gain through alleles the
// working map lacks, so rows that lack nothing are skipped at once (a count
// per row kept up to date as keys come and go); and only alleles held exactly
// once can be lost, so the loss is counted over that short list of columns.
class XCoverageSearch
{
public:
    using Matrix = QList<QList<int>>;
    using AlleleMap = QMap<QPair<QString, int>, int>;

    // Interns the sorted matrix and the starting collection's map. False when
    // memory ran out.
    bool build(Matrix const& matrix, QStringList const& headers, AlleleMap const& startMap);

    // Up to `iterations` attempts at size k, fewer once one covers `total`
    // alleles; draws from rand(). Returns early when `stop` is set. False when
    // memory ran out.
    bool search(int k, int iterations, int total, std::atomic<bool> const& stop,
                bool keepMap = false);

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
    void add(int key);
    void subtract(int key);
    void setPresence(int key, bool present);
    void collectCritical(int const* row, int length);
    void attempt(int k, std::atomic<bool> const& stop);
    // False when the current state was already reached in this attempt.
    bool rememberState();

    int m_rows = 0;
    int m_width = 0;           // longest row, element 0 included; shorter rows pad with -1
    std::vector<int> m_cells;  // key id per cell, -1 where no allele counts
    std::vector<int> m_length; // elements per row
    std::vector<int> m_rowNumber;

    QStringList m_markerNames;
    std::vector<int> m_keyMarker;
    std::vector<int> m_keyValue;

    // Where each key occurs in the compared columns, one entry per cell.
    std::vector<int> m_occurrenceStart;
    std::vector<int> m_occurrenceRow;

    std::vector<int> m_startCount;
    std::vector<uint8_t> m_startPresent;
    std::vector<int> m_startMissing;

    // Working map of the current attempt.
    std::vector<int> m_count;
    std::vector<uint8_t> m_present;
    int m_coverage = 0;
    // Per row: compared cells whose key the working map lacks.
    std::vector<int> m_missing;

    std::vector<uint8_t> m_used;
    std::vector<int> m_sample;
    QList<int> m_indices;
    std::vector<int> m_critical;
    std::vector<std::vector<int>> m_history;

    int m_bestCoverage = 0;
    QList<int> m_bestIndices;
    std::vector<int> m_bestSample;
    std::vector<int> m_bestCount;
    std::vector<uint8_t> m_bestPresent;
};
