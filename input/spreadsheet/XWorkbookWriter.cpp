// The library headers come before Qt's, whose keyword macros they predate.
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-output.h>

#include "XWorkbookWriter.h"

#include "XBiffWriter.h"
#include "XCellValue.h"
#include "XCsv.h"
#include "XSaveFile.h"

#include <QCoreApplication>

namespace {

bool failed(QString* error, QString const& reason)
{
    if (error)
        *error = reason;
    return false;
}

} // namespace

bool XWorkbookWriter::write(XCsv const& table, QString const& fileName, QString* error)
{
    XBiffWriter workbook(3);
    for (int r = 0; r < table.rows(); ++r) {
        XCsv::Row const& row = table.at(r);
        // Rows shorter than the table are written as far as they go.
        const int columns = std::min(table.columns(), int(row.size()));
        for (int c = 0; c < columns; ++c) {
            QVariant const& value = row.at(c);
            // Cells that read as whole numbers ("007" too) are written as numbers.
            bool number = false;
            const int n = XCellValue::toInt(value, &number);
            const bool ok =
                number ? workbook.setNumber(r, c, n) : workbook.setText(r, c, value.toString());
            if (!ok)
                return failed(error,
                              QCoreApplication::translate(
                                  "XSpreadsheet", "the table does not fit in an .xls worksheet"));
        }
    }
    const QByteArray document = compoundDocument(workbook.workbook());
    if (document.isEmpty())
        return failed(error, QCoreApplication::translate("XSpreadsheet",
                                                         "the workbook could not be put together"));
    return XSaveFile::write(fileName, document, error);
}

QByteArray XWorkbookWriter::compoundDocument(QByteArray const& workbookStream)
{
    GsfOutput* memory = gsf_output_memory_new();
    GsfOutfile* ole = gsf_outfile_msole_new(memory);
    GsfOutput* stream = gsf_outfile_new_child(ole, "Workbook", FALSE);
    bool ok =
        stream && gsf_output_write(stream, gsf_off_t(workbookStream.size()),
                                   reinterpret_cast<guint8 const*>(workbookStream.constData()));
    if (stream) {
        ok = gsf_output_close(stream) && ok;
        g_object_unref(stream);
    }
    ok = gsf_output_close(GSF_OUTPUT(ole)) && ok;
    g_object_unref(ole);
    QByteArray bytes;
    if (ok) {
        const gsf_off_t size = gsf_output_size(memory);
        bytes = QByteArray(
            reinterpret_cast<char const*>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory))),
            int(size));
    }
    // The compound document closes its sink itself when it succeeds.
    if (!gsf_output_is_closed(memory))
        gsf_output_close(memory);
    g_object_unref(memory);
    return bytes;
}
