#include "XXlsxWriter.h"

#include "FileFormats.h"
#include "XCellValue.h"
#include "XCsv.h"
#include "XSaveFile.h"
#include "XWorkbookContent.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

namespace {

bool failed(QString* error, QString const& reason)
{
    if (error)
        *error = reason;
    return false;
}

// The texts of this file, translated in the context of XSpreadsheet.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XSpreadsheet)
};

// Writes the cells; the first error the library gives, or LXW_NO_ERROR.
lxw_error writeCells(lxw_worksheet* sheet, XCsv const& table)
{
    for (int r = 0; r < table.rows(); ++r) {
        XCsv::Row const& row = table.at(r);
        // Rows shorter than the table are written as far as they go.
        const int columns = std::min(table.columns(), int(row.size()));
        for (int c = 0; c < columns; ++c) {
            QVariant const& value = row.at(c);
            bool number = false;
            const int n = XCellValue::toInt(value, &number);
            lxw_error status = LXW_NO_ERROR;
            if (number) {
                status = worksheet_write_number(sheet, lxw_row_t(r), lxw_col_t(c), n, nullptr);
            } else {
                const QByteArray text = value.toString().toUtf8();
                if (!text.isEmpty())
                    status = worksheet_write_string(sheet, lxw_row_t(r), lxw_col_t(c),
                                                    text.constData(), nullptr);
            }
            if (status != LXW_NO_ERROR)
                return status;
        }
    }
    return LXW_NO_ERROR;
}

} // namespace

bool XXlsxWriter::write(XCsv const& table, QString const& fileName, QString* error)
{
    if (table.rows() > maxRowsOf(WorkbookKind::Xlsx) ||
        table.columns() > maxColumnsOf(WorkbookKind::Xlsx))
        return failed(error, Msg::tr("the table does not fit in an .xlsx worksheet"));
    // The library writes only to a named file: it is put together in a
    // folder of its own and then saved over the target in one step.
    QTemporaryDir folder;
    if (!folder.isValid())
        return failed(error, Msg::tr("the workbook could not be put together"));
    const QString built = folder.filePath(QStringLiteral("table.xlsx"));
    const QByteArray builtName = QFile::encodeName(built);
    QByteArray tmpdir = QFile::encodeName(folder.path());
    lxw_workbook_options options = {};
    options.tmpdir = tmpdir.data();
    lxw_workbook* book = workbook_new_opt(builtName.constData(), &options);
    if (!book)
        return failed(error, Msg::tr("the workbook could not be put together"));
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    const lxw_error written = sheet ? writeCells(sheet, table) : LXW_ERROR_MEMORY_MALLOC_FAILED;
    // Closing writes the file and frees the workbook, whatever happened.
    const lxw_error closed = workbook_close(book);
    if (written != LXW_NO_ERROR || closed != LXW_NO_ERROR)
        return failed(error, Msg::tr("the workbook could not be put together: %1")
                                 .arg(QString::fromUtf8(
                                     lxw_strerror(written != LXW_NO_ERROR ? written : closed))));
    QFile file(built);
    if (!file.open(QIODevice::ReadOnly))
        return failed(error, Msg::tr("the workbook could not be put together"));
    return XSaveFile::write(fileName, file.readAll(), error);
}
