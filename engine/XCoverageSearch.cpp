#include "XCoverageSearch.h"

#include <QHash>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>

bool XCoverageSearch::build(Matrix const& matrix, QStringList const& headers,
                            AlleleMap const& startMap)
{
    try {
        m_rows = matrix.size();
        m_width = 0;
        for (QList<int> const& row : matrix)
            m_width = std::max(m_width, int(row.size()));
        m_cells.assign(size_t(m_rows) * size_t(m_width), -1);
        m_length.assign(m_rows, 0);
        m_rowNumber.assign(m_rows, 0);

        QHash<QString, int> markerIds;
        QHash<quint64, int> keyIds;
        m_markerNames.clear();
        m_keyMarker.clear();
        m_keyValue.clear();
        auto markerId = [&](QString const& name) {
            auto it = markerIds.constFind(name);
            if (it != markerIds.constEnd())
                return *it;
            const int id = m_markerNames.size();
            markerIds.insert(name, id);
            m_markerNames << name;
            return id;
        };
        auto keyId = [&](int marker, int value) {
            const quint64 packed = (quint64(quint32(marker)) << 32) | quint32(value);
            auto it = keyIds.constFind(packed);
            if (it != keyIds.constEnd())
                return *it;
            const int id = int(m_keyMarker.size());
            keyIds.insert(packed, id);
            m_keyMarker.push_back(marker);
            m_keyValue.push_back(value);
            return id;
        };

        std::vector<int> columnMarker(m_width, -1);
        for (int j = 1; j < m_width; ++j)
            columnMarker[j] = markerId(headers.value(j));
        for (int r = 0; r < m_rows; ++r) {
            QList<int> const& row = matrix.at(r);
            m_length[r] = row.size();
            m_rowNumber[r] = row.value(0);
            int* cells = &m_cells[size_t(r) * size_t(m_width)];
            for (int j = 1; j < row.size(); ++j) {
                const int value = row.at(j);
                if (value > 0)
                    cells[j] = keyId(columnMarker[j], value);
            }
        }
        for (auto it = startMap.constBegin(); it != startMap.constEnd(); ++it)
            keyId(markerId(it.key().first), it.key().second);

        const int keys = int(m_keyMarker.size());
        m_startCount.assign(keys, 0);
        m_startPresent.assign(keys, 0);
        for (auto it = startMap.constBegin(); it != startMap.constEnd(); ++it) {
            const int id = keyIds.value((quint64(quint32(markerIds.value(it.key().first))) << 32) |
                                        quint32(it.key().second));
            m_startCount[id] = it.value();
            m_startPresent[id] = 1;
        }

        // Occurrences in the columns a swap can compare: 1 .. width - 2.
        m_occurrenceStart.assign(keys + 1, 0);
        for (int r = 0; r < m_rows; ++r) {
            int const* cells = &m_cells[size_t(r) * size_t(m_width)];
            for (int j = 1; j <= m_width - 2; ++j) {
                if (cells[j] >= 0)
                    ++m_occurrenceStart[cells[j] + 1];
            }
        }
        for (int key = 0; key < keys; ++key)
            m_occurrenceStart[key + 1] += m_occurrenceStart[key];
        m_occurrenceRow.assign(m_occurrenceStart[keys], 0);
        std::vector<int> fill(m_occurrenceStart.begin(), m_occurrenceStart.end() - 1);
        m_startMissing.assign(m_rows, 0);
        for (int r = 0; r < m_rows; ++r) {
            int const* cells = &m_cells[size_t(r) * size_t(m_width)];
            for (int j = 1; j <= m_width - 2; ++j) {
                const int key = cells[j];
                if (key < 0)
                    continue;
                m_occurrenceRow[fill[key]++] = r;
                if (!m_startPresent[key])
                    ++m_startMissing[r];
            }
        }
        m_count.assign(keys, 0);
        m_present.assign(keys, 0);
        m_missing.assign(m_rows, 0);
        m_used.assign(m_rows, 0);
        m_critical.reserve(m_width);
    } catch (std::bad_alloc const&) {
        return false;
    }
    return true;
}

void XCoverageSearch::setPresence(int key, bool present)
{
    m_present[key] = present;
    m_coverage += present ? 1 : -1;
    const int delta = present ? -1 : 1;
    for (int o = m_occurrenceStart[key]; o < m_occurrenceStart[key + 1]; ++o)
        m_missing[m_occurrenceRow[o]] += delta;
}

void XCoverageSearch::add(int key)
{
    if (!m_present[key]) {
        m_count[key] = 1;
        setPresence(key, true);
    } else {
        ++m_count[key];
    }
}

// Like a map's operator[] followed by a decrement: an absent key comes in
// at -1; only reaching exactly 0 removes it.
void XCoverageSearch::subtract(int key)
{
    if (!m_present[key]) {
        m_count[key] = -1;
        setPresence(key, true);
    } else if (--m_count[key] == 0) {
        setPresence(key, false);
    }
}

void XCoverageSearch::collectCritical(int const* row, int length)
{
    m_critical.clear();
    for (int j = 1; j <= length - 2; ++j) {
        const int key = row[j];
        if (key >= 0 && m_present[key] && m_count[key] == 1)
            m_critical.push_back(j);
    }
}

void XCoverageSearch::attempt(int k, std::atomic<bool> const& stop)
{
    const int n = m_rows;
    const int width = m_width;
    m_count = m_startCount;
    m_present = m_startPresent;
    m_coverage = 0;
    for (uint8_t p : m_present)
        m_coverage += p;
    m_missing = m_startMissing;
    std::fill(m_used.begin(), m_used.end(), 0);
    m_sample.clear();
    m_indices.clear();

    for (int d = 0; d < k; ++d) {
        const int r = rand();
        // r * n / 2^31 in extended precision; exact for any realistic n.
        int i =
            static_cast<int>(static_cast<long double>(r) * static_cast<float>(n) * 4.656613e-10f);
        i = std::min(i, n - 1);
        while (m_used[i])
            i = i == n - 1 ? 0 : i + 1;
        m_used[i] = 1;
        m_sample.push_back(i);
        m_indices << m_rowNumber[i];
        int const* cells = &m_cells[size_t(i) * size_t(width)];
        for (int j = 1; j < m_length[i]; ++j) {
            if (cells[j] >= 0)
                add(cells[j]);
        }
    }

    const int s = int(m_sample.size());
    if (s < 2)
        return;
    // The passes depend only on the sample and the working map; a pass that
    // ends in a state seen before would make them repeat forever.
    m_history.clear();
    rememberState();
    bool swapped = true;
    while (swapped) {
        swapped = false;
        for (int a = 0; a <= s - 2; ++a) {
            if (stop.load(std::memory_order_relaxed))
                return;
            int const* row = &m_cells[size_t(m_sample[a]) * size_t(width)];
            int length = m_length[m_sample[a]];
            collectCritical(row, length);
            for (int c = 0; c <= n - 2; ++c) {
                // One sample position scans every candidate; on the largest
                // tables that alone is too long to wait for after a stop.
                if ((c & 255) == 255 && stop.load(std::memory_order_relaxed))
                    return;
                if (m_missing[c] == 0)
                    continue;
                int const* cand = &m_cells[size_t(c) * size_t(width)];
                int gain = 0;
                for (int j = 1; j <= length - 2; ++j) {
                    const int kc = cand[j];
                    if (kc >= 0 && !m_present[kc]) {
                        const int ks = row[j];
                        if (ks >= 0 && ks != kc)
                            ++gain;
                    }
                }
                if (gain == 0)
                    continue;
                int loss = 0;
                for (int j : m_critical) {
                    const int kc = cand[j];
                    if (kc >= 0 && kc != row[j] && ++loss >= gain)
                        break;
                }
                if (loss >= gain)
                    continue;
                // Columns in ascending order; in each, the candidate's allele
                // goes in before the removed row's comes out.
                for (int j = 1; j <= length - 2; ++j) {
                    const int kc = cand[j];
                    const int ks = row[j];
                    if (kc >= 0 && ks >= 0 && kc != ks) {
                        add(kc);
                        subtract(ks);
                    }
                }
                m_sample[a] = c;
                m_indices[a] = m_rowNumber[c];
                swapped = true;
                row = cand;
                length = m_length[c];
                collectCritical(row, length);
            }
        }
        if (swapped && !rememberState())
            return;
    }
}

bool XCoverageSearch::rememberState()
{
    std::vector<int> state(m_sample);
    state.reserve(m_sample.size() + m_count.size());
    for (size_t key = 0; key < m_count.size(); ++key)
        state.push_back(m_present[key] ? m_count[key] : INT_MIN);
    for (std::vector<int> const& earlier : m_history) {
        if (earlier == state)
            return false;
    }
    m_history.push_back(std::move(state));
    return true;
}

bool XCoverageSearch::search(int k, int iterations, int total, std::atomic<bool> const& stop,
                             bool keepMap)
{
    m_bestCoverage = 0;
    if (m_rows == 0)
        return true;
    try {
        for (int done = 0; m_bestCoverage < total && done < iterations; ++done) {
            if (stop.load(std::memory_order_relaxed))
                return true;
            attempt(k, stop);
            if (m_coverage > m_bestCoverage) {
                m_bestCoverage = m_coverage;
                m_bestIndices = m_indices;
                m_bestSample = m_sample;
                if (keepMap) {
                    m_bestCount = m_count;
                    m_bestPresent = m_present;
                }
            }
        }
    } catch (std::bad_alloc const&) {
        return false;
    }
    return true;
}

XCoverageSearch::AlleleMap XCoverageSearch::bestMap() const
{
    AlleleMap map;
    for (size_t key = 0; key < m_bestPresent.size(); ++key) {
        if (m_bestPresent[key])
            map.insert(qMakePair(m_markerNames.at(m_keyMarker[key]), m_keyValue[key]),
                       m_bestCount[key]);
    }
    return map;
}
