#include "XZipArchive.h"

#include "XWorkbookContent.h"

#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>

#include <new>

XZipArchive::XZipArchive(QString const& fileName) : m_zip(new QuaZip(fileName))
{
    m_open = m_zip->open(QuaZip::mdUnzip);
}

XZipArchive::~XZipArchive() = default;

XZipArchive::Status XZipArchive::read(QString const& name, QByteArray* bytes)
{
    bytes->clear();
    if (!m_open)
        return Status::Broken;
    if (!m_zip->setCurrentFile(name, QuaZip::csInsensitive))
        return m_zip->getZipError() == UNZ_OK ? Status::Missing : Status::Broken;
    QuaZipFileInfo64 info;
    if (!m_zip->getCurrentFileInfo(&info))
        return Status::Broken;
    if (info.isEncrypted())
        return Status::Encrypted;
    QuaZipFile part(m_zip.get());
    if (!part.open(QIODevice::ReadOnly))
        return Status::Broken;
    // The declared size is only a hint: the limit applies to what unpacks.
    const qint64 limit = XWorkbookContent::maxPartBytes;
    try {
        bytes->reserve(int(qBound<qint64>(0, qint64(info.uncompressedSize), limit)));
        char chunk[65536];
        for (;;) {
            const qint64 got = part.read(chunk, sizeof chunk);
            if (got < 0) {
                bytes->clear();
                return Status::Broken;
            }
            if (got == 0)
                break;
            if (bytes->size() + got > limit) {
                bytes->clear();
                bytes->squeeze();
                return Status::Oversized;
            }
            bytes->append(chunk, int(got));
        }
    } catch (std::bad_alloc const&) {
        bytes->clear();
        return Status::Oversized;
    }
    // Closing checks the unpacked bytes against the archive's checksum.
    part.close();
    if (part.getZipError() != UNZ_OK) {
        bytes->clear();
        return Status::Broken;
    }
    return Status::Read;
}
