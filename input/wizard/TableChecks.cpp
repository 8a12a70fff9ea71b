#include "TableChecks.h"

#include "TableNotes.h"
#include "XCsv.h"

#include <QCoreApplication>

namespace {

// The texts of this file, translated in the context of TableChecks.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(TableChecks)
};

QString quoted(XCsv::Row const& header, int column)
{
    if (column >= header.size())
        return Msg::tr("nothing");
    return QLatin1Char('"') + header.at(column).toString() + QLatin1Char('"');
}

} // namespace

QColor TableChecks::problemColor()
{
    return QColor(Qt::red);
}

QColor TableChecks::warningColor()
{
    return QColor(176, 96, 0);
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
        return Msg::tr("The starting collection's header differs from the input's in column %1: %2 "
                       "instead of %3.")
            .arg(c + 1)
            .arg(quoted(found, c), quoted(wanted, c));
    }
    return QString();
}

QString TableChecks::notes(QStringList const& readNotes, XCsv const& table)
{
    return (readNotes + TableNotes::notes(table)).join(QLatin1Char('\n'));
}
