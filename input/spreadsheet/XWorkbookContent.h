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
        NotWorkbook,
        // A cell whose text is longer than maxCellText; row and column give
        // its position.
        LongCell,
        // Cells whose text, repeats counted, comes to more than
        // maxTextCharacters; row and column give the cell that passed it.
        TooMuchText
    };
    // The largest worksheet of today's workbooks.
    static constexpr qint32 maxRows = 1048576;
    static constexpr qint32 maxColumns = 16384;
    // The most cells a table read from a workbook may hold: about what the
    // largest text file read (128 MB) holds.
    static constexpr qint64 maxCells = qint64(1) << 25;
    // How long the reader program may read one workbook: the programs stop
    // it then, and it stops itself soon after should they not.
    static constexpr int readingSeconds = 30;
    // The most bytes one part of a zipped workbook may unpack to: many
    // times the largest real table, and well within memory.
    static constexpr qint64 maxPartBytes = qint64(256) * 1024 * 1024;
    // The most characters one cell holds, in the spreadsheets themselves
    // and so here: a few bytes of a zipped workbook can ask for more (a
    // count of spaces, a repeated run), never a real table.
    static constexpr qint32 maxCellText = 32767;
    // The most characters of text all cells may hold together, each
    // repetition counted: as much as the largest text file read (128 MB)
    // holds, so that a workbook costs no more than a text table can.
    static constexpr qint64 maxTextCharacters = qint64(128) * 1024 * 1024;
    // The largest frame that content within these limits encodes to: the
    // receiver stops reading past it.
    static constexpr qint64 maxFrameBytes =
        7 * 4 + 4 + maxCells * (1 + 4) + maxCells * 4 + maxTextCharacters * 2;

    Code code = Unreadable;
    // The zero-based position of the first cell that is neither text nor a
    // whole number, for BadCell, and of the cell concerned for LongCell and
    // TooMuchText; the used extent's rows and columns, for SparseSheet and
    // TooLarge.
    qint32 row = 0;
    qint32 column = 0;
    // Every row as wide as the widest, for Read; cells are ints or text.
    XCsv::Grid grid;

    // A header (magic, version, code, position, rows, columns), then each
    // cell as a tag ('i' or 's') and its value, then the closing magic.
    QByteArray encode() const;
    // False unless the bytes hold exactly one whole frame within the
    // format's limits, its cells' text within maxCellText each and
    // maxTextCharacters together.
    static bool decode(QByteArray const& bytes, XWorkbookContent& content);
};
