#include "XSaveFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Renaming over a device, a FIFO or a socket would replace the node itself
// (run as root, /dev/full was lost that way); only regular files and new
// names are written.
QString nodeProblem(QFileInfo const& target)
{
    if (!target.exists() || target.isFile())
        return QString();
    return target.isDir()
               ? QCoreApplication::translate("XSaveFile", "it is a folder")
               : QCoreApplication::translate("XSaveFile", "it exists and is not a regular file");
}

} // namespace

QString XSaveFile::targetProblem(QString const& fileName)
{
    const QFileInfo target(fileName);
    const QString node = nodeProblem(target);
    if (!node.isEmpty())
        return node;
    // The file is written beside its target and renamed over it, so the
    // folder is what must be writable, not the file.
    const QByteArray folder = QFile::encodeName(target.absolutePath());
    struct stat info;
    if (::stat(folder.constData(), &info) != 0)
        return qt_error_string(errno);
    if (!S_ISDIR(info.st_mode))
        return qt_error_string(ENOTDIR);
    if (::access(folder.constData(), W_OK | X_OK) != 0)
        return qt_error_string(errno);
    // A file that may not be written is not replaced either.
    if (target.exists() && ::access(QFile::encodeName(fileName).constData(), W_OK) != 0)
        return qt_error_string(errno);
    return QString();
}

bool XSaveFile::write(QString const& fileName, QByteArray const& bytes, QString* error)
{
    const QString node = nodeProblem(QFileInfo(fileName));
    if (!node.isEmpty()) {
        if (error)
            *error = node;
        return false;
    }
    QSaveFile file(fileName);
    // Unbuffered, so that a short write (a full disk) shows here, with the
    // system's reason, and not as a commit that succeeds.
    bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    for (qint64 done = 0; written && done < bytes.size();) {
        const qint64 n = file.write(bytes.constData() + done, bytes.size() - done);
        written = n > 0;
        done += n;
    }
    written = written && file.commit();
    if (!written && error)
        *error = file.errorString();
    return written;
}

bool XSaveFile::writeText(QString const& fileName, QString const& text, QString* error)
{
    return write(fileName, text.toUtf8(), error);
}
