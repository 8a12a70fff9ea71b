#pragma once

#include "XWorkbookContent.h"

#include <QString>

// Reads the first worksheet of an Office Open XML workbook (.xlsx) cell for
// cell, with the mapping of the .xls reader: text cells (shared or inline)
// become text, whole numbers ints, empty cells and formulas without a saved
// value empty text, a formula its saved value; a fraction, a date or time
// (known by its number format), a truth value or an error value refuses the
// whole file at its position. Every part is unpacked within the zip size
// limit and read without document type declarations.
//
// A crafted archive can still cost a parser more time or memory than a
// window should risk, so it runs in the workbook reader program, whose end
// the caller survives (see XWorkbookReader).
class XXlsxParser
{
public:
    static XWorkbookContent parse(QString const& fileName);

    // Whether a number format shows a date or a time: one of the built-in
    // date and time formats, or a format code with a date or time code
    // (y, m, d, h, s, or an elapsed time such as [h]) outside quotes,
    // escapes and bracketed colours or locales.
    static bool isDateFormat(int id, QString const& code);
};
