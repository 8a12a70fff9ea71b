#include "TableRules.h"

#include <QCoreApplication>

namespace {

QString quoted(XCsv::Row const& header, int column)
{
    if (column >= header.size())
        return QCoreApplication::translate("TableChecks", "nothing");
    return QLatin1Char('"') + header.at(column).toString() + QLatin1Char('"');
}

} // namespace

bool TableRules::hasAccessions(XCsv::Grid const& grid)
{
    return grid.size() >= 2;
}

bool TableRules::hasAccessions(XCsv const& table)
{
    return hasAccessions(table.data());
}

bool TableRules::hasAlleleColumns(XCsv const& table)
{
    return table.columns() >= 2;
}

int TableRules::firstHeaderDifference(XCsv::Grid const& input, XCsv::Grid const& start)
{
    if (input.isEmpty() || start.isEmpty())
        return 0;
    XCsv::Row const& wanted = input.at(0);
    XCsv::Row const& found = start.at(0);
    // QVariant equality, cell by cell, as the searches have always compared.
    const int columns = qMax(wanted.size(), found.size());
    for (int c = 0; c < columns; ++c) {
        if (c >= wanted.size() || c >= found.size() || wanted.at(c) != found.at(c))
            return c;
    }
    return -1;
}

bool TableRules::sameHeaders(XCsv::Grid const& input, XCsv::Grid const& start)
{
    return firstHeaderDifference(input, start) < 0;
}

QString TableRules::noAlleleColumnsMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet", "The table has no allele columns: is it separated by semicolons or tabs?");
}

QString TableRules::noMatchingLinesMessage(int headerFields)
{
    return QCoreApplication::translate("XSpreadsheet",
                                       "No line has as many fields as the header row (%1): is "
                                       "there a trailing comma, or a comma in quotes, in the "
                                       "header?")
        .arg(headerFields);
}

QString TableRules::noAccessionsMessage()
{
    return QCoreApplication::translate(
        "XSpreadsheet",
        "The table has no accessions: it needs at least one row below its header row.");
}

QString TableRules::problem(XCsv const& table)
{
    if (table.rows() == 0)
        return QCoreApplication::translate("XSpreadsheet", "The file is empty.");
    if (hasAccessions(table))
        return hasAlleleColumns(table) ? QString() : noAlleleColumnsMessage();
    if (!table.leftOutLines().isEmpty())
        return noMatchingLinesMessage(table.columns());
    return noAccessionsMessage();
}

QString TableRules::headerProblem(XCsv const& input, XCsv const& start)
{
    if (input.rows() == 0 || start.rows() == 0)
        return QString();
    const int c = firstHeaderDifference(input.data(), start.data());
    if (c < 0)
        return QString();
    return QCoreApplication::translate("TableChecks",
                                       "The starting collection's header differs from the "
                                       "input's in column %1: %2 instead of %3.")
        .arg(c + 1)
        .arg(quoted(start.at(0), c), quoted(input.at(0), c));
}
