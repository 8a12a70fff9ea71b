#pragma once

#include <QVariant>

// What table cells mean, for the engine, the table editor and the writers
// alike. Cells are compared like QVariant equality, the right operand
// converted to the left one's type, except that text becomes a number only
// through strictToInt (so " 12" never equals 12).
class XCellValue
{
public:
    static bool equals(QVariant const& left, QVariant const& right);
    // The cell as a whole number: integers as they are, text through
    // strictToInt, whole floating values; anything else fails.
    static int toInt(QVariant const& cell, bool* ok);
    // The mark of a missing allele: "*".
    static QString const& missingMark();
    static bool isMissing(QVariant const& cell);
    // The allele a cell names: a whole number of 0 or more; anything else
    // fails.
    static int alleleNumber(QVariant const& cell, bool* ok);
    // A cell an allele column may hold: the missing mark, or an allele.
    static bool isAllele(QVariant const& cell);
};
