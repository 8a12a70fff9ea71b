#pragma once

// Workbooks through a reading function of the workbook reader program, in
// this process so that coverage reaches the cell mapping. The readers read
// files only: each input is written to a temporary file first, under a
// name with the kind's suffix.

#include "XWorkbookContent.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdlib>
#include <memory>

namespace fuzzworkbook {

inline std::unique_ptr<QTemporaryDir>& folder()
{
    static std::unique_ptr<QTemporaryDir> dir;
    return dir;
}

inline bool& folderOnDisk()
{
    static bool onDisk = true;
    return onDisk;
}

inline QString& fileName()
{
    static QString name;
    return name;
}

// The folder is in memory where the system offers one: on a disk, each
// input written over the last one cost a flush to the device (ext4 writes a
// file's data out when it is cut to nothing), a third of the time.
inline void initialize(char const* name)
{
    // Zip entries carry local times: without TZ, the C library reads the
    // time zone file again for every one of them.
    qputenv("TZ", "UTC");
    const QString memory = QStringLiteral("/dev/shm");
    if (QFileInfo(memory).isDir() && QFileInfo(memory).isWritable())
        folder() = std::make_unique<QTemporaryDir>(memory + QStringLiteral("/vireon-fuzz-XXXXXX"));
    folderOnDisk() = !folder() || !folder()->isValid();
    if (folderOnDisk())
        folder() = std::make_unique<QTemporaryDir>();
    if (!folder()->isValid())
        abort();
    fileName() = folder()->filePath(QLatin1String(name));
}

inline void writeFile(QByteArray const& bytes)
{
    // On a disk, a new file for each input rather than the last one cut
    // short, for the same reason.
    if (folderOnDisk())
        QFile::remove(fileName());
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
