#include "TableChecks.h"

#include "XCsv.h"
#include "XSpreadsheet.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

namespace {

QString tr(char const* text, int n = -1)
{
    return QCoreApplication::translate("TableChecks", text, nullptr, n);
}

QString quoted(XCsv::Row const& header, int column)
{
    if (column >= header.size())
        return tr("nothing");
    return QLatin1Char('"') + header.at(column).toString() + QLatin1Char('"');
}

// Long lists stop after a few numbers: the user needs where to look, not all.
const int listedLines = 10;

} // namespace

QColor TableChecks::problemColor()
{
    return QColor(Qt::red);
}

QColor TableChecks::warningColor()
{
    return QColor(176, 96, 0);
}

QString TableChecks::accessionProblem(XCsv const& table, QString const& fileName)
{
    const QFileInfo file(fileName);
    if (table.rows() == 0 && file.isFile() && file.size() == 0)
        return tr("The file is empty.");
    if (table.rows() >= 2)
        return table.columns() < 2 ? XSpreadsheet::noAlleleColumnsMessage() : QString();
    if (table.rows() == 1 && !table.leftOutLines().isEmpty())
        return XSpreadsheet::noMatchingLinesMessage(table.columns());
    return tr("The table has no accessions: it needs at least one row below its header row.");
}

QString TableChecks::headerProblem(XCsv const& input, XCsv const& start)
{
    if (input.rows() == 0 || start.rows() == 0)
        return QString();
    XCsv::Row const& wanted = input.at(0);
    XCsv::Row const& found = start.at(0);
    // Compared as the search compares them, cell by cell.
    const int columns = qMax(wanted.size(), found.size());
    for (int c = 0; c < columns; ++c) {
        if (c < wanted.size() && c < found.size() && wanted.at(c) == found.at(c))
            continue;
        return tr("The starting collection's header differs from the input's in column %1: %2 "
                  "instead of %3.")
            .arg(c + 1)
            .arg(quoted(found, c), quoted(wanted, c));
    }
    return QString();
}

QString TableChecks::leftOutWarning(QList<int> const& lines)
{
    if (lines.isEmpty())
        return QString();
    QStringList numbers;
    for (int i = 0; i < lines.size() && i < listedLines; ++i)
        numbers << QString::number(lines.at(i));
    QString list;
    if (lines.size() > listedLines) {
        list = numbers.join(QStringLiteral(", ")) + QLatin1Char(' ') +
               tr("and %n more", lines.size() - listedLines);
    } else if (numbers.size() > 1) {
        const QString last = numbers.takeLast();
        list = numbers.join(QStringLiteral(", ")) + QLatin1Char(' ') + tr("and") +
               QLatin1Char(' ') + last;
    } else {
        list = numbers.constFirst();
    }
    if (lines.size() == 1)
        return tr("1 line of the file was left out because its number of fields differs from "
                  "the header row: line %1.")
            .arg(list);
    return tr("%1 lines of the file were left out because their number of fields differs from "
              "the header row: lines %2.")
        .arg(lines.size())
        .arg(list);
}

QString TableChecks::notes(QStringList const& readNotes, QList<int> const& leftOut)
{
    QStringList all = readNotes;
    const QString lines = leftOutWarning(leftOut);
    if (!lines.isEmpty())
        all << lines;
    return all.join(QLatin1Char('\n'));
}
