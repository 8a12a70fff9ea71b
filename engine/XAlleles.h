#pragma once

#include "XCsv.h"

#include <QMap>
#include <QPair>
#include <QStringList>

#include <atomic>

// How the engine sees the alleles of a table, for the search and for
// anyone who counts alleles the way the search does.
class XAlleles
{
public:
    using Matrix = QList<QList<int>>;
    using AlleleMap = QMap<QPair<QString, int>, int>;

    // Encodes one table: per data row its row number, then one value per
    // allele column (0 for "*" and for the repeat of a homozygous pair), and
    // counts each (marker, allele) in `alleles`. Appends. False at the first
    // cell that is not an allele; returns early, true, once *stop is set.
    static bool encode(XCsv const& table, QStringList const& headers, Matrix& matrix,
                       AlleleMap& alleles, std::atomic<bool> const* stop = nullptr);
    // The number of distinct (marker, allele) pairs the tables hold
    // together, read under the given header row; -1 when a cell of one of
    // them is not an allele. Null tables are left out.
    static int held(QList<XCsv const*> const& tables, QStringList const& headers);
    // Of those, the (marker, 0) pairs: the exact search leaves them out.
    static int zeroPairs(QList<XCsv const*> const& tables, QStringList const& headers);
    // The grid position of the first data cell of an allele column that is
    // not an allele, row by row; false when every cell is one.
    static bool firstNonAllele(XCsv const& table, int* row, int* column);
};
