#pragma once

#include "XWorkbookContent.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QBuffer;
class QuaZip;

// Reads the parts of a zipped workbook (.xlsx, .ods), each within
// XWorkbookContent::maxPartBytes: a few kilobytes of zip can unpack to
// gigabytes, so a part is unpacked only up to the limit and refused past it,
// whatever size the archive declares for it.
class XZipArchive
{
public:
    enum class Status { Read, Missing, Encrypted, Oversized, Broken };

    explicit XZipArchive(QString const& fileName);
    ~XZipArchive();
    XZipArchive(XZipArchive const&) = delete;
    XZipArchive& operator=(XZipArchive const&) = delete;

    // Whether the file is a zip archive whose directory could be read and
    // names each part once.
    bool isOpen() const { return m_open; }
    // The whole file as read (empty when it could not be read).
    QByteArray const& bytes() const { return m_bytes; }
    // Why it is not: EmptyFile, Unreadable for a zip archive that is
    // damaged or cut short, NotWorkbook for a file of another kind.
    XWorkbookContent::Code openFailure() const;
    // Unpacks one part (its name compared without regard to case, as the
    // packaging formats want) into *bytes; Broken for a damaged part or a
    // checksum that does not match.
    Status read(QString const& name, QByteArray* bytes);

private:
    // False, and the archive damaged, for a directory that names one part
    // twice (in any case) or cannot be walked to its end.
    bool namesAreUnique();

    QByteArray m_bytes;
    std::unique_ptr<QBuffer> m_buffer;
    std::unique_ptr<QuaZip> m_zip;
    bool m_readable = false;
    bool m_open = false;
    bool m_damaged = false;
};
