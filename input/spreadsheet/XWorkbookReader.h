#pragma once

#include <QString>

class XCsv;

// Reads the first worksheet of an .xls workbook cell for cell into a table,
// up to the last row and column that hold a cell. Text cells become text,
// whole numbers ints, empty cells empty text; any other cell (a fraction, a
// date or time) refuses the whole file.
class XWorkbookReader
{
public:
    // A new table owned by the caller, or null with *error set to the
    // message to show the user.
    static XCsv* read(QString const& fileName, QString* error);

    static QString parseErrorMessage(int row, int column);
    static QString unreadableMessage();
    static QString encryptedMessage();
    static QString noWorksheetMessage();
    static QString emptyWorksheetMessage();
};
