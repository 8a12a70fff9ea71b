#pragma once

#include "XWorkbookContent.h"

#include <QString>

// Reads the first table of an OpenDocument spreadsheet (.ods) cell for cell,
// with the mapping of the .xls reader: string cells become text, whole
// float, percentage and currency values ints, cells without a value empty
// text; a fraction, a date, a time or a truth value refuses the whole file
// at its position. Repeated rows and columns are kept as runs and never
// unpacked beyond the used extent. The content is unpacked within the zip
// size limit and read without document type declarations.
//
// A crafted archive can still cost a parser more time or memory than a
// window should risk, so it runs in the workbook reader program, whose end
// the caller survives (see XWorkbookReader).
class XOdsParser
{
public:
    static XWorkbookContent parse(QString const& fileName);
};
