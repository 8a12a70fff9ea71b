// The library headers come before Qt's, whose keyword macros they predate.
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-output.h>

#include "XWorkbookWriter.h"

#include "StrictInt.h"
#include "XBiffWriter.h"
#include "XCsv.h"

#include <QSaveFile>

namespace {

// Whether the cell is written as a number: ints, and any other value whose
// text is a whole number in the int range ("007" becomes 7).
bool cellNumber(QVariant const& value, int* number)
{
    if (value.userType() == QMetaType::Int) {
        *number = value.toInt();
        return true;
    }
    if (!value.isValid())
        return false;
    bool ok = false;
    *number = strictToInt(value.toString(), &ok);
    return ok;
}

} // namespace

bool XWorkbookWriter::write(XCsv const& table, QString const& fileName)
{
    XBiffWriter workbook(3);
    for (int r = 0; r < table.rows(); ++r) {
        XCsv::Row const& row = table.at(r);
        // Rows shorter than the table are written as far as they go.
        const int columns = std::min(table.columns(), int(row.size()));
        for (int c = 0; c < columns; ++c) {
            QVariant const& value = row.at(c);
            int number = 0;
            const bool ok = cellNumber(value, &number) ? workbook.setNumber(r, c, number)
                                                       : workbook.setText(r, c, value.toString());
            if (!ok)
                return false;
        }
    }
    const QByteArray document = compoundDocument(workbook.workbook());
    if (document.isEmpty())
        return false;
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(document) != document.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
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
