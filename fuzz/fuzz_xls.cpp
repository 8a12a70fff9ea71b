// .xls workbooks through the spreadsheet layer, which reads files only: each
// input is written to a temporary file first.

#include "XCsv.h"
#include "XSpreadsheet.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<QTemporaryDir> folder;
QString fileName;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid())
        abort();
    fileName = folder->filePath(QStringLiteral("input.xls"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    {
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            abort();
        if (file.write(reinterpret_cast<char const*>(data), qint64(size)) != qint64(size))
            abort();
    }

    QString error;
    std::unique_ptr<XCsv> table(XSpreadsheet::read(fileName, &error));
    if (!table) {
        if (error.isEmpty())
            abort();
        return 0;
    }
    // A workbook is read as a full rectangle of at least one cell.
    if (table->rows() < 1 || table->columns() < 1)
        abort();
    for (XCsv::Row const& row : table->data()) {
        if (row.size() != table->columns())
            abort();
    }
    (void)table->toString();
    return 0;
}
