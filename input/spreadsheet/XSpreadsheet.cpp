#include "XSpreadsheet.h"

#include "XCsv.h"
#include "XWorkbookReader.h"
#include "XWorkbookWriter.h"

#include "XSaveFile.h"

#include <QCoreApplication>

namespace {

const QLatin1String xlsSuffix(".xls");
const QLatin1String csvSuffix(".csv");

} // namespace

QString XSpreadsheet::wrongSuffixMessage()
{
    return QCoreApplication::translate("XSpreadsheet",
                                       "The file you selected is not a .csv or a .xls file.");
}

QString XSpreadsheet::parseErrorMessage(int row, int column)
{
    return XWorkbookReader::parseErrorMessage(row, column);
}

XCsv* XSpreadsheet::read(QString const& fileName, QString* error)
{
    if (fileName.endsWith(xlsSuffix))
        return XWorkbookReader::read(fileName, error);
    if (fileName.endsWith(csvSuffix))
        return new XCsv(fileName, nullptr);
    if (error)
        *error = wrongSuffixMessage();
    return nullptr;
}

bool XSpreadsheet::write(XCsv const& table, QString const& fileName, QString* error)
{
    if (fileName.endsWith(xlsSuffix))
        return XWorkbookWriter::write(table, fileName, error);
    return XSaveFile::writeText(fileName, table.toString(), error);
}
