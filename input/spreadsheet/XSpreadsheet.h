#pragma once

#include <QString>
#include <QStringList>

#include <atomic>

class XCsv;

// Reads and writes tables as files, in the format their name's suffix names
// (case-sensitive, see FileFormats.def): ".csv" is comma-separated text (or
// separated by semicolons or tabs, see XCsv::separatorOf), read here;
// workbooks (".xls", ".xlsx", ".ods") are read by the workbook reader
// program. A format without a writer of its own is written as text.
// Widget-free: callers show the returned message themselves.
class XSpreadsheet
{
public:
    // A new table owned by the caller, or null with *error set to the
    // message to show the user. Only a regular file within the size limit is
    // read. *notes, when given, receives what the user should know about a
    // table that was read (an encoding other than UTF-8, a separator other
    // than the comma). A workbook's reading ends soon after *cancel turns
    // true, with null and *error empty.
    static XCsv* read(QString const& fileName, QString* error, QStringList* notes = nullptr,
                      std::atomic<bool> const* cancel = nullptr);
    // A name whose format has a writer (".xls", ".xlsx") becomes a workbook,
    // any other comma-separated text (".ods" too: it is not written). The file is
    // replaced atomically; returns whether it was written, and if not sets
    // *error to the reason ("Permission denied").
    static bool write(XCsv const& table, QString const& fileName, QString* error = nullptr);

    // Why fileName cannot hold a table of that many rows and columns (the
    // header row and the label column included) in its format, or empty:
    // ".xls" holds 65,536 rows and 256 columns, ".xlsx" 1,048,576 and
    // 16,384; text holds any table.
    static QString fitProblem(QString const& fileName, int rows, int columns);

    // Whether the name ends in a suffix that read() knows.
    static bool isKnownSuffix(QString const& fileName);
    static QString wrongSuffixMessage();
    // "Error while parsing the .xls file: cell at row r and column c ..."
    // for the zero-based position of the first cell that is neither text
    // nor a whole number.
    static QString parseErrorMessage(int row, int column);
};
