#include "XSpreadsheet.h"

#include "TextFile.h"
#include "WorkbookKind.h"
#include "XBiffWriter.h"
#include "XCsv.h"
#include "XWorkbookContent.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"
#include "XXlsxWriter.h"

#include "XSaveFile.h"

#include <QCoreApplication>
#include <QLocale>

QString XSpreadsheet::wrongSuffixMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "The file you selected is not a .csv, .xls, .xlsx or .ods file.");
}

bool XSpreadsheet::isKnownSuffix(QString const& fileName)
{
    return workbookKind(fileName) != WorkbookKind::None;
}

QString XSpreadsheet::noAlleleColumnsMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "The table has no allele columns: is it separated by semicolons or tabs?");
}

QString XSpreadsheet::noMatchingLinesMessage(int headerFields)
{
    return QCoreApplication::translate("XSpreadsheet",
                                       "No line has as many fields as the header row (%1): is "
                                       "there a trailing comma, or a comma in quotes, in the "
                                       "header?")
        .arg(headerFields);
}

QString XSpreadsheet::tableProblem(XCsv const& table)
{
    if (table.rows() == 0)
        return QCoreApplication::translate("XSpreadsheet", "The file is empty.");
    if (table.rows() >= 2)
        return table.columns() < 2 ? noAlleleColumnsMessage() : QString();
    if (!table.leftOutLines().isEmpty())
        return noMatchingLinesMessage(table.columns());
    return QCoreApplication::translate(
        "XSpreadsheet",
        "The table has no accessions: it needs at least one row below its header row.");
}

QString XSpreadsheet::fitProblem(QString const& fileName, int rows, int columns)
{
    int maxRows = 0;
    int maxColumns = 0;
    switch (workbookKind(fileName)) {
    case WorkbookKind::Xls:
        maxRows = XBiffWriter::maxRows;
        maxColumns = XBiffWriter::maxColumns;
        break;
    case WorkbookKind::Xlsx:
        maxRows = XWorkbookContent::maxRows;
        maxColumns = XWorkbookContent::maxColumns;
        break;
    default:
        return QString();
    }
    const QString suffix = workbookSuffix(workbookKind(fileName));
    const QLocale locale(QLocale::English);
    if (columns > maxColumns)
        return QCoreApplication::translate("XSpreadsheet",
                                           "the table has %1 columns, and an %2 worksheet holds %3")
            .arg(locale.toString(columns), suffix, locale.toString(maxColumns));
    if (rows > maxRows)
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
    const bool workbook = isWorkbook(workbookKind(fileName));
    if (!isKnownSuffix(fileName)) {
        if (error)
            *error = wrongSuffixMessage();
        return nullptr;
    }
    QString problem = TextFile::problem(fileName);
    if (problem.isEmpty() && workbook)
        return XWorkbookReader::read(fileName, error, cancel);
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    if (problem.isEmpty() && TextFile::read(fileName, &text, &problem, &encoding)) {
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

bool XSpreadsheet::write(XCsv const& table, QString const& fileName, QString* error)
{
    const QString tooLarge = fitProblem(fileName, table.rows(), table.columns());
    if (!tooLarge.isEmpty()) {
        if (error)
            *error = tooLarge;
        return false;
    }
    switch (workbookKind(fileName)) {
    case WorkbookKind::Xls:
        return XWorkbookWriter::write(table, fileName, error);
    case WorkbookKind::Xlsx:
        return XXlsxWriter::write(table, fileName, error);
    default:
        break;
    }
    return XSaveFile::writeText(fileName, table.toString(), error);
}
