#include "XSpreadsheet.h"

#include "TextFile.h"
#include "WorkbookKind.h"
#include "XCsv.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"
#include "XXlsxWriter.h"

#include "XSaveFile.h"

#include <QCoreApplication>

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
            if (encoding == TextFile::Encoding::Windows1252)
                *notes << TextFile::windows1252Note();
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
