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

// Set bits of a word. Without the processor instruction (not assumed on
// x86-64) the compiler calls a library routine; this is quicker.
int popcount(uint64_t x)
{
#ifdef __POPCNT__
    return __builtin_popcountll(x);
#else
    x = x - ((x >> 1) & 0x5555555555555555ull);
    x = (x & 0x3333333333333333ull) + ((x >> 2) & 0x3333333333333333ull);
    x = (x + (x >> 4)) & 0x0f0f0f0f0f0f0f0full;
    return int((x * 0x0101010101010101ull) >> 56);
#endif
}

// The bits of columns first .. last (inclusive) within word `word`.
uint64_t columnRange(int word, int first, int last)
{
    const int lo = std::max(first - word * 64, 0);
    const int hi = std::min(last - word * 64, 63);
    if (lo > hi)
        return 0;
    const uint64_t upTo = hi == 63 ? ~uint64_t(0) : (uint64_t(1) << (hi + 1)) - 1;
    return upTo & (~uint64_t(0) << lo);
}

} // namespace

// A key's share of the state hash while it is in the working map: odd
// multipliers keep different counts of one key apart.
uint64_t XCoverageSearch::keyHash(int key, int count) const
{
    return m_tables->keyRandom[size_t(key)] * (2 * uint64_t(uint32_t(count)) + 1);
}

template <typename Cell> Cell const* XCoverageSearch::cellsOf(int row) const
{
    if constexpr (sizeof(Cell) == sizeof(uint16_t))
        return &m_tables->narrowCells[size_t(row) * size_t(m_width)];
    else
        return &m_tables->wideCells[size_t(row) * size_t(m_width)];
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
        m_words = (m_width + 63) / 64;
        // Cells are numbered in 32 bits; a table beyond that would not fit
        // in a desktop's memory anyway.
        if (uint64_t(m_rows) * uint64_t(m_width) >= (uint64_t(1) << 32))
            return false;
        m_inverseWidth = m_width > 0 ? 1.0 / m_width : 0.0;
        const size_t width = size_t(m_width);
        const size_t words = size_t(m_words);
        const size_t cellCount = size_t(m_rows) * width;
        tables->length.assign(m_rows, 0);
        tables->rowNumber.assign(m_rows, 0);

        // Keys are numbered from 1; 0 is no allele.
        QHash<QString, int> markerIds;
        QHash<quint64, int> keyIds;
        tables->keyMarker.assign(1, -1);
        tables->keyValue.assign(1, 0);
        auto markerId = [&](QString const& name) {
            auto it = markerIds.constFind(name);
            if (it != markerIds.constEnd())
                return *it;
            const int id = tables->markerNames.size();
            markerIds.insert(name, id);
            tables->markerNames << name;
            return id;
        };
        auto keyId = [&](int marker, int value) {
            const quint64 packed = (quint64(quint32(marker)) << 32) | quint32(value);
            auto it = keyIds.constFind(packed);
            if (it != keyIds.constEnd())
                return *it;
            const int id = int(tables->keyMarker.size());
            keyIds.insert(packed, id);
            tables->keyMarker.push_back(marker);
            tables->keyValue.push_back(value);
            return id;
        };

        std::vector<int> columnMarker(width, -1);
        for (int j = 1; j < m_width; ++j)
            columnMarker[j] = markerId(headers.value(j));
        std::vector<uint32_t> cells(cellCount, 0);
        for (int r = 0; r < m_rows; ++r) {
            QList<int> const& row = matrix.at(r);
            tables->length[r] = row.size();
            tables->rowNumber[r] = row.value(0);
            uint32_t* rowCells = &cells[size_t(r) * width];
            for (int j = 1; j < row.size(); ++j) {
                const int value = row.at(j);
                if (value > 0)
                    rowCells[j] = uint32_t(keyId(columnMarker[j], value));
            }
        }
        for (auto it = startMap.constBegin(); it != startMap.constEnd(); ++it)
            keyId(markerId(it.key().first), it.key().second);
        const int keys = int(tables->keyMarker.size()) - 1;
        m_keyCount = keys;
        // Two bytes a cell while the keys allow it.
        tables->wide = keys > 0xffff;
        if (tables->wide) {
            tables->wideCells = std::move(cells);
        } else {
            tables->narrowCells.assign(cells.begin(), cells.end());
            cells = std::vector<uint32_t>();
        }
        auto cell = [&](int r, int j) -> int {
            const size_t at = size_t(r) * width + size_t(j);
            return tables->wide ? int(tables->wideCells[at]) : tables->narrowCells[at];
        };

        tables->startCount.assign(size_t(keys) + 1, Absent);
        for (auto it = startMap.constBegin(); it != startMap.constEnd(); ++it) {
            const int id = keyIds.value((quint64(quint32(markerIds.value(it.key().first))) << 32) |
                                        quint32(it.key().second));
            tables->startCount[id] = it.value();
            ++tables->startCoverage;
        }

        // The compared columns are 1 .. width - 2: a swap never looks at the
        // last column.
        const int lastCompared = m_width - 2;
        tables->valid.assign(size_t(m_rows) * words, 0);
        tables->occurrenceStart.assign(size_t(keys) + 2, 0);
        tables->fullCount.assign(size_t(keys) + 1, 0);
        tables->emptyCount.assign(width, 0);
        for (int r = 0; r < m_rows; ++r) {
            uint64_t* valid = &tables->valid[size_t(r) * words];
            for (int j = 1; j < tables->length[r]; ++j)
                ++tables->fullCount[size_t(cell(r, j))];
            for (int j = 1; j <= lastCompared; ++j) {
                const int key = cell(r, j);
                if (key > 0) {
                    valid[j >> 6] |= uint64_t(1) << (j & 63);
                    ++tables->occurrenceStart[size_t(key) + 1];
                } else {
                    ++tables->emptyCount[size_t(j)];
                }
            }
        }
        tables->fullCount[0] = 0;
        for (int key = 1; key <= keys; ++key)
            tables->occurrenceStart[size_t(key) + 1] += tables->occurrenceStart[size_t(key)];
        tables->occurrences.assign(size_t(tables->occurrenceStart[size_t(keys) + 1]), 0);
        std::vector<int> fill(tables->occurrenceStart.begin(), tables->occurrenceStart.end() - 1);
        for (int r = 0; r < m_rows; ++r) {
            for (int j = 1; j <= lastCompared; ++j) {
                const int key = cell(r, j);
                if (key > 0)
                    tables->occurrences[size_t(fill[size_t(key)]++)] =
                        uint32_t(size_t(r) * width + size_t(j));
            }
        }
        tables->keyRandom.resize(size_t(keys) + 1);
        for (int key = 0; key <= keys; ++key)
            tables->keyRandom[size_t(key)] = mix(uint64_t(key));

        m_keys.assign(size_t(keys) + 1, KeyState());
        // Entry 0 (no allele) stays without flags.
        m_keyFlags.assign(size_t(keys) + 1, 0);
        for (int key = 1; key <= keys; ++key) {
            const int held = occurrenceCount(key, *tables);
            m_keyFlags[size_t(key)] =
                uint8_t((held > 1 ? Shared : 0) | (held > FewCells ? Common : 0));
        }
        // Every key starts absent, so every compared allele is a gap.
        m_gapBits = tables->valid;
        m_gapCount.assign(m_rows, 0);
        m_gapPresent.assign(size_t(keys) + 1, 0);
        m_atLeast.resize(Levels, m_rows);
        // Which rows are empty in a column: on a tall table kept per column
        // for the rows with gaps, as rows come and go; on a wider one, where
        // a row has many empty columns to keep and few words of rows, fixed.
        m_keepEmpty = m_rows > 64 * m_width;
        m_rowWords = (m_rows + 63) / 64;
        m_emptyWithGap.resize(0, 0);
        if (m_keepEmpty) {
            m_emptyWithGap.resize(m_width, m_rows);
        } else {
            tables->emptyRows.assign(width * size_t(m_rowWords), 0);
            for (int r = 0; r < m_rows; ++r) {
                for (int j = 1; j <= lastCompared; ++j) {
                    if (cell(r, j) == 0)
                        tables->emptyRows[size_t(j) * size_t(m_rowWords) + size_t(r >> 6)] |=
                            uint64_t(1) << (r & 63);
                }
            }
        }
        m_touchedBefore.assign(m_rows, -1);
        m_touched.clear();
        m_deferEmpty = false;
        m_tables = std::move(tables);
        for (int r = 0; r < m_rows; ++r) {
            int gaps = 0;
            for (size_t w = 0; w < words; ++w)
                gaps += popcount(m_gapBits[size_t(r) * words + w]);
            for (int t = 1; t <= std::min(gaps, int(Levels)); ++t)
                m_atLeast.insert(t - 1, r);
            m_gapCount[r] = gaps;
            if (gaps > 0 && m_keepEmpty)
                setHasGaps(r, true);
        }
        m_used.assign(m_rows, 0);
        m_critical.assign(width, 0);
        m_swapColumns.assign(width, 0);
        m_rowCompared.assign(words, 0);
        m_lostBits.assign(words, 0);
        m_matches.assign(size_t(m_rows), 0);
        m_matchedRows.clear();
    } catch (std::bad_alloc const&) {
        return false;
    }
    return true;
}

void XCoverageSearch::setPresence(int key, bool present)
{
    m_coverage += present ? 1 : -1;
    if (m_trackGaps)
        moveGaps(key, present);
}

void XCoverageSearch::moveGaps(int key, bool present)
{
    m_gapPresent[size_t(key)] = present;
    uint32_t const* occurrences = m_tables->occurrences.data();
    const int end = m_tables->occurrenceStart[size_t(key) + 1];
    for (int o = m_tables->occurrenceStart[size_t(key)]; o < end; ++o) {
        int r = 0;
        int j = 0;
        split(occurrences[o], r, j);
        uint64_t& word = m_gapBits[size_t(r) * size_t(m_words) + size_t(j >> 6)];
        const uint64_t bit = uint64_t(1) << (j & 63);
        const int before = m_gapCount[r];
        if (present) {
            word &= ~bit;
            gapCountChanged(r, before, --m_gapCount[r]);
        } else {
            word |= bit;
            gapCountChanged(r, before, ++m_gapCount[r]);
        }
    }
}

// Keeps the row sets the candidate search walks in step with a row's number
// of gaps. While the gaps are brought up to date in bulk the per-column sets
// wait, so that a row passing through having no gap costs nothing.
void XCoverageSearch::gapCountChanged(int row, int before, int after)
{
    if (after > before) {
        if (after <= Levels)
            m_atLeast.insert(after - 1, row);
    } else if (before <= Levels) {
        m_atLeast.erase(before - 1, row);
    }
    if ((before == 0) == (after == 0) || !m_keepEmpty)
        return;
    if (m_deferEmpty) {
        if (m_touchedBefore[row] < 0) {
            m_touchedBefore[row] = before > 0 ? 1 : 0;
            m_touched.push_back(row);
        }
        return;
    }
    setHasGaps(row, after > 0);
}

void XCoverageSearch::setHasGaps(int row, bool has)
{
    uint64_t const* valid = &m_tables->valid[size_t(row) * size_t(m_words)];
    for (int w = 0; w < m_words; ++w) {
        uint64_t empty = ~valid[w] & columnRange(w, 1, m_width - 2);
        while (empty) {
            const int j = w * 64 + __builtin_ctzll(empty);
            empty &= empty - 1;
            if (has)
                m_emptyWithGap.insert(j, row);
            else
                m_emptyWithGap.erase(j, row);
        }
    }
}

void XCoverageSearch::setSample(int position, int row)
{
    if (m_journaling && m_sampleStamp[position] != m_pass) {
        m_sampleStamp[position] = m_pass;
        m_journal.push_back({-1 - position, m_sample[position]});
    }
    m_sample[position] = row;
}

// The sample row in hand. What a candidate is measured against is worked
// out only when some candidate could gain.
void XCoverageSearch::setRow(int row)
{
    m_row = row;
    m_rowComparedReady = false;
    m_rowCritical = false;
}

// The sample row's compared columns holding an allele.
void XCoverageSearch::compareRow()
{
    const int length = m_tables->length[m_row];
    uint64_t const* valid = &m_tables->valid[size_t(m_row) * size_t(m_words)];
    m_rowComparedReady = true;
    for (int w = 0; w < m_words; ++w)
        m_rowCompared[size_t(w)] = valid[w] & columnRange(w, 1, length - 2);
}

// The sample row's compared columns whose allele the working map counts
// exactly once; only wanted once a candidate could gain.
template <typename Cell> void XCoverageSearch::collectCritical()
{
    const int length = m_tables->length[m_row];
    Cell const* row = cellsOf<Cell>(m_row);
    uint8_t const* flags = m_keyFlags.data();
    int* critical = m_critical.data();
    int found = 0;
    // Without branches: the pattern of critical columns is unpredictable.
    for (int j = 1; j <= length - 2; ++j) {
        critical[found] = j;
        found += int(flags[row[j]] & Once);
    }
    m_criticalCount = found;
    prepareCritical<Cell>();
}

// From the critical columns: those whose allele many cells hold, the others
// as bits, and per row how many of the others it holds too, so that a
// candidate's losses are its bits less its matches.
template <typename Cell> void XCoverageSearch::prepareCritical()
{
    m_rowCritical = true;
    for (int row : m_matchedRows)
        m_matches[size_t(row)] = 0;
    m_matchedRows.clear();
    m_sharedCritical.clear();
    std::fill(m_lostBits.begin(), m_lostBits.end(), 0);
    Cell const* row = cellsOf<Cell>(m_row);
    uint8_t const* flags = m_keyFlags.data();
    uint32_t const* occurrences = m_tables->occurrences.data();
    for (int i = 0; i < m_criticalCount; ++i) {
        const int j = m_critical[size_t(i)];
        const int key = row[j];
        if (flags[key] & Common) {
            m_sharedCritical.push_back(j);
            continue;
        }
        m_lostBits[size_t(j) >> 6] |= uint64_t(1) << (j & 63);
        if (!(flags[key] & Shared))
            continue;
        const int end = m_tables->occurrenceStart[size_t(key) + 1];
        for (int o = m_tables->occurrenceStart[size_t(key)]; o < end; ++o) {
            int r = 0;
            int column = 0;
            split(occurrences[o], r, column);
            if (column != j)
                continue;
            if (m_matches[size_t(r)]++ == 0)
                m_matchedRows.push_back(r);
        }
    }
}

// What candidate c would gain in place of the sample row in hand, counted
// as the search counts it.
template <typename Cell> int XCoverageSearch::gain(int c) const
{
    const size_t words = size_t(m_words);
    uint64_t const* gapC = &m_gapBits[size_t(c) * words];
    uint64_t const* gapRow = &m_gapBits[size_t(m_row) * words];
    Cell const* cells = cellsOf<Cell>(c);
    Cell const* row = cellsOf<Cell>(m_row);
    // A gap gains where the sample row holds another allele in that column;
    // it can hold the same one only if that one is absent too.
    int gain = 0;
    for (size_t w = 0; w < words; ++w) {
        const uint64_t gaining = gapC[w] & m_rowCompared[w];
        if (!gaining)
            continue;
        gain += popcount(gaining);
        uint64_t both = gaining & gapRow[w];
        while (both) {
            const int j = int(w * 64) + __builtin_ctzll(both);
            both &= both - 1;
            if (cells[j] == row[j])
                --gain;
        }
    }
    return gain;
}

// Whether candidate c gains more alleles than it loses. It gains at most
// its number of gaps, so the losses are counted first, up to that.
template <typename Cell> bool XCoverageSearch::gains(int c) const
{
    const int most = m_gapCount[c];
    uint64_t const* valid = &m_tables->valid[size_t(c) * size_t(m_words)];
    // A critical allele is lost wherever the candidate holds another one:
    // any allele, but for the few rows that share it.
    const int limit = most + m_matches[size_t(c)];
    int loss = 0;
    for (int w = 0; w < m_words && loss < limit; ++w)
        loss += popcount(m_lostBits[size_t(w)] & valid[w]);
    if (loss >= limit)
        return false;
    loss -= m_matches[size_t(c)];
    // Alleles held in many cells: compared.
    Cell const* cells = cellsOf<Cell>(c);
    Cell const* row = cellsOf<Cell>(m_row);
    for (int j : m_sharedCritical) {
        if (((valid[j >> 6] >> (j & 63)) & 1) && cells[j] != row[j] && ++loss >= most)
            return false;
    }
    return loss < gain<Cell>(c);
}

// The first candidate from `from` on that gains more than it loses against
// the sample row in hand, in matrix order: -1 when the search was stopped,
// INT_MAX when there is none.
//
// A candidate with g gaps gains at most g, so it loses fewer than g: it is
// empty or holds the same allele in all but g - 1 of the critical columns.
// Taking q critical columns, a candidate with at most q gaps is therefore
// empty or equal in one of them, and any other has more than q gaps. The q
// columns, and q itself, are chosen to give the fewest rows to try.
template <typename Cell> int XCoverageSearch::nextSwap(int from)
{
    const int last = m_rows - 2;
    // Rows before the first that could gain are no candidates whatever the
    // losses; often there is none, and nothing more is needed.
    from = m_atLeast.next(0, from);
    if (from > last)
        return INT_MAX;
    if (!m_rowComparedReady)
        compareRow();
    for (; from <= last; from = m_atLeast.next(0, from + 1)) {
        if ((++m_scanned & 255) == 0 && halted())
            return -1;
        if (gain<Cell>(from) > 0)
            break;
    }
    if (from > last)
        return INT_MAX;
    if (!m_rowCritical)
        collectCritical<Cell>();
    Cell const* row = cellsOf<Cell>(m_row);
    const int critical = m_criticalCount;
    int q = 0;
    long fewest = m_atLeast.count(0);
    if (critical > 0) {
        m_order.clear();
        for (int i = 0; i < critical; ++i) {
            const int j = m_critical[size_t(i)];
            const int shared = occurrenceCount(row[j], *m_tables);
            const long empty =
                m_keepEmpty ? m_emptyWithGap.count(j) : m_tables->emptyCount[size_t(j)];
            m_order.emplace_back(empty + (shared > 1 ? shared : 0), j);
        }
        const int most = std::min(critical, int(Levels) - 1);
        std::partial_sort(m_order.begin(), m_order.begin() + most, m_order.end());
        long sum = 0;
        for (int i = 1; i <= most; ++i) {
            sum += m_order[size_t(i) - 1].first;
            const long rows = sum + m_atLeast.count(i);
            if (rows < fewest) {
                fewest = rows;
                q = i;
            }
        }
    }

    // The streams of rows to try, each in ascending order: the rows with
    // more than q gaps, and per chosen column the rows with gaps empty
    // there and those holding the same allele there.
    struct Stream
    {
        int head;
        XRowSets const* sets; // null for a same-allele stream
        int set;
        uint64_t const* mask; // rows of the set that are also in this
        int column;           // same-allele streams: the column
        int at;
        int end;
    };
    Stream streams[2 * Levels];
    int count = 0;
    uint32_t const* occurrences = m_tables->occurrences.data();
    auto nextSame = [&](Stream& s) {
        for (; s.at < s.end; ++s.at) {
            int r = 0;
            int j = 0;
            split(occurrences[s.at], r, j);
            if (j == s.column && m_gapCount[r] > 0)
                return r;
        }
        return INT_MAX;
    };
    streams[count++] = {m_atLeast.next(q, from), &m_atLeast, q, nullptr, -1, 0, 0};
    for (int i = 0; i < q; ++i) {
        const int j = m_order[size_t(i)].second;
        if (m_keepEmpty) {
            streams[count++] = {
                m_emptyWithGap.next(j, from), &m_emptyWithGap, j, nullptr, -1, 0, 0};
        } else {
            uint64_t const* empty = &m_tables->emptyRows[size_t(j) * size_t(m_rowWords)];
            streams[count++] = {m_atLeast.nextAlso(0, from, empty), &m_atLeast, 0, empty, -1, 0, 0};
        }
        const int key = row[j];
        if (occurrenceCount(key, *m_tables) > 1) {
            uint32_t const* begin = occurrences + m_tables->occurrenceStart[size_t(key)];
            uint32_t const* end = occurrences + m_tables->occurrenceStart[size_t(key) + 1];
            const uint32_t first = uint32_t(size_t(from) * size_t(m_width));
            Stream same{0,
                        nullptr,
                        0,
                        nullptr,
                        j,
                        int(std::lower_bound(begin, end, first) - occurrences),
                        int(end - occurrences)};
            same.head = nextSame(same);
            streams[count++] = same;
        }
    }
    int checked = -1;
    for (;;) {
        int c = INT_MAX;
        for (int i = 0; i < count; ++i)
            c = std::min(c, streams[i].head);
        if (c > last)
            return INT_MAX;
        if (c != checked) {
            // One sample position may try many rows; on the largest tables
            // that alone is too long to wait for after a stop.
            if ((++m_scanned & 255) == 0 && halted())
                return -1;
            if (gains<Cell>(c))
                return c;
            checked = c;
        }
        for (int i = 0; i < count; ++i) {
            Stream& s = streams[i];
            if (s.head != c)
                continue;
            if (s.mask) {
                s.head = s.sets->nextAlso(s.set, c + 1, s.mask);
            } else if (s.sets) {
                s.head = s.sets->next(s.set, c + 1);
            } else {
                ++s.at;
                s.head = nextSame(s);
            }
        }
    }
}

// Brings the gaps from the presence they last followed to the working
// map's: only the keys that differ cost anything, and between attempts of
// one size most keys stay as they were.
void XCoverageSearch::syncGaps()
{
    m_trackGaps = true;
    m_deferEmpty = true;
    for (int key = 1; key <= m_keyCount; ++key) {
        const bool present = m_keys[size_t(key)].count != Absent;
        if (present != bool(m_gapPresent[size_t(key)]))
            moveGaps(key, present);
    }
    m_deferEmpty = false;
    for (int row : m_touched) {
        const bool has = m_gapCount[row] > 0;
        if (m_touchedBefore[row] != int8_t(has))
            setHasGaps(row, has);
        m_touchedBefore[row] = -1;
    }
    m_touched.clear();
}

template <typename Cell> void XCoverageSearch::attempt(int k, XRandom& random)
{
    const int n = m_rows;
    Tables const& tables = *m_tables;
    m_trackGaps = false;
    m_journaling = false;
    m_hash = 0;
    std::fill(m_used.begin(), m_used.end(), 0);
    m_sample.clear();
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
    }
    // The working map counts the starting collection and every cell of the
    // sample: counts only grow here, so a key still at 0 is absent after.
    // With more than half of the rows drawn, the whole table less the rows
    // left out is counted instead: fewer cells. Entry 0 takes the empty
    // cells, so that no cell needs a branch.
    const bool complement = 2 * k > n;
    KeyState* keys = m_keys.data();
    for (int key = 1; key <= m_keyCount; ++key) {
        const int start = tables.startCount[size_t(key)];
        keys[key].count =
            (start == Absent ? 0 : start) + (complement ? tables.fullCount[size_t(key)] : 0);
    }
    // Entry 0 starts out Absent: counting the empty cells down from there
    // would overflow.
    keys[0].count = 0;
    const int step = complement ? -1 : 1;
    for (int i = 0; i < n; ++i) {
        if (bool(m_used[i]) == complement)
            continue;
        Cell const* cells = cellsOf<Cell>(i);
        const int length = tables.length[i];
        for (int j = 1; j < length; ++j)
            keys[cells[j]].count += step;
    }
    keys[0].count = 0;
    m_coverage = 0;
    for (int key = 1; key <= m_keyCount; ++key) {
        int& count = keys[key].count;
        if (count == 0)
            count = Absent;
        m_coverage += count != Absent;
        m_keyFlags[size_t(key)] =
            uint8_t((m_keyFlags[size_t(key)] & ~Once) | (count == 1 ? Once : 0));
    }

    const int s = int(m_sample.size());
    if (s < 2)
        return;
    for (int key = 1; key <= m_keyCount; ++key) {
        if (keys[key].count != Absent)
            m_hash ^= keyHash(key, keys[key].count);
    }
    syncGaps();
    // The passes depend only on the sample and the working map; a pass that
    // ends in a state seen before would make them repeat forever.
    m_journal.clear();
    m_history.clear();
    m_sampleStamp.assign(s, -1);
    m_journaling = true;
    rememberState();
    uint8_t* flags = m_keyFlags.data();
    bool swapped = true;
    while (swapped) {
        swapped = false;
        for (int a = 0; a <= s - 2; ++a) {
            if (halted())
                return;
            setRow(m_sample[a]);
            // Candidates in ascending order; after a swap the scan goes on
            // from the next one against the new row.
            for (int c = nextSwap<Cell>(0); c <= n - 2; c = nextSwap<Cell>(c + 1)) {
                if (c < 0)
                    return;
                Cell const* row = cellsOf<Cell>(m_row);
                const int length = tables.length[m_row];
                Cell const* cand = cellsOf<Cell>(c);
                // The columns that change, found without branches (which
                // ones do is unpredictable), then their keys updated.
                int changed = 0;
                for (int j = 1; j <= length - 2; ++j) {
                    const int kc = cand[j];
                    const int ks = row[j];
                    m_swapColumns[size_t(changed)] = j;
                    changed += (kc > 0) & (ks > 0) & (kc != ks);
                }
                // Columns in ascending order; in each, the candidate's allele
                // goes in before the removed row's comes out.
                for (int i = 0; i < changed; ++i) {
                    const int j = m_swapColumns[size_t(i)];
                    const int kc = cand[j];
                    const int ks = row[j];
                    KeyState& in = keys[kc];
                    if (in.stamp != m_pass) {
                        in.stamp = m_pass;
                        m_journal.push_back({kc, in.count});
                    }
                    if (in.count == Absent) {
                        in.count = 1;
                        setPresence(kc, true);
                    } else {
                        ++in.count;
                    }
                    // A count far from 1 leaves the flag as it is.
                    if (unsigned(in.count + 1) <= 3u)
                        flags[kc] = uint8_t((flags[kc] & ~Once) | (in.count == 1 ? Once : 0));
                    KeyState& out = keys[ks];
                    if (out.stamp != m_pass) {
                        out.stamp = m_pass;
                        m_journal.push_back({ks, out.count});
                    }
                    if (out.count == Absent) {
                        out.count = -1;
                        setPresence(ks, true);
                    } else if (out.count == 1) {
                        out.count = Absent;
                        setPresence(ks, false);
                    } else {
                        --out.count;
                    }
                    if (out.count == Absent || unsigned(out.count + 1) <= 3u)
                        flags[ks] = uint8_t((flags[ks] & ~Once) | (out.count == 1 ? Once : 0));
                }
                setSample(a, c);
                swapped = true;
                setRow(c);
            }
        }
        if (swapped && !rememberState())
            return;
    }
}

bool XCoverageSearch::rememberState()
{
    // The hash follows the values the journal holds from before this pass:
    // one update per key or position changed, however often it changed.
    const size_t from = m_history.empty() ? 0 : m_history.back().second;
    for (size_t e = from; e < m_journal.size(); ++e) {
        Change const& change = m_journal[e];
        if (change.what >= 0) {
            const int key = change.what;
            if (change.before != Absent)
                m_hash ^= keyHash(key, change.before);
            if (m_keys[size_t(key)].count != Absent)
                m_hash ^= keyHash(key, m_keys[size_t(key)].count);
        } else {
            const int position = -1 - change.what;
            m_hash ^=
                sampleHash(position, change.before) ^ sampleHash(position, m_sample[position]);
        }
    }
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
    const size_t keys = m_keys.size();
    m_scratchValue.resize(keys);
    for (size_t key = 1; key < keys; ++key)
        m_scratchValue[key] = m_keys[key].count;
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
        for (size_t key = 1; key < keys && same; ++key)
            same = m_scratchValue[key] == m_keys[key].count;
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
            if (m_tables->wide)
                attempt<uint32_t>(k, random);
            else
                attempt<uint16_t>(k, random);
            if (halted())
                return true;
            ++m_attempts;
            if (m_coverage > m_bestCoverage) {
                m_bestCoverage = m_coverage;
                m_bestSample = m_sample;
                m_bestIndices.clear();
                m_bestIndices.reserve(int(m_sample.size()));
                for (int row : m_sample)
                    m_bestIndices << m_tables->rowNumber[size_t(row)];
                if (keepMap) {
                    m_bestCount.resize(m_keys.size());
                    for (size_t key = 0; key < m_keys.size(); ++key)
                        m_bestCount[key] = m_keys[key].count;
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
    Tables const& tables = *m_tables;
    for (size_t key = 1; key < m_bestCount.size(); ++key) {
        if (m_bestCount[key] != Absent)
            map.insert(
                qMakePair(tables.markerNames.at(tables.keyMarker[key]), tables.keyValue[key]),
                m_bestCount[key]);
    }
    return map;
}
