#pragma once

#include <QString>

// Reads a file that the user chose as text, never as a name-or-text source.
// Only regular files are read (a FIFO or a device could block or never end),
// only up to sizeLimit() bytes, and only when the tables the text will become
// fit in memory (TableMemory estimates them from the bytes first).
//
// Encodings: UTF-8 is read with or without a byte-order mark, UTF-16 and
// UTF-32 with one. Without a mark, UTF-16 and UTF-32 (either byte order) are
// told by where their NUL bytes stand, since table text is mostly ASCII
// letters and digits, and read with a note; a file with NUL bytes in no
// such pattern is not text and is refused. A file that is not valid UTF-8 is
// read as Windows-1252, the encoding of old spreadsheet exports in Europe.
//
// Line ends: a text without a single line feed whose lines end in carriage
// returns alone (old Mac files) has each carriage return read as a line end,
// so its lines stay lines. Any other text keeps its carriage returns for the
// readers, which take "\n" and "\r\n" as line ends.
class TextFile
{
public:
    enum class Encoding {
        Utf8,
        Utf16,
        Utf32,
        Windows1252,
        Utf16LeUnmarked,
        Utf16BeUnmarked,
        Utf32LeUnmarked,
        Utf32BeUnmarked
    };

    // False with a short reason in *error ("no such file", "is a folder",
    // "not a regular file", "cannot be read", the size and the limit, or
    // why the bytes are no text).
    static bool read(QString const& path, QString* text, QString* error,
                     Encoding* encoding = nullptr);
    // Decodes bytes by the rules above; false, with the reason in *error,
    // for bytes that are no text.
    static bool decode(QByteArray const& bytes, QString* text, QString* error = nullptr,
                       Encoding* encoding = nullptr);
    // Why a path cannot be read as a file, or an empty string when it can be
    // opened: it exists, is a regular file and is readable.
    static QString problem(QString const& path);

    static qint64 sizeLimit();
    // The words the window shows under a table read as Windows-1252.
    static QString windows1252Note();
    // What the user is told about a file read in that encoding: empty for
    // UTF-8 and for UTF-16 and UTF-32 with a byte-order mark.
    static QString encodingNote(Encoding encoding);
};
