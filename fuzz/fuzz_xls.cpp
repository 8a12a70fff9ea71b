// .xls workbooks through the reading function of the workbook reader
// program, in this process so that coverage reaches the workbook library
// and the cell mapping. It reads files only: each input is written to a
// temporary file first.

#include "XWorkbookContent.h"
#include "XWorkbookParser.h"

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

    const XWorkbookContent content = XWorkbookParser::parse(fileName);
    if (content.code != XWorkbookContent::Read) {
        if (!content.grid.isEmpty())
            abort();
        return 0;
    }
    // A workbook is read as a full rectangle of at least one cell.
    XCsv::Grid const& grid = content.grid;
    if (grid.isEmpty() || grid.first().isEmpty())
        abort();
    for (XCsv::Row const& row : grid) {
        if (row.size() != grid.first().size())
            abort();
    }
    // What the reader program sends arrives unchanged.
    XWorkbookContent received;
    if (!XWorkbookContent::decode(content.encode(), received) || received.grid != grid)
        abort();
    return 0;
}
