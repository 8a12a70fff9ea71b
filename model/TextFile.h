#pragma once

#include <QString>

// Reads a file that the user chose as text, never as a name-or-text source.
// Only regular files are read (a FIFO or a device could block or never end),
// and only up to sizeLimit() bytes: every table cell costs tens of bytes in
// memory, so a larger file would exhaust it. UTF-8 is read with or without a
// byte-order mark, UTF-16 with one; a file that is not valid UTF-8 is read as
// Windows-1252, the encoding of old spreadsheet exports in Europe.
class TextFile
{
public:
    enum class Encoding { Utf8, Utf16, Windows1252 };

    // False with a short reason in *error ("no such file", "is a folder",
    // "not a regular file", "cannot be read", or the size and the limit).
    static bool read(QString const& path, QString* text, QString* error,
                     Encoding* encoding = nullptr);
    // Decodes bytes by the rules above.
    static QString decode(QByteArray const& bytes, Encoding* encoding = nullptr);
    // Why a path cannot be read as a file, or an empty string when it can be
    // opened: it exists, is a regular file and is readable.
    static QString problem(QString const& path);

    static qint64 sizeLimit();
    // The words the window shows under a table read as Windows-1252.
    static QString windows1252Note();
};
