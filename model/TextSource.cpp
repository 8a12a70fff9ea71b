#include "TextSource.h"

#include <QFile>
#include <QTextStream>

QString readTextSource(QString const& source)
{
    if (source.size() >= 512 || source.contains(QLatin1Char('\n')) || !QFile::exists(source))
        return source;
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    // The stream drops a byte-order mark and decodes with the default codec.
    QTextStream in(&file);
    return in.readAll();
}
