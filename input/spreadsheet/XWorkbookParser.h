#pragma once

#include "XWorkbookContent.h"

#include <QString>

// Reads the first worksheet of an .xls workbook cell for cell with FreeXL,
// in the calling process, up to the last row and column that hold a cell.
// Text cells become text, whole numbers ints, empty cells empty text; any
// other cell (a fraction, a date or time) refuses the whole file.
//
// The workbook library crashes, loops or allocates without bound on some
// damaged files, so this runs in the workbook reader program, whose crash,
// stall or exhaustion the caller survives (see XWorkbookReader).
class XWorkbookParser
{
public:
    static XWorkbookContent parse(QString const& fileName);
};
