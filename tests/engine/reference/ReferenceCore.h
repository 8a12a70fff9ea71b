#pragma once

#include "XCsv.h"
#include "XResult.h"

#include <QMap>
#include <QPair>
#include <QStringList>

// The search written out plainly, one step per line, with an ordered map
// keyed by (marker, allele). Slow on purpose: it is the oracle the engine's
// results are compared with, and it never ships.
class ReferenceCore
{
public:
    using Matrix = QList<QList<int>>;
    using AlleleMap = QMap<QPair<QString, int>, int>;

    // Seeds the C library generator like the engine does (seed 0: the clock).
    ReferenceCore(XCsv::Grid const& csv, XCsv::Grid const* src, int iterations, int seed);

    // True with entries() filled, or false with error() set.
    bool run();
    XResult::Entries const& entries() const { return m_entries; }
    QString const& error() const { return m_error; }
    // The result's text form, or "error: <message>".
    QString resultText();

    bool readCsv(XCsv::Grid const& grid, QStringList const& headers, Matrix& matrix,
                 AlleleMap& alleles);
    bool csortMatrix(Matrix& matrix, int column);
    bool iterate(Matrix const& matrix, AlleleMap const& fullMap, AlleleMap const& startMap,
                 QStringList const& headers, Matrix& bestRows, AlleleMap& bestMap,
                 QList<int>& bestIndices, int k);

private:
    XCsv::Grid m_csv;
    XCsv::Grid m_src;
    bool m_hasSrc;
    int m_iterations;
    XResult::Entries m_entries;
    QString m_error;
};
