#pragma once

#include <QVariant>

// How the engine reads table cells. Cells are compared like QVariant
// equality, the right operand converted to the left one's type, except that
// text becomes a number only through strictToInt (so " 12" never equals 12).
class XCellValue
{
public:
    static bool equals(QVariant const& left, QVariant const& right);
    // The cell as a whole number: integers as they are, text through
    // strictToInt, whole floating values; anything else fails.
    static int toInt(QVariant const& cell, bool* ok);
    static bool isMissing(QVariant const& cell);
};
