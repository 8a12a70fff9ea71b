#pragma once

#include <QString>

class XCsv;

// Writes a table as the first worksheet of an Office Open XML workbook
// (.xlsx) with libxlsxwriter, cell for cell as the .xls writer does: cells
// that read as whole numbers ("007" too) become numbers, every other cell
// text. The file is replaced atomically (XSaveFile).
class XXlsxWriter
{
public:
    // Returns whether the file was written; if not, sets *error to the
    // reason.
    static bool write(XCsv const& table, QString const& fileName, QString* error = nullptr);
};
