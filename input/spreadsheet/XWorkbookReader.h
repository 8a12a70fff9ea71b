#pragma once

#include <QString>

#include <atomic>

class XCsv;

// Reads workbooks (.xls, .xlsx, .ods) through the workbook reader program
// (vireon-workbook-reader, see XWorkbookParser, XXlsxParser, XOdsParser), so that
// a file that crashes, stalls or exhausts a reader never takes the calling
// program with it.
class XWorkbookReader
{
public:
    // A new table owned by the caller, or null with *error set to the
    // message to show the user. Blocks the calling thread while it waits
    // for the reader program, up to the reading limit, so a window reads on
    // a thread of its own (TableReading). When *cancel turns
    // true (from any thread), the reader program is ended within a few
    // milliseconds and null returned with *error empty.
    //
    // The reader program dies with the thread that started it (a killed
    // window or command line leaves no reader behind), and it answers with
    // at most XWorkbookContent::maxFrameBytes: past that it is stopped.
    static XCsv* read(QString const& fileName, QString* error,
                      std::atomic<bool> const* cancel = nullptr);

    // The reader program that read() starts: $VIREON_WORKBOOK_READER when set,
    // else the installed one beside the program (../libexec/vireon), else
    // the one in the build tree.
    static QString program();
    // How long a reading may take before the reader is stopped: 30 s by
    // default (XWorkbookContent::readingSeconds; the largest sheet a
    // workbook can hold reads in a few).
    static int readingLimitMs();
    static void setReadingLimitMs(int ms);

    // The messages name the kind of file by its suffix (".xls", ".xlsx",
    // ".ods"). Positions are given counted from 0, as the readers report
    // them. The .xls cell message shows them so, as it always has; the
    // messages of the other kinds count from 1, as the spreadsheets and the
    // table's own messages do.
    static QString parseErrorMessage(int row, int column,
                                     QString const& suffix = QStringLiteral(".xls"));
    static QString longCellMessage(int row, int column,
                                   QString const& suffix = QStringLiteral(".xls"));
    static QString tooMuchTextMessage(int row, int column,
                                      QString const& suffix = QStringLiteral(".xls"));
    static QString unreadableMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString encryptedMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString noWorksheetMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString emptyWorksheetMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString sparseSheetMessage(int rows, int columns,
                                      QString const& suffix = QStringLiteral(".xls"));
    static QString tooLargeMessage(int rows, int columns,
                                   QString const& suffix = QStringLiteral(".xls"));
    static QString oversizedPartMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString emptyFileMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString notWorkbookMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString readerNotStartedMessage(QString const& suffix = QStringLiteral(".xls"));
    static QString readerStoppedMessage(QString const& suffix = QStringLiteral(".xls"));
};
