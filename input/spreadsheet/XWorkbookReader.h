#pragma once

#include <QString>

class XCsv;

// Reads .xls workbooks through the workbook reader program
// (vireon-xls-reader, see XWorkbookParser), so that a file that crashes or
// stalls the workbook library never takes the calling program with it.
class XWorkbookReader
{
public:
    // A new table owned by the caller, or null with *error set to the
    // message to show the user. Waits for the reader program up to the
    // reading limit; meanwhile the calling thread goes on painting and
    // handling timers and sockets, but not user input.
    static XCsv* read(QString const& fileName, QString* error);

    // The reader program that read() starts: $VIREON_XLS_READER when set,
    // else the installed one beside the program (../libexec/vireon), else
    // the one in the build tree.
    static QString program();
    // How long a reading may take before the reader is stopped: 30 s by
    // default (the largest sheet a workbook can hold reads in a few).
    static int readingLimitMs();
    static void setReadingLimitMs(int ms);

    static QString parseErrorMessage(int row, int column);
    static QString unreadableMessage();
    static QString encryptedMessage();
    static QString noWorksheetMessage();
    static QString emptyWorksheetMessage();
    static QString sparseSheetMessage(int rows, int columns);
    static QString readerNotStartedMessage();
    static QString readerStoppedMessage();
};
