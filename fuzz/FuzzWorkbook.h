#pragma once

// Workbooks through a reading function of the workbook reader program, in
// this process so that coverage reaches the cell mapping. The readers read
// files only: each input is written to a temporary file first, under a
// name with the kind's suffix.

#include "XWorkbookContent.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>

namespace fuzzworkbook {

inline std::unique_ptr<QTemporaryDir>& folder()
{
    static std::unique_ptr<QTemporaryDir> dir;
    return dir;
}

inline QString& fileName()
{
    static QString name;
    return name;
}

inline void initialize(char const* name)
{
    folder() = std::make_unique<QTemporaryDir>();
    if (!folder()->isValid())
        abort();
    fileName() = folder()->filePath(QLatin1String(name));
}

inline void writeFile(QByteArray const& bytes)
{
    QFile file(fileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    if (file.write(bytes) != bytes.size())
        abort();
}

// What every reading must come to: a failure without cells, or a full
// rectangle that crosses to the other process unchanged.
inline int check(XWorkbookContent const& content)
{
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

template <typename Parse> int testOneInput(uint8_t const* data, size_t size, Parse parse)
{
    writeFile(QByteArray(reinterpret_cast<char const*>(data), int(size)));
    return check(parse(fileName()));
}

} // namespace fuzzworkbook
