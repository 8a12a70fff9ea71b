#include "XZipArchive.h"

#include "XWorkbookContent.h"

#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>

#include <QBuffer>
#include <QFile>
#include <QSet>

#include <new>

namespace {

// A damaged directory points past the end of the archive; the zip library
// then sees a failed seek, as from a file, without a warning on the
// terminal for each.
class ArchiveBytes : public QBuffer
{
public:
    explicit ArchiveBytes(QByteArray* bytes) : QBuffer(bytes) {}
    bool seek(qint64 pos) override { return pos >= 0 && pos <= size() && QBuffer::seek(pos); }
};

} // namespace

XZipArchive::XZipArchive(QString const& fileName)
{
    // The zip library reads its directory a few bytes at a time, seeking
    // between them: from a file, a damaged directory full of tiny extra
    // fields cost a system call per few bytes (seconds for a file of
    // megabytes). From memory the same reading is a copy.
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    try {
        m_bytes = file.readAll();
    } catch (std::bad_alloc const&) {
        return;
    }
    m_readable = true;
    m_buffer = std::make_unique<ArchiveBytes>(&m_bytes);
    m_zip = std::make_unique<QuaZip>(m_buffer.get());
    m_open = m_zip->open(QuaZip::mdUnzip) && namesAreUnique();
}

bool XZipArchive::namesAreUnique()
{
    // Part names are compared without regard to case, so two parts whose
    // names differ only in case are one name twice. Which of them a reader
    // takes is up to the reader; a file that holds both is damaged, and
    // taking either one in silence could show a table that is not the
    // file's.
    QSet<QString> seen;
    for (bool more = m_zip->goToFirstFile(); more; more = m_zip->goToNextFile()) {
        const QString name = m_zip->getCurrentFileName().toCaseFolded();
        if (seen.contains(name)) {
            m_damaged = true;
            return false;
        }
        seen.insert(name);
    }
    // A directory that cannot be walked to its end is damaged too; an empty
    // one ends at once.
    const int error = m_zip->getZipError();
    m_damaged = error != UNZ_OK && error != UNZ_END_OF_LIST_OF_FILE;
    return !m_damaged;
}

XWorkbookContent::Code XZipArchive::openFailure() const
{
    if (!m_readable)
        return XWorkbookContent::Unreadable;
    if (m_bytes.isEmpty())
        return XWorkbookContent::EmptyFile;
    if (m_damaged)
        return XWorkbookContent::Unreadable;
    // Every zip archive starts with a local header or, when empty, with the
    // end of its directory.
    return m_bytes.startsWith("PK") ? XWorkbookContent::Unreadable : XWorkbookContent::NotWorkbook;
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
    // A part that says it is too large is refused without unpacking a byte;
    // one that lies about its size is stopped at the limit below.
    const qint64 limit = XWorkbookContent::maxPartBytes;
    if (info.uncompressedSize > quint64(limit))
        return Status::Oversized;
    QuaZipFile part(m_zip.get());
    if (!part.open(QIODevice::ReadOnly))
        return Status::Broken;
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
