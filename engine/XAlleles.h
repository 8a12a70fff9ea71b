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

    // The allele rule. An encoded value v is an allele a core covers when
    // v > 0: 0 stands for no allele (a missing cell, the repeat of a
    // homozygous pair) and so is never covered, though a cell may hold the
    // allele 0. What the total makes of the (marker, 0) pairs is each
    // search's own: the reproducible search counts them, as it always has,
    // so its results stay the same bit for bit, and no core reaches 100 % of
    // a table that holds one; the exact search leaves them out and says how
    // many it left.
    enum class ZeroPairs { Counted, LeftOut };
    static bool isCovered(int value) { return value > 0; }
    // The alleles of a map that count in a search's total.
    static int total(AlleleMap const& alleles, ZeroPairs zeroPairs);

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
    // The same, as a search's total counts them.
    static int total(QList<XCsv const*> const& tables, QStringList const& headers,
                     ZeroPairs zeroPairs);
    // Of those, the (marker, 0) pairs: the exact search leaves them out.
    static int zeroPairs(AlleleMap const& alleles);
    static int zeroPairs(QList<XCsv const*> const& tables, QStringList const& headers);
    // The grid position of the first data cell of an allele column that is
    // not an allele, row by row; false when every cell is one.
    static bool firstNonAllele(XCsv const& table, int* row, int* column);
};
