#include "XSpreadsheet.h"

#include "XCsv.h"

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

XCsv* XSpreadsheet::read(QString const& fileName, QString* error)
{
    if (fileName.endsWith(xlsSuffix)) {
        // The workbook reader arrives with the .xls support.
        if (error)
            *error = QStringLiteral("Error while parsing the .xls file: workbooks cannot be read yet.");
        return nullptr;
    }
    if (fileName.endsWith(csvSuffix))
        return new XCsv(fileName, nullptr);
    if (error)
        *error = wrongSuffixMessage();
    return nullptr;
}

bool XSpreadsheet::write(XCsv const& table, QString const& fileName)
{
    return writeCsv(table, fileName);
}
