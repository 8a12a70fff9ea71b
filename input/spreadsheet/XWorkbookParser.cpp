#include "XWorkbookParser.h"

#include "FileFormats.h"
#include "XCompoundFileCheck.h"
#include "XSheetCells.h"

#include <QFile>

#include <freexl.h>

namespace {

// Closes the workbook on every path; FreeXL wants a close even after a
// failed open.
class Workbook
{
public:
    Workbook(Workbook const&) = delete;
    Workbook& operator=(Workbook const&) = delete;
    explicit Workbook(QString const& fileName)
    {
        m_status = freexl_open(QFile::encodeName(fileName).constData(), &m_handle);
    }
    ~Workbook()
    {
        if (m_handle)
            freexl_close(m_handle);
    }
    bool isOpen() const { return m_status == FREEXL_OK && m_handle; }
    void const* handle() const { return m_handle; }

    unsigned info(unsigned short what) const
    {
        unsigned value = FREEXL_UNKNOWN;
        if (freexl_get_info(m_handle, what, &value) != FREEXL_OK)
            return FREEXL_UNKNOWN;
        return value;
    }

private:
    void const* m_handle = nullptr;
    int m_status = FREEXL_UNKNOWN;
};

// A cell as the table holds it, or an invalid variant when the cell is
// neither text nor a whole number.
QVariant cellValue(FreeXL_CellValue const& cell)
{
    switch (cell.type) {
    case FREEXL_CELL_NULL:
        return QString(QLatin1String(""));
    case FREEXL_CELL_INT:
        return cell.value.int_value;
    case FREEXL_CELL_DOUBLE:
        return XSheetCells::numberCell(cell.value.double_value);
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
        return QString::fromUtf8(cell.value.text_value);
    default:
        return QVariant();
    }
}

// The used extent of the active worksheet: up to the last row and column
// that hold a cell. A sheet may declare more (formatted blank cells, or
// damage: a few bytes can declare millions of empty cells). False when the
// declared size is past the largest worksheet of the format, which only a
// damaged file claims.
bool usedExtent(void const* handle, unsigned& rows, unsigned short& columns, qint64& held)
{
    unsigned declaredRows = 0;
    unsigned short declaredColumns = 0;
    if (freexl_worksheet_dimensions(handle, &declaredRows, &declaredColumns) != FREEXL_OK ||
        declaredRows > unsigned(maxRowsOf(WorkbookKind::Xls)) ||
        declaredColumns > maxColumnsOf(WorkbookKind::Xls))
        return false;
    rows = 0;
    columns = 0;
    held = 0;
    for (unsigned r = 0; r < declaredRows; ++r) {
        for (unsigned short c = 0; c < declaredColumns; ++c) {
            FreeXL_CellValue cell;
            if (freexl_get_cell_value(handle, r, c, &cell) == FREEXL_OK &&
                cell.type == FREEXL_CELL_NULL)
                continue;
            ++held;
            rows = r + 1;
            columns = qMax<unsigned short>(columns, c + 1);
        }
    }
    return true;
}

} // namespace

XWorkbookContent XWorkbookParser::parse(QString const& fileName)
{
    XWorkbookContent content;
    if (!XCompoundFileCheck::directoryIsSound(fileName))
        return content;
    Workbook book(fileName);
    if (!book.isOpen())
        return content;
    if (book.info(FREEXL_BIFF_PASSWORD) == FREEXL_BIFF_OBFUSCATED) {
        content.code = XWorkbookContent::Encrypted;
        return content;
    }
    if (book.info(FREEXL_BIFF_SHEET_COUNT) == 0 ||
        freexl_select_active_worksheet(book.handle(), 0) != FREEXL_OK) {
        content.code = XWorkbookContent::NoWorksheet;
        return content;
    }
    unsigned rows = 0;
    unsigned short columns = 0;
    qint64 held = 0;
    if (!usedExtent(book.handle(), rows, columns, held))
        return content;
    if (XSheetCells::isSparse(rows, columns, held)) {
        content.code = XWorkbookContent::SparseSheet;
        content.row = qint32(rows);
        content.column = qint32(columns);
        return content;
    }
    if (rows == 0 || columns == 0) {
        content.code = XWorkbookContent::EmptyWorksheet;
        return content;
    }
    content.grid.reserve(int(rows));
    for (unsigned r = 0; r < rows; ++r) {
        XCsv::Row row;
        row.reserve(columns);
        for (unsigned short c = 0; c < columns; ++c) {
            FreeXL_CellValue cell;
            QVariant value;
            if (freexl_get_cell_value(book.handle(), r, c, &cell) == FREEXL_OK)
                value = cellValue(cell);
            if (!value.isValid()) {
                content = XWorkbookContent();
                content.code = XWorkbookContent::BadCell;
                content.row = qint32(r);
                content.column = qint32(c);
                return content;
            }
            row << value;
        }
        content.grid << row;
    }
    content.code = XWorkbookContent::Read;
    return content;
}
