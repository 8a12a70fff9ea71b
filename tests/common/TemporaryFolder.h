#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

// A folder of its own for one test function, removed with everything in it
// when the object goes, and the files a test writes into it.
class TemporaryFolder
{
public:
    bool isValid() const { return m_dir.isValid(); }
    QString path() const { return m_dir.path(); }
    QString filePath(QString const& name) const { return m_dir.filePath(name); }

    // Writes the bytes as the whole of the file `name` (replacing one that
    // is there); its path, or empty when it could not be written.
    QString write(QString const& name, QByteArray const& bytes) const
    {
        const QString path = filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(bytes) != bytes.size())
            return QString();
        return path;
    }

private:
    QTemporaryDir m_dir;
};
