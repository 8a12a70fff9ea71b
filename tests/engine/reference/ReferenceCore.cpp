#include "ReferenceCore.h"

#include "XCellValue.h"

#include <cstdlib>
#include <ctime>
#include <new>

ReferenceCore::ReferenceCore(XCsv::Grid const& csv, XCsv::Grid const* src, int iterations, int seed)
    : m_csv(csv), m_hasSrc(src != nullptr), m_iterations(iterations)
{
    if (src)
        m_src = *src;
    if (seed != 0)
        srand(seed);
    else
        srand(time(nullptr));
}

bool ReferenceCore::readCsv(XCsv::Grid const& grid, QStringList const& headers, Matrix& matrix,
                            AlleleMap& alleles)
{
    for (int r = 1; r < grid.size(); ++r) {
        XCsv::Row const& row = grid.at(r);
        QList<int> encoded;
        encoded << r;
        for (int j = 1; j < row.size(); ++j) {
            QVariant const& v = row.at(j);
            if (XCellValue::equals(v, QVariant(QStringLiteral("*")))) {
                encoded << 0;
                continue;
            }
            if (j != 1 && headers.value(j) == headers.value(j - 1) &&
                XCellValue::equals(v, row.at(j - 1))) {
                encoded << 0;
                continue;
            }
            bool ok = false;
            const int n = XCellValue::toInt(v, &ok);
            if (!ok || n < 0) {
                m_error = QStringLiteral("Invalid value in csv.");
                return false;
            }
            encoded << n;
            alleles[qMakePair(headers.value(j), n)] += 1;
        }
        matrix << encoded;
    }
    return true;
}

bool ReferenceCore::csortMatrix(Matrix& matrix, int column)
{
    int m = 0;
    for (int r = 0; r < matrix.size(); ++r)
        m = qMax(m, matrix.at(r).value(column));
    int* counter = new (std::nothrow) int[m + 1];
    if (!counter) {
        m_error = QStringLiteral("Error while allocating memory.");
        return false;
    }
    for (int i = 0; i <= m; ++i)
        counter[i] = -1;
    for (int r = 0; r < matrix.size(); ++r)
        counter[matrix.at(r).value(column)] += 1;
    for (int i = 1; i <= m; ++i)
        counter[i] = counter[i] + counter[i - 1] + 1;
    QList<int>* out = new (std::nothrow) QList<int>[matrix.size()];
    if (!out) {
        delete[] counter;
        m_error = QStringLiteral("Error while allocating memory.");
        return false;
    }
    for (int r = matrix.size() - 1; r >= 0; --r) {
        const int v = matrix.at(r).value(column);
        out[counter[v]] = matrix.at(r);
        counter[v] -= 1;
    }
    const int n = matrix.size();
    matrix.clear();
    for (int i = 0; i < n; ++i)
        matrix << out[i];
    delete[] counter;
    delete[] out;
    return true;
}

bool ReferenceCore::iterate(Matrix const& matrix, AlleleMap const& fullMap,
                            AlleleMap const& startMap, QStringList const& headers, Matrix& bestRows,
                            AlleleMap& bestMap, QList<int>& bestIndices, int k)
{
    const int total = fullMap.size();
    const int n = matrix.size();
    int* used = new (std::nothrow) int[n];
    if (!used) {
        m_error = QStringLiteral("Error while allocating memory.");
        return false;
    }
    int best = 0;
    for (int attempt = 0; best < total && attempt < m_iterations; ++attempt) {
        Matrix sample;
        QList<int> indices;
        AlleleMap map = startMap;
        for (int i = 0; i < n; ++i)
            used[i] = 0;

        for (int d = 0; d < k; ++d) {
            const int r = rand();
            int i = static_cast<int>(static_cast<long double>(r) * static_cast<float>(n) *
                                     4.656613e-10f);
            while (used[i] == 1)
                i = i == n - 1 ? 0 : i + 1;
            used[i] = 1;
            sample << matrix.at(i);
            indices << matrix.at(i).at(0);
            for (int j = 1; j < matrix.at(i).size(); ++j) {
                const int v = matrix.at(i).at(j);
                if (v > 0)
                    map[qMakePair(headers.value(j), v)] += 1;
            }
        }

        if (sample.size() >= 2) {
            // The passes depend only on the sample and the map; once a pass
            // ends in a state seen before, they would repeat forever.
            QList<QPair<Matrix, AlleleMap>> seen;
            seen << qMakePair(sample, map);
            bool swapped = true;
            while (swapped) {
                swapped = false;
                for (int a = 0; a <= sample.size() - 2; ++a) {
                    for (int c = 0; c <= n - 2; ++c) {
                        QList<int> const& row = sample.at(a);
                        QList<int> const& cand = matrix.at(c);
                        int gain = 0;
                        int loss = 0;
                        for (int j = 1; j <= row.size() - 2; ++j) {
                            const int s = row.value(j);
                            const int v = cand.value(j);
                            if (v == s || s == 0 || v == 0)
                                continue;
                            if (!map.contains(qMakePair(headers.value(j), v)))
                                ++gain;
                            if (map.value(qMakePair(headers.value(j), s)) == 1 &&
                                map.contains(qMakePair(headers.value(j), s)))
                                ++loss;
                        }
                        if (loss < gain) {
                            for (int j = 1; j <= row.size() - 2; ++j) {
                                const int s = row.value(j);
                                const int v = cand.value(j);
                                if (v == s || s <= 0 || v <= 0)
                                    continue;
                                map[qMakePair(headers.value(j), v)] += 1;
                                const QPair<QString, int> removed(headers.value(j), s);
                                map[removed] -= 1;
                                if (map.value(removed) == 0)
                                    map.remove(removed);
                            }
                            sample[a] = cand;
                            indices[a] = cand.at(0);
                            swapped = true;
                        }
                    }
                }
                if (swapped) {
                    if (seen.contains(qMakePair(sample, map)))
                        break;
                    seen << qMakePair(sample, map);
                }
            }
        }

        const int coverage = map.size();
        if (coverage > best) {
            best = coverage;
            bestMap = map;
            bestRows = sample;
            bestIndices = indices;
        }
    }
    delete[] used;
    return true;
}

bool ReferenceCore::run()
{
    m_entries.clear();
    if (m_iterations < 1) {
        m_error = QStringLiteral("The number of iterations must be at least 1.");
        return false;
    }
    if (m_csv.isEmpty()) {
        m_error = QStringLiteral("The input table has no accessions.");
        return false;
    }
    QStringList headers;
    for (QVariant const& cell : m_csv.at(0))
        headers << cell.toString();

    Matrix startMatrix;
    AlleleMap startMap;
    if (m_hasSrc) {
        if (m_src.isEmpty() || m_src.at(0) != m_csv.at(0)) {
            m_error = QStringLiteral("Different headers.");
            return false;
        }
        if (!readCsv(m_src, headers, startMatrix, startMap))
            return false;
    }
    AlleleMap fullMap = startMap;
    Matrix matrix;
    if (!readCsv(m_csv, headers, matrix, fullMap))
        return false;
    if (matrix.isEmpty()) {
        m_error = QStringLiteral("The input table has no accessions.");
        return false;
    }
    const int c = matrix.at(0).size();
    for (int j = c - 2; j >= 1; --j) {
        if (!csortMatrix(matrix, j))
            return false;
    }

    const int total = fullMap.size();
    int covered = startMap.size();
    int k = 0;
    const int n = matrix.size();
    Matrix bestRows;
    AlleleMap bestMap;
    QList<int> bestIndices;
    for (int p = 1; p <= 100; ++p) {
        const qint64 target =
            static_cast<qint64>(static_cast<long double>(p) * 0.01 * total * 100000.0);
        // The product is a 32-bit int, wrapping like the two's complement it is.
        while (qint64(covered) * 100000 < target && k < n) {
            ++k;
            if (!iterate(matrix, fullMap, startMap, headers, bestRows, bestMap, bestIndices, k))
                return false;
            covered = bestMap.size();
        }
        m_entries << XResult::Entry(covered, bestIndices);
    }
    return true;
}

QString ReferenceCore::resultText()
{
    if (!run())
        return QStringLiteral("error: ") + m_error;
    return XResult(m_entries, nullptr, nullptr).toString();
}
