#include "XWorkbookReader.h"

#include "XCompoundFileCheck.h"
#include "XCsv.h"

#include <QCoreApplication>
#include <QFile>

#include <freexl.h>

#include <climits>
#include <cmath>

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
    case FREEXL_CELL_DOUBLE: {
        const double v = cell.value.double_value;
        if (std::isfinite(v) && std::floor(v) == v && v >= double(INT_MIN) && v <= double(INT_MAX))
            return int(v);
        return QVariant();
    }
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
        return QString::fromUtf8(cell.value.text_value);
    default:
        return QVariant();
    }
}

} // namespace

QString XWorkbookReader::parseErrorMessage(int row, int column)
{
    return QCoreApplication::translate(
               "XCsvSelectionPage",
               "Error while parsing the .xls file: cell at row %1 and column %2 does not appear to "
               "be a valid string or number.")
        .arg(row)
        .arg(column);
}

QString XWorkbookReader::unreadableMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage",
        "Error while parsing the .xls file: the file cannot be read as a workbook.");
}

QString XWorkbookReader::encryptedMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage",
        "Error while parsing the .xls file: the workbook is protected by a password.");
}

QString XWorkbookReader::noWorksheetMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage", "Error while parsing the .xls file: the workbook has no worksheet.");
}

QString XWorkbookReader::emptyWorksheetMessage()
{
    return QCoreApplication::translate(
        "XCsvSelectionPage", "Error while parsing the .xls file: the first worksheet is empty.");
}

XCsv* XWorkbookReader::read(QString const& fileName, QString* error)
{
    auto fail = [error](QString const& message) -> XCsv* {
        if (error)
            *error = message;
        return nullptr;
    };

    if (!XCompoundFileCheck::directoryIsSound(fileName))
        return fail(unreadableMessage());
    Workbook book(fileName);
    if (!book.isOpen())
        return fail(unreadableMessage());
    if (book.info(FREEXL_BIFF_PASSWORD) == FREEXL_BIFF_OBFUSCATED)
        return fail(encryptedMessage());
    if (book.info(FREEXL_BIFF_SHEET_COUNT) == 0)
        return fail(noWorksheetMessage());
    if (freexl_select_active_worksheet(book.handle(), 0) != FREEXL_OK)
        return fail(noWorksheetMessage());

    unsigned rows = 0;
    unsigned short columns = 0;
    if (freexl_worksheet_dimensions(book.handle(), &rows, &columns) != FREEXL_OK)
        return fail(unreadableMessage());
    if (rows == 0 || columns == 0)
        return fail(emptyWorksheetMessage());

    XCsv::Grid grid;
    grid.reserve(int(rows));
    for (unsigned r = 0; r < rows; ++r) {
        XCsv::Row row;
        row.reserve(columns);
        for (unsigned short c = 0; c < columns; ++c) {
            FreeXL_CellValue cell;
            if (freexl_get_cell_value(book.handle(), r, c, &cell) != FREEXL_OK)
                return fail(parseErrorMessage(int(r), int(c)));
            QVariant value = cellValue(cell);
            if (!value.isValid())
                return fail(parseErrorMessage(int(r), int(c)));
            row << value;
        }
        grid << row;
    }
    return new XCsv(grid, nullptr);
}
