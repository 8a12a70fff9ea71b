#include "XSpreadsheet.h"

#include "TextFile.h"
#include "XCsv.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QTextStream>

namespace {

const QLatin1String xlsSuffix(".xls");
const QLatin1String csvSuffix(".csv");

bool writeCsv(XCsv const& table, QString const& fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&file);
    out << table.toString();
    out.flush();
    return out.status() == QTextStream::Ok && file.commit();
}

} // namespace

QString XSpreadsheet::wrongSuffixMessage()
{
    return QCoreApplication::translate("XCsvSelectionPage",
                                       "The file you selected is not a .csv or a .xls file.");
}

bool XSpreadsheet::isKnownSuffix(QString const& fileName)
{
    return fileName.endsWith(xlsSuffix) || fileName.endsWith(csvSuffix);
}

QString XSpreadsheet::noAlleleColumnsMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "The table has no allele columns: is it separated by semicolons or tabs?");
}

QString XSpreadsheet::parseErrorMessage(int row, int column)
{
    return XWorkbookReader::parseErrorMessage(row, column);
}

XCsv* XSpreadsheet::read(QString const& fileName, QString* error, QStringList* notes)
{
    const bool xls = fileName.endsWith(xlsSuffix);
    if (!isKnownSuffix(fileName)) {
        if (error)
            *error = wrongSuffixMessage();
        return nullptr;
    }
    QString problem = TextFile::problem(fileName);
    if (problem.isEmpty() && xls)
        return XWorkbookReader::read(fileName, error);
    QString text;
    TextFile::Encoding encoding = TextFile::Encoding::Utf8;
    if (problem.isEmpty() && TextFile::read(fileName, &text, &problem, &encoding)) {
        if (notes && encoding == TextFile::Encoding::Windows1252)
            *notes << TextFile::windows1252Note();
        return XCsv::fromText(text);
    }
    if (error)
        *error = QStringLiteral("%1: %2").arg(fileName, problem);
    return nullptr;
}

bool XSpreadsheet::write(XCsv const& table, QString const& fileName)
{
    if (fileName.endsWith(xlsSuffix))
        return XWorkbookWriter::write(table, fileName);
    return writeCsv(table, fileName);
}
