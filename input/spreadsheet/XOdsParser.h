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
// Like XWorkbookParser, the programs call this only inside the workbook
// reader program; the fuzzer calls it directly.
class XOdsParser
{
public:
    static XWorkbookContent parse(QString const& fileName);
};
