#pragma once

#include <QString>

// Looks at the directory of an OLE2 compound file (the container of an .xls
// workbook) before FreeXL reads it. FreeXL trusts the name length of every
// directory entry and converts that many bytes from a 128-byte entry, so a
// damaged entry makes it read far past its buffer. Such a file is refused
// here instead, and so is a stream that claims to be larger than the file,
// which FreeXL would otherwise follow round a looping chain for minutes.
class XCompoundFileCheck
{
public:
    // False when a directory entry of the compound file declares a name
    // longer than the 64 bytes an entry holds or a stream larger than the
    // file, or when its directory chain leaves the file. Files that are not compound files pass:
    // FreeXL rejects them itself.
    static bool directoryIsSound(QString const& fileName);
};
