#include "FileFormats.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

// The questions a format asks before it is read; none asks any yet.
QList<FormatQuestion> questionsOf(WorkbookKind)
{
    return {};
}

// Whether an entry names a function (this side links none of them, so it
// reads the entry's text).
bool named(char const* function)
{
    return qstrcmp(function, "nullptr") != 0;
}

QList<FileFormat> makeFormats()
{
    QList<FileFormat> formats;
#define VIREON_FILE_FORMAT(id, suffix, parser, writer, rows, columns, saveFilter, sampleName,      \
                           samplePicture, sampleText)                                              \
    formats << FileFormat{WorkbookKind::id,                                                        \
                          QStringLiteral(suffix),                                                  \
                          named(#parser),                                                          \
                          named(#writer),                                                          \
                          rows,                                                                    \
                          columns,                                                                 \
                          saveFilter,                                                              \
                          sampleName,                                                              \
                          samplePicture,                                                           \
                          sampleText,                                                              \
                          questionsOf(WorkbookKind::id)};
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
    return formats;
}

} // namespace

QList<FileFormat> const& fileFormats()
{
    static const QList<FileFormat> formats = makeFormats();
    return formats;
}

FileFormat const* fileFormatOf(QString const& fileName)
{
    for (FileFormat const& format : fileFormats()) {
        if (fileName.endsWith(format.suffix))
            return &format;
    }
    return nullptr;
}

FileFormat const& fileFormat(WorkbookKind kind)
{
    for (FileFormat const& format : fileFormats()) {
        if (format.kind == kind)
            return format;
    }
    static const FileFormat none{
        WorkbookKind::None, QString(), false, false, 0, 0, nullptr, nullptr, nullptr, nullptr, {}};
    return none;
}

WorkbookKind workbookKind(QString const& fileName)
{
    FileFormat const* format = fileFormatOf(fileName);
    return format ? format->kind : WorkbookKind::None;
}

QString workbookSuffix(WorkbookKind kind)
{
    return fileFormat(kind).suffix;
}

bool isWorkbook(WorkbookKind kind)
{
    return fileFormat(kind).readerProgram;
}

QString readablePatterns()
{
    QStringList patterns;
    for (FileFormat const& format : fileFormats())
        patterns << QLatin1Char('*') + format.suffix;
    return patterns.join(QLatin1Char(' '));
}

QString readableSuffixes()
{
    QStringList suffixes;
    for (FileFormat const& format : fileFormats())
        suffixes << format.suffix;
    const QString last = suffixes.takeLast();
    if (suffixes.isEmpty())
        return last;
    return QCoreApplication::translate("XSpreadsheet", "%1 or %2")
        .arg(suffixes.join(QStringLiteral(", ")), last);
}
