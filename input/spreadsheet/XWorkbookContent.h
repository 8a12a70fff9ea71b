#pragma once

#include "XCsv.h"

#include <QByteArray>

// What reading one workbook came to, and the framed form in which the
// workbook reader program hands it to the program that started it. The
// messages are made by the receiver, in its own language.
struct XWorkbookContent
{
    enum Code : qint32 {
        Read,
        Unreadable,
        Encrypted,
        NoWorksheet,
        EmptyWorksheet,
        BadCell,
        SparseSheet,
        // Past the largest worksheet (maxRows x maxColumns) or past
        // maxCells; row and column give the extent reached.
        TooLarge,
        // A part of a zipped workbook that unpacks to more than the limit.
        OversizedPart,
        // A file of no bytes.
        EmptyFile,
        // Another kind of file under a workbook's name, or a zip archive
        // without the workbook's parts.
        NotWorkbook
    };
    // The largest worksheet of today's workbooks.
    static constexpr qint32 maxRows = 1048576;
    static constexpr qint32 maxColumns = 16384;
    // The most cells a table read from a workbook may hold: about what the
    // largest text file read (128 MB) holds.
    static constexpr qint64 maxCells = qint64(1) << 25;
    // The most bytes one part of a zipped workbook may unpack to: many
    // times the largest real table, and well within memory.
    static constexpr qint64 maxPartBytes = qint64(256) * 1024 * 1024;

    Code code = Unreadable;
    // The zero-based position of the first cell that is neither text nor a
    // whole number, for BadCell; the used extent's rows and columns, for
    // SparseSheet and TooLarge.
    qint32 row = 0;
    qint32 column = 0;
    // Every row as wide as the widest, for Read; cells are ints or text.
    XCsv::Grid grid;

    // A header (magic, version, code, position, rows, columns), then each
    // cell as a tag ('i' or 's') and its value, then the closing magic.
    QByteArray encode() const;
    // False unless the bytes hold exactly one whole frame within the
    // format's limits.
    static bool decode(QByteArray const& bytes, XWorkbookContent& content);
};
