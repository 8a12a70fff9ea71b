#include "XCoverageSearch.h"

#include "XRandom.h"

#include <QHash>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>

namespace {

uint64_t mix(uint64_t x)
{
    x += 0x9e3779b97f4a7c15ull;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ull;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebull;
    return x ^ (x >> 31);
}

uint64_t sampleHash(int position, int row)
{
    return mix((uint64_t(1) << 63) | (uint64_t(uint32_t(position)) << 32) | uint32_t(row));
}

} // namespace

// A key's share of the state hash while it is in the working map: odd
// multipliers keep different counts of one key apart.
uint64_t XCoverageSearch::keyHash(int key, int count) const
{
    return m_keyRandom[size_t(key)] * (2 * uint64_t(uint32_t(count)) + 1);
}

bool XCoverageSearch::build(Matrix const& matrix, QStringList const& headers,
                            AlleleMap const& startMap)
{
    try {
        auto tables = std::make_shared<Tables>();
        m_rows = matrix.size();
        m_width = 0;
        for (QList<int> const& row : matrix)
            m_width = std::max(m_width, int(row.size()));
        tables->cells.assign(size_t(m_rows) * size_t(m_width), -1);
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
            int* cells = &tables->cells[size_t(r) * size_t(m_width)];
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
            int const* cells = &tables->cells[size_t(r) * size_t(m_width)];
            for (int j = 1; j <= m_width - 2; ++j) {
                if (cells[j] >= 0)
                    ++m_occurrenceStart[cells[j] + 1];
            }
        }
        for (int key = 0; key < keys; ++key)
            m_occurrenceStart[key + 1] += m_occurrenceStart[key];
        tables->occurrenceRow.assign(m_occurrenceStart[keys], 0);
        tables->occurrenceColumn.assign(m_occurrenceStart[keys], 0);
        std::vector<int> fill(m_occurrenceStart.begin(), m_occurrenceStart.end() - 1);
        for (int r = 0; r < m_rows; ++r) {
            int const* cells = &tables->cells[size_t(r) * size_t(m_width)];
            for (int j = 1; j <= m_width - 2; ++j) {
                const int key = cells[j];
                if (key < 0)
                    continue;
                tables->occurrenceRow[fill[key]] = r;
                tables->occurrenceColumn[fill[key]++] = j;
            }
        }
        m_keyRandom.resize(keys);
        for (int key = 0; key < keys; ++key)
            m_keyRandom[size_t(key)] = mix(uint64_t(key));
        m_count.assign(keys, 0);
        m_present.assign(keys, 0);
        tables->columns.assign(size_t(m_rows) * size_t(m_width), -1);
        for (int r = 0; r < m_rows; ++r) {
            for (int j = 0; j < m_width; ++j)
                tables->columns[size_t(j) * size_t(m_rows) + size_t(r)] =
                    tables->cells[size_t(r) * size_t(m_width) + size_t(j)];
        }
        m_gaps.assign(size_t(m_rows) * size_t(m_width), 0);
        m_gapKeys.assign(size_t(m_rows) * size_t(m_width), 0);
        m_gapSlot.assign(size_t(m_rows) * size_t(m_width), 0);
        m_missing.assign(m_rows, 0);
        m_gapPresent.assign(keys, 0);
        for (int r = 0; r < m_rows; ++r) {
            int const* cells = &tables->cells[size_t(r) * size_t(m_width)];
            int* gaps = &m_gaps[size_t(r) * size_t(m_width)];
            int* gapKeys = &m_gapKeys[size_t(r) * size_t(m_width)];
            int* slots = &m_gapSlot[size_t(r) * size_t(m_width)];
            for (int j = 1; j <= m_width - 2; ++j) {
                if (cells[j] >= 0) {
                    slots[j] = m_missing[r];
                    gapKeys[m_missing[r]] = cells[j];
                    gaps[m_missing[r]++] = j;
                }
            }
        }
        m_gapRows.assign((size_t(m_rows) + 64) / 64, 0);
        for (int r = 0; r < m_rows; ++r) {
            if (m_missing[r] > 0)
                m_gapRows[size_t(r) >> 6] |= uint64_t(1) << (r & 63);
        }
        m_used.assign(m_rows, 0);
        m_tables = std::move(tables);
        m_critical.reserve(m_width);
        m_keyStamp.assign(keys, -1);
    } catch (std::bad_alloc const&) {
        return false;
    }
    return true;
}

void XCoverageSearch::setPresence(int key, bool present)
{
    m_present[key] = present;
    m_coverage += present ? 1 : -1;
    if (m_trackGaps)
        moveGaps(key, present);
}

void XCoverageSearch::moveGaps(int key, bool present)
{
    m_gapPresent[key] = present;
    const size_t width = size_t(m_width);
    for (int o = m_occurrenceStart[key]; o < m_occurrenceStart[key + 1]; ++o) {
        const int r = m_tables->occurrenceRow[o];
        const int j = m_tables->occurrenceColumn[o];
        int* gaps = &m_gaps[size_t(r) * width];
        int* gapKeys = &m_gapKeys[size_t(r) * width];
        int* slots = &m_gapSlot[size_t(r) * width];
        if (present) {
            const int slot = slots[j];
            const int last = --m_missing[r];
            if (last == 0)
                m_gapRows[size_t(r) >> 6] &= ~(uint64_t(1) << (r & 63));
            gaps[slot] = gaps[last];
            gapKeys[slot] = gapKeys[last];
            slots[gaps[slot]] = slot;
        } else {
            if (m_missing[r] == 0)
                m_gapRows[size_t(r) >> 6] |= uint64_t(1) << (r & 63);
            slots[j] = m_missing[r];
            gapKeys[m_missing[r]] = key;
            gaps[m_missing[r]++] = j;
        }
    }
}

void XCoverageSearch::setKey(int key, bool present, int count)
{
    const bool was = m_present[key];
    if (m_journaling && m_keyStamp[key] != m_pass) {
        m_keyStamp[key] = m_pass;
        m_journal.push_back({key, was ? m_count[key] : INT_MIN});
    }
    if (was)
        m_hash ^= keyHash(key, m_count[key]);
    if (present)
        m_hash ^= keyHash(key, count);
    m_count[key] = count;
    if (was != present)
        setPresence(key, present);
}

void XCoverageSearch::add(int key)
{
    setKey(key, true, m_present[key] ? m_count[key] + 1 : 1);
}

// Like a map's operator[] followed by a decrement: an absent key comes in
// at -1; only reaching exactly 0 removes it.
void XCoverageSearch::subtract(int key)
{
    if (!m_present[key])
        setKey(key, true, -1);
    else if (m_count[key] == 1)
        setKey(key, false, 0);
    else
        setKey(key, true, m_count[key] - 1);
}

void XCoverageSearch::setSample(int position, int row)
{
    if (m_journaling && m_sampleStamp[position] != m_pass) {
        m_sampleStamp[position] = m_pass;
        m_journal.push_back({-1 - position, m_sample[position]});
    }
    m_hash ^= sampleHash(position, m_sample[position]) ^ sampleHash(position, row);
    m_sample[position] = row;
    m_indices[position] = m_rowNumber[row];
}

void XCoverageSearch::collectCritical(int const* row, int length)
{
    m_critical.clear();
    for (int j = 1; j <= length - 2; ++j) {
        const int key = row[j];
        // An absent key's count is 0.
        if (key >= 0 && m_count[key] == 1)
            m_critical.push_back(j);
    }
}

int XCoverageSearch::nextGapRow(int from) const
{
    if (from >= m_rows)
        return INT_MAX;
    size_t word = size_t(from) >> 6;
    uint64_t bits = m_gapRows[word] & (~uint64_t(0) << (from & 63));
    while (bits == 0) {
        if (++word >= m_gapRows.size())
            return INT_MAX;
        bits = m_gapRows[word];
    }
    return int(word * 64 + size_t(__builtin_ctzll(bits)));
}

// Brings the gap lists from the presence they last followed to the working
// map's: only the keys that differ cost anything, and between attempts of
// one size most keys stay as they were.
void XCoverageSearch::syncGaps()
{
    m_trackGaps = true;
    for (size_t key = 0; key < m_present.size(); ++key) {
        if (m_present[key] != m_gapPresent[key])
            moveGaps(int(key), m_present[key]);
    }
}

void XCoverageSearch::attempt(int k, XRandom& random)
{
    const int n = m_rows;
    const size_t width = size_t(m_width);
    int const* columns = m_tables->columns.data();
    m_trackGaps = false;
    m_journaling = false;
    m_count = m_startCount;
    m_present = m_startPresent;
    m_coverage = 0;
    for (uint8_t p : m_present)
        m_coverage += p;
    m_hash = 0;
    std::fill(m_used.begin(), m_used.end(), 0);
    m_sample.clear();
    m_indices.clear();

    for (int d = 0; d < k; ++d) {
        const int r = random.next();
        // r * n / 2^31 in extended precision; exact for any realistic n.
        int i =
            static_cast<int>(static_cast<long double>(r) * static_cast<float>(n) * 4.656613e-10f);
        i = std::min(i, n - 1);
        while (m_used[i])
            i = i == n - 1 ? 0 : i + 1;
        m_used[i] = 1;
        m_hash ^= sampleHash(d, i);
        m_sample.push_back(i);
        m_indices << m_rowNumber[i];
        // Nothing watches the map yet: count directly, hash once after.
        int const* cells = &m_tables->cells[size_t(i) * width];
        for (int j = 1; j < m_length[i]; ++j) {
            const int key = cells[j];
            if (key < 0)
                continue;
            if (m_present[key]) {
                ++m_count[key];
            } else {
                m_present[key] = 1;
                m_count[key] = 1;
                ++m_coverage;
            }
        }
    }
    for (size_t key = 0; key < m_count.size(); ++key) {
        if (m_present[key])
            m_hash ^= keyHash(int(key), m_count[key]);
    }

    const int s = int(m_sample.size());
    if (s < 2)
        return;
    syncGaps();
    // The passes depend only on the sample and the working map; a pass that
    // ends in a state seen before would make them repeat forever.
    m_journal.clear();
    m_history.clear();
    m_sampleStamp.assign(s, -1);
    m_journaling = true;
    rememberState();
    unsigned scanned = 0;
    bool swapped = true;
    while (swapped) {
        swapped = false;
        for (int a = 0; a <= s - 2; ++a) {
            if (halted())
                return;
            int const* row = &m_tables->cells[size_t(m_sample[a]) * width];
            int length = m_length[m_sample[a]];
            collectCritical(row, length);
            // Candidates in ascending order, only rows with gaps; a swap
            // changes which rows have gaps, so the word is read again.
            for (int c = nextGapRow(0); c <= n - 2; c = nextGapRow(c + 1)) {
                // One sample position scans every candidate; on the largest
                // tables that alone is too long to wait for after a stop.
                if ((++scanned & 255) == 0 && halted())
                    return;
                const int missing = m_missing[c];
                int const* gaps = &m_gaps[size_t(c) * width];
                int const* gapKeys = &m_gapKeys[size_t(c) * width];
                // A gap's allele is absent, so it gains wherever the sample
                // row has a different allele in that column.
                int gain = 0;
                for (int g = 0; g < missing; ++g) {
                    const int j = gaps[g];
                    const int ks = row[j];
                    if (j <= length - 2 && ks >= 0 && ks != gapKeys[g])
                        ++gain;
                }
                if (gain == 0)
                    continue;
                // Column by column, neighbouring candidates share cache lines.
                int loss = 0;
                for (int j : m_critical) {
                    const int kc = columns[size_t(j) * size_t(n) + size_t(c)];
                    if (kc >= 0 && kc != row[j] && ++loss >= gain)
                        break;
                }
                if (loss >= gain)
                    continue;
                int const* cand = &m_tables->cells[size_t(c) * width];
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
                setSample(a, c);
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
    for (auto const& earlier : m_history) {
        if (earlier.first == m_hash) {
            if (sameAsEarlier())
                return false;
            break;
        }
    }
    m_history.emplace_back(m_hash, m_journal.size());
    ++m_pass;
    return true;
}

// Walks the journal back from the current state through every remembered
// one and compares those whose hash matches: exact, whatever the hash does.
bool XCoverageSearch::sameAsEarlier()
{
    const size_t keys = m_count.size();
    m_scratchValue.resize(keys);
    for (size_t key = 0; key < keys; ++key)
        m_scratchValue[key] = m_present[key] ? m_count[key] : INT_MIN;
    m_scratchSample = m_sample;
    size_t undone = m_journal.size();
    for (size_t h = m_history.size(); h-- > 0;) {
        while (undone > m_history[h].second) {
            Change const& change = m_journal[--undone];
            if (change.what >= 0)
                m_scratchValue[size_t(change.what)] = change.before;
            else
                m_scratchSample[size_t(-1 - change.what)] = change.before;
        }
        if (m_history[h].first != m_hash || m_scratchSample != m_sample)
            continue;
        bool same = true;
        for (size_t key = 0; key < keys && same; ++key)
            same = m_scratchValue[key] == (m_present[key] ? m_count[key] : INT_MIN);
        if (same)
            return true;
    }
    return false;
}

bool XCoverageSearch::search(int k, int iterations, int total, XRandom& random,
                             std::atomic<bool> const& stop, bool keepMap,
                             std::atomic<bool> const* alsoStop)
{
    m_stop = &stop;
    m_alsoStop = alsoStop;
    m_bestCoverage = 0;
    m_attempts = 0;
    if (m_rows == 0)
        return true;
    try {
        for (int done = 0; m_bestCoverage < total && done < iterations; ++done) {
            if (halted())
                return true;
            attempt(k, random);
            if (halted())
                return true;
            ++m_attempts;
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
