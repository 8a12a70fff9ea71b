#include "XCoreSummary.h"

#include "XAlleles.h"
#include "XCsv.h"
#include "XResult.h"

#include <QTextStream>

QString XCoreSummary::text(XResult& result, int const& total, int const& seed)
{
    return text(result, total, QString::number(seed));
}

QString XCoreSummary::text(XResult& result, int const& total, QString const& seed)
{
    QString summary;
    QTextStream out(&summary);
    out << tr("percent\taccessions\talleles\trecounted") << '\n';
    XResult::Entries const& entries = result.entries();
    const int startRows = result.source() ? result.source()->rows() - 1 : 0;
    int first = 0;
    for (int i = 0; i < entries.size(); ++i) {
        if (i + 1 < entries.size() && entries.at(i + 1) == entries.at(first))
            continue;
        XCsv const* table = result.csv(first + 1);
        const QString percents = first == i ? QString::number(first + 1)
                                            : QStringLiteral("%1-%2").arg(first + 1).arg(i + 1);
        out << percents << '\t' << startRows + entries.at(first).second.size() << '\t'
            << entries.at(first).first << '\t' << XAlleles::held({table}, table->headers()) << '\n';
        first = i + 1;
    }
    out << tr("Total alleles: %1; seed: %2").arg(total).arg(seed) << '\n';
    return summary;
}

QString XCoreSummary::invalidCell(QString const& which, XCsv const* table)
{
    int row = 0;
    int column = 0;
    if (!table || !XAlleles::firstNonAllele(*table, &row, &column))
        return QString();
    // A row without a name, or a column without a header, is named by its
    // number alone, counted as a spreadsheet shows it.
    const QString label = table->at(row).value(0).toString();
    const QString header = table->at(0).value(column).toString();
    const QString where = label.isEmpty() ? QString::number(row + 1)
                                          : QStringLiteral("%1 (%2)").arg(row + 1).arg(label);
    const QString named = header.isEmpty() ? tr("%1 (no header)").arg(column + 1) : header;
    const QString cell = table->at(row).value(column).toString();
    // "start" and "input" are words of the command line's own; the table
    // is named in the sentence so that a translation can place it.
    return (which == QLatin1String("start") ? tr("start row %1, column %2: \"%3\"")
                                            : tr("input row %1, column %2: \"%3\""))
        .arg(where, named, cell);
}

QString XCoreSummary::invalidCells(XCsv const* start, XCsv const* input)
{
    QString lines;
    for (QString const& line : {invalidCell(QStringLiteral("start"), start),
                                invalidCell(QStringLiteral("input"), input)}) {
        if (!line.isEmpty())
            lines += line + QLatin1Char('\n');
    }
    return lines;
}

QString XCoreSummary::exactText(XResult& result, int const& total, int const& zeroPairs,
                                double const& seconds)
{
    QString text;
    QTextStream out(&text);
    out << tr("percent\taccessions\talleles\tsize") << '\n';
    XResult::Entries const& entries = result.entries();
    QList<int> const& bounds = result.lowerBounds();
    const int startRows = result.source() ? result.source()->rows() - 1 : 0;
    int proven = 0;
    int first = 0;
    for (int i = 0; i < entries.size(); ++i) {
        const int size = entries.at(i).second.size();
        proven += bounds.value(i) == size;
        if (i + 1 < entries.size() && entries.at(i + 1) == entries.at(first) &&
            bounds.value(i + 1) == bounds.value(first))
            continue;
        const QString percents = first == i ? QString::number(first + 1)
                                            : QStringLiteral("%1-%2").arg(first + 1).arg(i + 1);
        const int firstSize = entries.at(first).second.size();
        const QString proof = bounds.value(first) == firstSize
                                  ? tr("minimal")
                                  : QStringLiteral("≥ %1").arg(startRows + bounds.value(first));
        out << percents << '\t' << startRows + firstSize << '\t' << entries.at(first).first << '\t'
            << proof << '\n';
        first = i + 1;
    }
    out << tr("Total alleles: %1; (marker, 0) pairs left out: %2").arg(total).arg(zeroPairs)
        << '\n';
    const QString time =
        seconds >= 0 ? tr("%1 s").arg(QString::number(seconds, 'f', 1)) : tr("not recorded");
    out << tr("Proven minimal: %1 of %n entries; time: %2", nullptr, entries.size())
               .arg(proven)
               .arg(time)
        << '\n';
    return text;
}
