#include "XSpreadsheet.h"

#include "FileFormats.h"
#include "TextFile.h"
#include "XCsv.h"
#include "XSaveFile.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"
#include "XXlsxWriter.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

using Writer = bool (*)(XCsv const&, QString const&, QString*);

// The writer of a format; null for one written as text.
Writer writerOf(WorkbookKind kind)
{
    switch (kind) {
#define VIREON_FILE_FORMAT(id, suffix, parser, writer, ...)                                        \
    case WorkbookKind::id:                                                                         \
        return writer;
#include "FileFormats.def"
#undef VIREON_FILE_FORMAT
    case WorkbookKind::None:
        break;
    }
    return nullptr;
}

// A text file's table, with what the user should know about how it was read.
XCsv* readText(QString const& fileName, QString* error, QStringList* notes)
{
    QString problem;
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    if (TextFile::read(fileName, &text, &problem, &encoding)) {
        QChar separator;
        XCsv* table = XCsv::fromText(text, &separator);
        if (notes) {
            const QString decoded = TextFile::encodingNote(encoding);
            if (!decoded.isEmpty())
                *notes << decoded;
            const QString separated = XCsv::separatorNote(separator);
            if (!separated.isEmpty())
                *notes << separated;
        }
        return table;
    }
    if (error)
        *error = QStringLiteral("%1: %2").arg(fileName, problem);
    return nullptr;
}

} // namespace

QString XSpreadsheet::wrongSuffixMessage()
{
    return QCoreApplication::translate("XSpreadsheet", "The file you selected is not a %1 file.")
        .arg(readableSuffixes());
}

bool XSpreadsheet::isKnownSuffix(QString const& fileName)
{
    return fileFormatOf(fileName) != nullptr;
}

QString XSpreadsheet::fitProblem(QString const& fileName, int rows, int columns)
{
    FileFormat const* format = fileFormatOf(fileName);
    // A format without a writer of its own is written as text, which holds any table.
    if (!format || !format->writer)
        return QString();
    const int maxRows = format->maxRows;
    const int maxColumns = format->maxColumns;
    const QString suffix = format->suffix;
    const QLocale locale(QLocale::English);
    if (maxColumns > 0 && columns > maxColumns)
        return QCoreApplication::translate("XSpreadsheet",
                                           "the table has %1 columns, and an %2 worksheet holds %3")
            .arg(locale.toString(columns), suffix, locale.toString(maxColumns));
    if (maxRows > 0 && rows > maxRows)
        return QCoreApplication::translate("XSpreadsheet",
                                           "the table has %1 rows, and an %2 worksheet holds %3")
            .arg(locale.toString(rows), suffix, locale.toString(maxRows));
    return QString();
}

QString XSpreadsheet::parseErrorMessage(int row, int column)
{
    return XWorkbookReader::parseErrorMessage(row, column);
}

XCsv* XSpreadsheet::read(QString const& fileName, QString* error, QStringList* notes,
                         std::atomic<bool> const* cancel)
{
    FileFormat const* format = fileFormatOf(fileName);
    if (!format) {
        if (error)
            *error = wrongSuffixMessage();
        return nullptr;
    }
    const QString problem = TextFile::problem(fileName);
    if (!problem.isEmpty()) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(fileName, problem);
        return nullptr;
    }
    if (format->readerProgram)
        return XWorkbookReader::read(fileName, error, cancel);
    return readText(fileName, error, notes);
}

bool XSpreadsheet::write(XCsv const& table, QString const& fileName, QString* error)
{
    const QString tooLarge = fitProblem(fileName, table.rows(), table.columns());
    if (!tooLarge.isEmpty()) {
        if (error)
            *error = tooLarge;
        return false;
    }
    if (Writer writer = writerOf(workbookKind(fileName)))
        return writer(table, fileName, error);
    return XSaveFile::writeText(fileName, table.toString(), error);
}
