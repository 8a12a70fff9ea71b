#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <vector>

// Sets of row numbers 0 .. rows - 1, each a bit per row with a second level
// (a bit per word) so that finding the next member skips empty stretches 64
// words at a time: a sparse set of tens of thousands of rows is walked in a
// handful of steps. All sets lie in one block, so that touching many of
// them for one row costs no pointer chasing.
class XRowSets
{
public:
    void resize(int sets, int rows)
    {
        m_wordsPerSet = (std::size_t(rows) + 63) / 64;
        m_summaryPerSet = (m_wordsPerSet + 63) / 64;
        m_words.assign(std::size_t(sets) * m_wordsPerSet, 0);
        m_summary.assign(std::size_t(sets) * m_summaryPerSet, 0);
        m_counts.assign(std::size_t(sets), 0);
    }
    int count(int set) const { return m_counts[std::size_t(set)]; }
    // The words of one set, a bit per row.
    uint64_t const* words(int set) const { return &m_words[std::size_t(set) * m_wordsPerSet]; }

    void insert(int set, int row)
    {
        uint64_t* words = &m_words[std::size_t(set) * m_wordsPerSet];
        const std::size_t w = std::size_t(row) >> 6;
        const uint64_t bit = uint64_t(1) << (row & 63);
        if (words[w] & bit)
            return;
        if (words[w] == 0)
            m_summary[std::size_t(set) * m_summaryPerSet + (w >> 6)] |= uint64_t(1) << (w & 63);
        words[w] |= bit;
        ++m_counts[std::size_t(set)];
    }
    void erase(int set, int row)
    {
        uint64_t* words = &m_words[std::size_t(set) * m_wordsPerSet];
        const std::size_t w = std::size_t(row) >> 6;
        const uint64_t bit = uint64_t(1) << (row & 63);
        if (!(words[w] & bit))
            return;
        words[w] &= ~bit;
        if (words[w] == 0)
            m_summary[std::size_t(set) * m_summaryPerSet + (w >> 6)] &= ~(uint64_t(1) << (w & 63));
        --m_counts[std::size_t(set)];
    }

    // The first member of `set` from `from` on; INT_MAX when there is none.
    int next(int set, int from) const
    {
        if (from < 0)
            from = 0;
        uint64_t const* words = &m_words[std::size_t(set) * m_wordsPerSet];
        std::size_t w = std::size_t(from) >> 6;
        if (w >= m_wordsPerSet)
            return INT_MAX;
        const uint64_t here = words[w] & (~uint64_t(0) << (from & 63));
        if (here)
            return int(w * 64 + std::size_t(__builtin_ctzll(here)));
        // The next non-empty word, through the summary.
        uint64_t const* summary = &m_summary[std::size_t(set) * m_summaryPerSet];
        ++w;
        std::size_t s = w >> 6;
        if (s >= m_summaryPerSet)
            return INT_MAX;
        uint64_t bits = summary[s] & (~uint64_t(0) << (w & 63));
        while (bits == 0) {
            if (++s >= m_summaryPerSet)
                return INT_MAX;
            bits = summary[s];
        }
        w = s * 64 + std::size_t(__builtin_ctzll(bits));
        return int(w * 64 + std::size_t(__builtin_ctzll(words[w])));
    }

    // The first member of `set` from `from` on whose bit is set in `mask`
    // too, a bit array laid out as a set's words.
    int nextAlso(int set, int from, uint64_t const* mask) const
    {
        uint64_t const* words = &m_words[std::size_t(set) * m_wordsPerSet];
        for (int row = next(set, from); row != INT_MAX;) {
            const std::size_t w = std::size_t(row) >> 6;
            const uint64_t bits = words[w] & mask[w] & (~uint64_t(0) << (row & 63));
            if (bits)
                return int(w * 64 + std::size_t(__builtin_ctzll(bits)));
            row = next(set, int((w + 1) * 64));
        }
        return INT_MAX;
    }

private:
    std::size_t m_wordsPerSet = 0;
    std::size_t m_summaryPerSet = 0;
    std::vector<uint64_t> m_words;
    std::vector<uint64_t> m_summary; // bit per word: the word is not empty
    std::vector<int> m_counts;
};
