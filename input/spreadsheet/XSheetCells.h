#pragma once

#include "XWorkbookContent.h"

#include <QSet>
#include <QVariant>

#include <vector>

// The cells of a worksheet as a zipped workbook lists them: in any order,
// and in OpenDocument as runs of one value repeated over rows and columns.
// Runs are kept as they are, so a repetition is never unpacked beyond the
// used extent, and the content is made only once the extent is known to be
// within the limits.
class XSheetCells
{
public:
    // Adds a value for the rows [row, row + rows) and the columns
    // [column, column + columns), counted from 0. An invalid value stands
    // for a cell that is neither text nor a whole number; empty text is an
    // empty cell and not kept. False, nothing added and refusal() set past
    // the largest worksheet (XWorkbookContent::maxRows x maxColumns), for
    // text longer than a cell holds, or when the text of every cell added,
    // each repetition counted, passes XWorkbookContent::maxTextCharacters:
    // the run is counted before it is ever unpacked.
    bool add(qint64 row, qint64 column, QVariant const& value, qint64 rows = 1, qint64 columns = 1);
    // Why the last add() failed: TooLarge with the extent the run reaches,
    // LongCell or TooMuchText with the run's first cell.
    XWorkbookContent const& refusal() const { return m_refusal; }

    // What the cells come to, checked in the order of the .xls reader: a
    // sparse sheet, one past maxCells, an empty sheet, the first bad cell in
    // row-major order, else the grid, empty cells as empty text.
    XWorkbookContent content() const;

    // A used extent of over a million cells of which fewer than one in a
    // hundred hold something is no table: a few bytes of a damaged or
    // hostile file would otherwise become millions of cells, seconds of
    // work and a gigabyte in each process. The densest real tables (1,350
    // accessions x 1,356 allele columns) hold every cell.
    static bool isSparse(qint64 rows, qint64 columns, qint64 held);
    // A number as a cell: an int when it is whole and within the int range,
    // else an invalid variant (a fraction is no allele).
    static QVariant numberCell(double number);

private:
    struct Run
    {
        qint64 row;
        qint64 column;
        qint64 rows;
        qint64 columns;
        QVariant value;
    };
    std::vector<Run> m_runs;
    // Equal texts are kept once: a sheet of one long text repeated cell
    // after cell costs one copy of it.
    QSet<QString> m_texts;
    qint64 m_characters = 0;
    XWorkbookContent m_refusal;
};
