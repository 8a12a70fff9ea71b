#pragma once

#include "XCsv.h"

#include <QRandomGenerator>

// Seeded random tables for property tests: a header row "Name", markers
// named in pairs, labels, and cells that are ints, "*" or short texts
// without commas, quotes or line breaks.
struct RandomTableOptions
{
    int minRows = 1, maxRows = 40;
    int minColumns = 1, maxColumns = 12;
    int missingPercent = 10;
    int textPercent = 5;
    int maxAllele = 9;
};

inline XCsv::Grid randomGrid(quint32 seed, RandomTableOptions const& o = {})
{
    QRandomGenerator rng(seed);
    const int rows = o.minRows + int(rng.bounded(quint32(o.maxRows - o.minRows + 1)));
    const int columns = o.minColumns + int(rng.bounded(quint32(o.maxColumns - o.minColumns + 1)));
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (int c = 0; c < columns; ++c)
        header << QStringLiteral("M%1").arg(c / 2 + 1);
    grid << header;
    for (int r = 1; r <= rows; ++r) {
        XCsv::Row row{QStringLiteral("Acc%1").arg(r)};
        for (int c = 0; c < columns; ++c) {
            const int roll = int(rng.bounded(100));
            if (roll < o.missingPercent)
                row << QStringLiteral("*");
            else if (roll < o.missingPercent + o.textPercent)
                row << QStringLiteral("t%1 x").arg(rng.bounded(5));
            else
                row << int(rng.bounded(quint32(o.maxAllele + 1)));
        }
        grid << row;
    }
    return grid;
}
