#pragma once

#include <QByteArray>
#include <QString>

class XCsv;

// Writes a table as an .xls workbook of three worksheets, the whole grid
// (corner, headers and labels included) on the first one. Cells that read
// as whole numbers become numbers, every other cell text.
class XWorkbookWriter
{
public:
    // Replaces fileName atomically; false, with *error set to the reason,
    // when the table does not fit a worksheet or the file cannot be written.
    static bool write(XCsv const& table, QString const& fileName, QString* error = nullptr);

    // The OLE2 compound document holding the given "Workbook" stream; empty
    // on failure.
    static QByteArray compoundDocument(QByteArray const& workbookStream);
};
