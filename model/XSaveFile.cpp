#include "XSaveFile.h"

#include <QSaveFile>

bool XSaveFile::write(QString const& fileName, QByteArray const& bytes, QString* error)
{
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
