#pragma once

#include "XCsv.h"

#include <QRandomGenerator>

#include <algorithm>

// A genotype table in the shape of real data: `markers` diploid markers of
// 5 to 25 alleles each, low allele numbers common and high ones rare, 4 % of
// the cells missing. The same seed always gives the same table.
inline XCsv::Grid syntheticGrid(int accessions, int markers, quint32 seed)
{
    QRandomGenerator rng(seed);
    QList<int> alleleCounts;
    XCsv::Row header{QStringLiteral("Name")};
    for (int m = 0; m < markers; ++m) {
        alleleCounts << 5 + int(rng.bounded(21));
        header << QStringLiteral("MK%1").arg(m + 1) << QStringLiteral("MK%1").arg(m + 1);
    }
    XCsv::Grid grid{header};
    for (int r = 0; r < accessions; ++r) {
        XCsv::Row row{QStringLiteral("ACC%1").arg(r + 1)};
        for (int m = 0; m < markers; ++m) {
            const quint32 a = quint32(alleleCounts.at(m));
            int alleles[2];
            for (int& allele : alleles)
                allele = 100 + 2 * int(std::min(rng.bounded(a), rng.bounded(a)));
            std::sort(alleles, alleles + 2);
            for (int allele : alleles) {
                if (rng.bounded(100) < 4)
                    row << QStringLiteral("*");
                else
                    row << allele;
            }
        }
        grid << row;
    }
    return grid;
}
