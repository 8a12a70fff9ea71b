#include "TextFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextCodec>

#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// 50,000 accessions x 100 allele columns (about 20 MB of text) read in a few
// seconds at about 300 MB of memory; 256 MiB of text stays within a few
// gigabytes, which a desktop machine has.
constexpr qint64 limitBytes = qint64(256) * 1024 * 1024;

QString tr(char const* text)
{
    return QCoreApplication::translate("TextFile", text);
}

QString megabytes(qint64 bytes)
{
    return QString::number(double(bytes) / (1024.0 * 1024.0), 'f', 1);
}

} // namespace

qint64 TextFile::sizeLimit()
{
    return limitBytes;
}

QString TextFile::windows1252Note()
{
    return tr("This file is not UTF-8; it was read as Windows-1252.");
}

namespace {

QString problemOf(struct stat const& info)
{
    if (S_ISDIR(info.st_mode))
        return tr("is a folder");
    if (!S_ISREG(info.st_mode))
        return tr("not a regular file");
    if (qint64(info.st_size) > limitBytes)
        return tr("is too large: %1 MB, and Vireon reads files of up to %2 MB")
            .arg(megabytes(info.st_size), megabytes(limitBytes));
    return QString();
}

} // namespace

QString TextFile::problem(QString const& path)
{
    struct stat info;
    const QByteArray native = QFile::encodeName(path);
    if (path.isEmpty() || ::stat(native.constData(), &info) != 0)
        return tr("no such file");
    if (::access(native.constData(), R_OK) != 0)
        return tr("cannot be read");
    return problemOf(info);
}

QString TextFile::decode(QByteArray const& bytes, Encoding* encoding)
{
    QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec* codec = QTextCodec::codecForUtfText(bytes, utf8);
    Encoding found = Encoding::Utf8;
    if (codec != utf8) {
        found = codec->mibEnum() == 106 ? Encoding::Utf8 : Encoding::Utf16;
        if (encoding)
            *encoding = found;
        // The byte-order mark itself is dropped by the codec.
        return codec->toUnicode(bytes);
    }
    QTextCodec::ConverterState state;
    QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        found = Encoding::Windows1252;
        text = QTextCodec::codecForName("Windows-1252")->toUnicode(bytes);
    } else if (text.startsWith(QChar(0xFEFF))) {
        text.remove(0, 1);
    }
    if (encoding)
        *encoding = found;
    return text;
}

bool TextFile::read(QString const& path, QString* text, QString* error, Encoding* encoding)
{
    const QString why = problem(path);
    if (!why.isEmpty()) {
        if (error)
            *error = why;
        return false;
    }
    // Opened without blocking and checked again on the open file: the path
    // may have become a FIFO in between, whose open() would wait for a writer.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat info;
    if (fd < 0 || ::fstat(fd, &info) != 0 || !problemOf(info).isEmpty()) {
        if (error)
            *error = fd < 0 ? tr("cannot be read") : problemOf(info);
        if (error && error->isEmpty())
            *error = tr("cannot be read");
        if (fd >= 0)
            ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        if (error)
            *error = tr("cannot be read");
        return false;
    }
    // A file that grows while it is read is cut at the limit plus one byte.
    try {
        const QByteArray bytes = file.read(limitBytes + 1);
        if (bytes.size() > limitBytes) {
            if (error)
                *error = tr("is too large: more than %1 MB, and Vireon reads files of up to %1 MB")
                             .arg(megabytes(limitBytes));
            return false;
        }
        if (file.error() != QFileDevice::NoError) {
            if (error)
                *error = tr("cannot be read");
            return false;
        }
        *text = decode(bytes, encoding);
    } catch (std::bad_alloc const&) {
        if (error)
            *error = tr("is too large to read in the memory available");
        return false;
    }
    return true;
}
