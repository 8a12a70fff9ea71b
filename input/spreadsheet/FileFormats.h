#pragma once

#include <QList>
#include <QString>

// The table file formats Vireon reads and writes, each one entry of
// FileFormats.def: the open and save dialogs' filters, the wrong-suffix
// message, XSpreadsheet's readers and writers, the reader program's
// parsers and the Sample dialog are all built from that list.

// The formats, told by the end of the file name (compared case-sensitively,
// so DATA.XLS is none of them).
enum class WorkbookKind {
    None,
#define VIREON_FILE_FORMAT(id, ...) id,
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
};

// A question a format asks before its file is read (a genotype format's
// missing-data code, say), meant for the wizard to show as a field on the
// selection page and for vireon-cli to offer as --option, the answers
// reaching the format's reader by option name. No format asks one yet.
struct FormatQuestion
{
    QString option;
    QString label;
    QString help;
    QString defaultValue;
};

struct FileFormat
{
    WorkbookKind kind;
    QString suffix;
    // Read by the workbook reader program rather than in process.
    bool readerProgram;
    // Written by a writer of its own rather than as text.
    bool writer;
    // What one worksheet holds; 0: any number.
    int maxRows;
    int maxColumns;
    // Source texts, translated where they are shown; null when absent.
    char const* saveFilter;
    char const* sampleName;
    char const* samplePicture;
    char const* sampleText;
    QList<FormatQuestion> questions;
};

// Every format, in the order of FileFormats.def.
QList<FileFormat> const& fileFormats();
// The format of a file name; null when no suffix matches.
FileFormat const* fileFormatOf(QString const& fileName);
FileFormat const& fileFormat(WorkbookKind kind);

WorkbookKind workbookKind(QString const& fileName);
// ".csv", ".xls", ".xlsx" or ".ods"; empty for None.
QString workbookSuffix(WorkbookKind kind);
// Whether the kind is a workbook, read by the workbook reader program.
bool isWorkbook(WorkbookKind kind);
// Every format as a file dialog's patterns: "*.csv *.xls *.xlsx *.ods".
QString readablePatterns();
// The suffixes as a sentence names them: ".csv, .xls, .xlsx or .ods".
QString readableSuffixes();

// What one worksheet of the format holds, for the readers and writers alike.
constexpr int maxRowsOf(WorkbookKind kind)
{
    switch (kind) {
#define VIREON_FILE_FORMAT(id, suffix, parser, writer, rows, ...)                                  \
    case WorkbookKind::id:                                                                         \
        return rows;
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
    case WorkbookKind::None:
        break;
    }
    return 0;
}

constexpr int maxColumnsOf(WorkbookKind kind)
{
    switch (kind) {
#define VIREON_FILE_FORMAT(id, suffix, parser, writer, rows, columns, ...)                         \
    case WorkbookKind::id:                                                                         \
        return columns;
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
    case WorkbookKind::None:
        break;
    }
    return 0;
}
