#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <vector>

// A set of row numbers 0 .. size - 1 as a bit per row, with a second level
// (a bit per word) so that finding the next member skips empty stretches 64
// words at a time: a sparse set of tens of thousands of rows is walked in a
// handful of steps.
class XRowSet
{
public:
    void resize(int size)
    {
        m_words.assign((std::size_t(size) + 63) / 64, 0);
        m_summary.assign((m_words.size() + 63) / 64, 0);
        m_count = 0;
    }
    bool contains(int row) const { return (m_words[std::size_t(row) >> 6] >> (row & 63)) & 1; }
    int count() const { return m_count; }

    void insert(int row)
    {
        const std::size_t w = std::size_t(row) >> 6;
        const uint64_t bit = uint64_t(1) << (row & 63);
        if (m_words[w] & bit)
            return;
        if (m_words[w] == 0)
            m_summary[w >> 6] |= uint64_t(1) << (w & 63);
        m_words[w] |= bit;
        ++m_count;
    }
    void erase(int row)
    {
        const std::size_t w = std::size_t(row) >> 6;
        const uint64_t bit = uint64_t(1) << (row & 63);
        if (!(m_words[w] & bit))
            return;
        m_words[w] &= ~bit;
        if (m_words[w] == 0)
            m_summary[w >> 6] &= ~(uint64_t(1) << (w & 63));
        --m_count;
    }

    // The first member from `from` on; INT_MAX when there is none.
    int next(int from) const
    {
        if (from < 0)
            from = 0;
        std::size_t w = std::size_t(from) >> 6;
        if (w >= m_words.size())
            return INT_MAX;
        const uint64_t here = m_words[w] & (~uint64_t(0) << (from & 63));
        if (here)
            return int(w * 64 + std::size_t(__builtin_ctzll(here)));
        // The next non-empty word, through the summary.
        ++w;
        std::size_t s = w >> 6;
        if (s >= m_summary.size())
            return INT_MAX;
        uint64_t bits = (w & 63) ? m_summary[s] & (~uint64_t(0) << (w & 63)) : m_summary[s];
        while (bits == 0) {
            if (++s >= m_summary.size())
                return INT_MAX;
            bits = m_summary[s];
        }
        w = s * 64 + std::size_t(__builtin_ctzll(bits));
        return int(w * 64 + std::size_t(__builtin_ctzll(m_words[w])));
    }

    // The first member from `from` on whose bit is set in `mask` too, a bit
    // array laid out as this set's words.
    int nextAlso(int from, uint64_t const* mask) const
    {
        for (int row = next(from); row != INT_MAX;) {
            const std::size_t w = std::size_t(row) >> 6;
            const uint64_t bits = m_words[w] & mask[w] & (~uint64_t(0) << (row & 63));
            if (bits)
                return int(w * 64 + std::size_t(__builtin_ctzll(bits)));
            row = next(int((w + 1) * 64));
        }
        return INT_MAX;
    }

private:
    std::vector<uint64_t> m_words;
    std::vector<uint64_t> m_summary; // bit per word: the word is not empty
    int m_count = 0;
};
