#include "XSaveFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

bool XSaveFile::write(QString const& fileName, QByteArray const& bytes, QString* error)
{
    // Renaming over a device, a FIFO or a socket would replace the node
    // itself (run as root, /dev/full was lost that way); only regular files
    // and new names are written.
    const QFileInfo target(fileName);
    if (target.exists() && !target.isFile()) {
        if (error)
            *error = target.isDir() ? QCoreApplication::translate("XSaveFile", "it is a folder")
                                    : QCoreApplication::translate(
                                          "XSaveFile", "it exists and is not a regular file");
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
