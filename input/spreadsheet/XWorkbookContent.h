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
        SparseSheet
    };
    Code code = Unreadable;
    // The zero-based position of the first cell that is neither text nor a
    // whole number, for BadCell; the used extent's rows and columns, for
    // SparseSheet.
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
