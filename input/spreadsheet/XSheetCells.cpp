#include "XSheetCells.h"

#include <climits>
#include <cmath>
#include <utility>

bool XSheetCells::add(qint64 row, qint64 column, QVariant const& value, qint64 rows, qint64 columns)
{
    auto refuse = [this](XWorkbookContent::Code code, qint64 r, qint64 c) {
        m_refusal = XWorkbookContent();
        m_refusal.code = code;
        m_refusal.row = qint32(qBound<qint64>(0, r, XWorkbookContent::maxRows + 1));
        m_refusal.column = qint32(qBound<qint64>(0, c, XWorkbookContent::maxColumns + 1));
        return false;
    };
    if (row < 0 || column < 0 || rows < 1 || columns < 1 ||
        row + rows > XWorkbookContent::maxRows || column + columns > XWorkbookContent::maxColumns)
        return refuse(XWorkbookContent::TooLarge, qMax(row + rows, row + 1),
                      qMax(column + columns, column + 1));
    if (!value.isValid() || value.userType() != QMetaType::QString) {
        m_runs.push_back(Run{row, column, rows, columns, value});
        return true;
    }
    const QString text = value.toString();
    if (text.isEmpty())
        return true;
    if (text.size() > XWorkbookContent::maxCellText)
        return refuse(XWorkbookContent::LongCell, row, column);
    // At most 2^20 x 2^14 cells of 2^15 characters: no overflow.
    m_characters += qint64(text.size()) * rows * columns;
    if (m_characters > XWorkbookContent::maxTextCharacters)
        return refuse(XWorkbookContent::TooMuchText, row, column);
    auto kept = m_texts.constFind(text);
    if (kept == m_texts.constEnd())
        kept = m_texts.insert(text);
    m_runs.push_back(Run{row, column, rows, columns, *kept});
    return true;
}

bool XSheetCells::isSparse(qint64 rows, qint64 columns, qint64 held)
{
    const qint64 extent = rows * columns;
    return extent > 1000000 && held * 100 < extent;
}

QVariant XSheetCells::numberCell(double number)
{
    if (std::isfinite(number) && std::floor(number) == number && number >= double(INT_MIN) &&
        number <= double(INT_MAX))
        return int(number);
    return QVariant();
}

XWorkbookContent XSheetCells::content() const
{
    XWorkbookContent content;
    qint64 rows = 0;
    qint64 columns = 0;
    qint64 held = 0;
    const Run* bad = nullptr;
    for (Run const& run : m_runs) {
        rows = qMax(rows, run.row + run.rows);
        columns = qMax(columns, run.column + run.columns);
        held += run.rows * run.columns;
        if (!run.value.isValid() &&
            (!bad || std::make_pair(run.row, run.column) < std::make_pair(bad->row, bad->column)))
            bad = &run;
    }
    // Repeated runs may overlap, so held can exceed the extent; that is no
    // harm to the test of sparseness.
    if (isSparse(rows, columns, held)) {
        content.code = XWorkbookContent::SparseSheet;
        content.row = qint32(rows);
        content.column = qint32(columns);
        return content;
    }
    if (rows * columns > XWorkbookContent::maxCells) {
        content.code = XWorkbookContent::TooLarge;
        content.row = qint32(rows);
        content.column = qint32(columns);
        return content;
    }
    if (rows == 0 || columns == 0) {
        content.code = XWorkbookContent::EmptyWorksheet;
        return content;
    }
    if (bad) {
        content.code = XWorkbookContent::BadCell;
        content.row = qint32(bad->row);
        content.column = qint32(bad->column);
        return content;
    }
    XCsv::Row empty;
    empty.reserve(int(columns));
    for (qint64 c = 0; c < columns; ++c)
        empty << QString(QLatin1String(""));
    content.grid.reserve(int(rows));
    for (qint64 r = 0; r < rows; ++r)
        content.grid << empty;
    for (Run const& run : m_runs) {
        for (qint64 r = run.row; r < run.row + run.rows; ++r) {
            XCsv::Row& row = content.grid[int(r)];
            for (qint64 c = run.column; c < run.column + run.columns; ++c)
                row[int(c)] = run.value;
        }
    }
    content.code = XWorkbookContent::Read;
    return content;
}
