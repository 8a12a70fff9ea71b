#pragma once

#include <QString>
#include <QStringList>

#include <atomic>

class XCsv;

// Reads and writes tables as files, chosen by the file name's suffix
// (case-sensitive, see WorkbookKind): ".csv" is comma-separated text (or
// separated by semicolons or tabs, see XCsv::separatorOf); ".xls", ".xlsx"
// and ".ods" are workbooks, read by the workbook reader program. Text,
// ".xls" and ".xlsx" are written.
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
    // A name ending in ".xls" or ".xlsx" becomes a workbook, any other
    // comma-separated text (".ods" too: it is not written). The file is
    // replaced atomically; returns whether it was written, and if not sets
    // *error to the reason ("Permission denied").
    static bool write(XCsv const& table, QString const& fileName, QString* error = nullptr);

    // What keeps a table that was read from a search, as the user is told
    // it; empty when nothing does. "The file is empty." for a file without
    // text (a byte-order mark alone included); a complaint when the table has
    // no row below its header row, or else when it has no allele column
    // (text split by something other than commas).
    static QString tableProblem(XCsv const& table);
    // Why fileName cannot hold a table of that many rows and columns (the
    // header row and the label column included) in its format, or empty:
    // ".xls" holds 65,536 rows and 256 columns, ".xlsx" 1,048,576 and
    // 16,384; text holds any table.
    static QString fitProblem(QString const& fileName, int rows, int columns);

    // Whether the name ends in a suffix that read() knows.
    static bool isKnownSuffix(QString const& fileName);
    static QString wrongSuffixMessage();
    // A table read as a single column: most often text separated by
    // something other than commas.
    static QString noAlleleColumnsMessage();
    // For a table text whose every data line was left out because its
    // number of fields differs from the header row's.
    static QString noMatchingLinesMessage(int headerFields);
    // "Error while parsing the .xls file: cell at row r and column c ..."
    // for the zero-based position of the first cell that is neither text
    // nor a whole number.
    static QString parseErrorMessage(int row, int column);
};
