#include "XAlleles.h"

#include "XCellValue.h"

bool XAlleles::encode(XCsv const& table, QStringList const& headers, Matrix& matrix,
                      AlleleMap& alleles, std::atomic<bool> const* stop)
{
    XCsv::Grid const& grid = table.data();
    for (int r = 1; r < grid.size(); ++r) {
        if (stop && stop->load(std::memory_order_relaxed))
            return true;
        XCsv::Row const& row = grid.at(r);
        QList<int> encoded;
        encoded.reserve(row.size());
        encoded << r;
        for (int j = 1; j < row.size(); ++j) {
            QVariant const& cell = row.at(j);
            if (XCellValue::isMissing(cell)) {
                encoded << 0;
                continue;
            }
            // A homozygous marker counts its allele once.
            if (j != 1 && headers.value(j) == headers.value(j - 1) &&
                XCellValue::equals(cell, row.at(j - 1))) {
                encoded << 0;
                continue;
            }
            bool ok = false;
            const int value = XCellValue::alleleNumber(cell, &ok);
            if (!ok)
                return false;
            encoded << value;
            ++alleles[qMakePair(headers.value(j), value)];
        }
        matrix << encoded;
    }
    return true;
}

int XAlleles::held(QList<XCsv const*> const& tables, QStringList const& headers)
{
    return total(tables, headers, ZeroPairs::Counted);
}

int XAlleles::total(QList<XCsv const*> const& tables, QStringList const& headers,
                    ZeroPairs zeroPairs)
{
    Matrix scratch;
    AlleleMap alleles;
    for (XCsv const* table : tables) {
        if (table && !encode(*table, headers, scratch, alleles))
            return -1;
    }
    return total(alleles, zeroPairs);
}

int XAlleles::zeroPairs(QList<XCsv const*> const& tables, QStringList const& headers)
{
    Matrix scratch;
    AlleleMap alleles;
    for (XCsv const* table : tables) {
        if (table && !encode(*table, headers, scratch, alleles))
            return -1;
    }
    return zeroPairs(alleles);
}

int XAlleles::zeroPairs(AlleleMap const& alleles)
{
    int zeros = 0;
    for (auto it = alleles.constBegin(); it != alleles.constEnd(); ++it)
        zeros += !isCovered(it.key().second);
    return zeros;
}

int XAlleles::total(AlleleMap const& alleles, ZeroPairs zeroPairs)
{
    const int all = alleles.size();
    return zeroPairs == ZeroPairs::Counted ? all : all - XAlleles::zeroPairs(alleles);
}

bool XAlleles::firstNonAllele(XCsv const& table, int* row, int* column)
{
    XCsv::Grid const& grid = table.data();
    for (int r = 1; r < grid.size(); ++r) {
        XCsv::Row const& cells = grid.at(r);
        for (int c = 1; c < cells.size(); ++c) {
            if (!XCellValue::isAllele(cells.at(c))) {
                *row = r;
                *column = c;
                return true;
            }
        }
    }
    return false;
}
