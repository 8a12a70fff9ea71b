#pragma once

// A zipped workbook's XML is deflated and guarded by checksums, so mutating
// the archive's bytes seldom reaches the XML parsers. An input that is not
// a zip archive is therefore taken as the workbook's XML parts, separated by
// partSeparator, and packed by the target into a sound archive around them.

#include "FuzzWorkbook.h"

#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

#include <QBuffer>
#include <QList>
#include <QPair>

namespace fuzzworkbook {

// The archive's entries: (name, content).
using Entries = QList<QPair<QString, QByteArray>>;
// The entries of a workbook made of the given XML parts.
using Frame = Entries (*)(QList<QByteArray> const& parts);

constexpr char partSeparator[] = "<!--part-->";

// Packs the entries uncompressed, with their true sizes and checksums. The
// archive is made in memory and written at once: the zip library writes a
// few bytes at a time.
inline void writeArchive(Entries const& entries)
{
    QByteArray archive;
    QBuffer buffer(&archive);
    QuaZip zip(&buffer);
    if (!zip.open(QuaZip::mdCreate))
        abort();
    for (auto const& entry : entries) {
        QuaZipFile part(&zip);
        if (!part.open(QIODevice::WriteOnly, QuaZipNewInfo(entry.first), nullptr, 0, 0, 0))
            abort();
        if (part.write(entry.second) != entry.second.size())
            abort();
        part.close();
        if (part.getZipError() != UNZ_OK)
            abort();
    }
    zip.close();
    if (zip.getZipError() != UNZ_OK)
        abort();
    writeFile(archive);
}

inline QList<QByteArray> splitParts(QByteArray const& bytes)
{
    QList<QByteArray> parts;
    const QByteArray separator(partSeparator);
    int from = 0;
    for (int at; (at = bytes.indexOf(separator, from)) >= 0; from = at + separator.size())
        parts << bytes.mid(from, at - from);
    parts << bytes.mid(from);
    return parts;
}

template <typename Parse>
int testZippedInput(uint8_t const* data, size_t size, Parse parse, Frame frame)
{
    const QByteArray bytes(reinterpret_cast<char const*>(data), int(size));
    if (bytes.startsWith("PK"))
        writeFile(bytes);
    else
        writeArchive(frame(splitParts(bytes)));
    return check(parse(fileName()));
}

} // namespace fuzzworkbook
