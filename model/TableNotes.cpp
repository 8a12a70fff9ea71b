#include "TableNotes.h"

#include "XCsv.h"

#include <QCoreApplication>
#include <QHash>

namespace {

// The texts of this file, translated in the context of TableNotes.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(TableNotes)
};

// Long lists stop after a few items: the user needs where to look, not all.
const int listedLines = 10;
const int listedNames = 5;

// "a", "a and b", "a, b and c", or "a, b, ... and 7 more" past `shown` items.
QString spokenList(QStringList items, int total, int shown)
{
    if (total > shown)
        return items.mid(0, shown).join(QStringLiteral(", ")) + QLatin1Char(' ') +
               Msg::tr("and %n more", nullptr, total - shown);
    if (items.size() == 1)
        return items.constFirst();
    const QString last = items.takeLast();
    return items.join(QStringLiteral(", ")) + QLatin1Char(' ') + Msg::tr("and") + QLatin1Char(' ') +
           last;
}

QString quoted(QString const& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// Columns as a spreadsheet numbers them: the label column is 1.
QString columnRange(TableNotes::ColumnRun const& run)
{
    if (run.first == run.last)
        return QString::number(run.first + 1);
    return QStringLiteral("%1-%2").arg(run.first + 1).arg(run.last + 1);
}

} // namespace

QString TableNotes::leftOut(QList<int> const& lines)
{
    if (lines.isEmpty())
        return QString();
    QStringList numbers;
    for (int i = 0; i < lines.size() && i < listedLines; ++i)
        numbers << QString::number(lines.at(i));
    const QString list = spokenList(numbers, lines.size(), listedLines);
    if (lines.size() == 1)
        return Msg::tr("1 line of the file was left out because its number of fields differs from "
                       "the header row: line %1.")
            .arg(list);
    return Msg::tr("%n lines of the file were left out because their number of fields differs from "
                   "the header row: lines %1.",
                   nullptr, lines.size())
        .arg(list);
}

QList<TableNotes::ColumnRun> TableNotes::columnRuns(QStringList const& headers)
{
    QList<ColumnRun> runs;
    for (int c = 1; c < headers.size(); ++c) {
        if (!runs.isEmpty() && runs.last().name == headers.at(c) && runs.last().last == c - 1) {
            runs.last().last = c;
            continue;
        }
        ColumnRun run;
        run.name = headers.at(c);
        run.first = c;
        run.last = c;
        runs << run;
    }
    return runs;
}

namespace {

// Per marker name that stands in more than one run, its runs, in the order
// the names first appear.
QList<QList<TableNotes::ColumnRun>> returning(QStringList const& headers)
{
    QHash<QString, int> index;
    QList<QList<TableNotes::ColumnRun>> byName;
    for (TableNotes::ColumnRun const& run : TableNotes::columnRuns(headers)) {
        const auto found = index.constFind(run.name);
        if (found == index.constEnd()) {
            index.insert(run.name, byName.size());
            byName << QList<TableNotes::ColumnRun>{run};
        } else {
            byName[found.value()] << run;
        }
    }
    QList<QList<TableNotes::ColumnRun>> found;
    for (QList<TableNotes::ColumnRun> const& runs : byName) {
        if (runs.size() > 1)
            found << runs;
    }
    return found;
}

} // namespace

bool TableNotes::hasReturningMarker(QStringList const& headers)
{
    return !returning(headers).isEmpty();
}

QString TableNotes::returningMarkers(QStringList const& headers)
{
    const QList<QList<ColumnRun>> markers = returning(headers);
    if (markers.isEmpty())
        return QString();
    QStringList named;
    for (int m = 0; m < markers.size() && m < listedNames; ++m) {
        QList<ColumnRun> const& runs = markers.at(m);
        QStringList ranges;
        for (ColumnRun const& run : runs)
            ranges << columnRange(run);
        named << Msg::tr("%1 (columns %2)")
                     .arg(quoted(runs.first().name),
                          spokenList(ranges, ranges.size(), ranges.size()));
    }
    const QString list = spokenList(named, markers.size(), listedNames);
    if (markers.size() == 1)
        return Msg::tr(
                   "A marker's name returns after other markers' columns, and the alleles of all "
                   "its columns are counted as one marker: %1.")
            .arg(list);
    return Msg::tr("%n markers' names return after other markers' columns, and the alleles of all "
                   "columns of one name are counted as one marker: %1.",
                   nullptr, markers.size())
        .arg(list);
}

QString TableNotes::duplicateNames(XCsv const& table)
{
    QHash<QString, int> index;
    QList<QPair<QString, QList<int>>> names;
    for (int r = 1; r < table.rows(); ++r) {
        if (table.at(r).isEmpty())
            continue;
        const QString name = table.at(r).at(0).toString();
        const auto found = index.constFind(name);
        if (found == index.constEnd()) {
            index.insert(name, names.size());
            names << qMakePair(name, QList<int>{r});
        } else {
            names[found.value()].second << r;
        }
    }
    QStringList named;
    int count = 0;
    for (auto const& entry : qAsConst(names)) {
        if (entry.second.size() < 2)
            continue;
        ++count;
        if (named.size() >= listedNames)
            continue;
        QStringList rows;
        for (int r : entry.second)
            rows << QString::number(table.lineOf(r));
        named << Msg::tr("%1 (rows %2)")
                     .arg(quoted(entry.first), spokenList(rows, rows.size(), rows.size()));
    }
    if (count == 0)
        return QString();
    const QString list = spokenList(named, count, listedNames);
    if (count == 1)
        return Msg::tr("An accession name stands in more than one row: %1.").arg(list);
    return Msg::tr("%n accession names stand in more than one row: %1.", nullptr, count).arg(list);
}

QStringList TableNotes::notes(XCsv const& table)
{
    QStringList all;
    for (QString const& note : {leftOut(table.leftOutLines()), returningMarkers(table.headers()),
                                duplicateNames(table)}) {
        if (!note.isEmpty())
            all << note;
    }
    return all;
}
