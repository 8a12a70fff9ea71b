#include "XCoreReport.h"

#include "XAlleles.h"
#include "XCsv.h"
#include "XResult.h"
#include "XWorkspace.h"

#include <QLocale>

namespace {

const QString separator = QStringLiteral(" · ");

int startRows(XWorkspace const& workspace)
{
    return workspace.src() ? workspace.src()->rows() - 1 : 0;
}

bool isExact(XWorkspace const& workspace)
{
    return workspace.searchKind() == XSearchKind::Exact;
}

} // namespace

XCoreReport::XCoreReport(XWorkspace* workspace) : m_workspace(workspace)
{
    if (m_workspace && m_workspace->csv())
        m_total =
            XAlleles::held({m_workspace->src(), m_workspace->csv()}, m_workspace->csv()->headers());
}

QString XCoreReport::percentText(int const& part, int const& whole)
{
    if (whole <= 0)
        return QStringLiteral("0");
    // The decimal mark of the user's locale: "85,5" in Spanish and French.
    const QLocale locale;
    QString text = locale.toString(100.0 * part / whole, 'f', 1);
    if (text.endsWith(QString(locale.decimalPoint()) + locale.zeroDigit()))
        text.chop(2);
    return text;
}

QString XCoreReport::accessions(int const& count)
{
    // English needs its singular, which the source text alone cannot give.
    return count == 1 ? tr("%n accession", nullptr, count) : tr("%n accessions", nullptr, count);
}

int XCoreReport::held(int const& percent)
{
    if (!m_workspace || !m_workspace->result())
        return -1;
    XCsv const* table = m_workspace->result()->csv(percent);
    if (!table)
        return -1;
    auto it = m_held.constFind(table);
    if (it == m_held.constEnd())
        it = m_held.insert(table, XAlleles::held({table}, table->headers()));
    return *it;
}

QVector<int> XCoreReport::heldPerPercent()
{
    QVector<int> counts;
    counts.reserve(100);
    for (int p = 1; p <= 100; ++p)
        counts << held(p);
    return counts;
}

QString XCoreReport::coverageLine(int const& percent)
{
    if (!m_workspace || !m_workspace->result())
        return QString();
    XResult& result = *m_workspace->result();
    XCsv const* table = result.csv(percent);
    if (!table)
        return QString();
    const int start = startRows(*m_workspace);
    const int rows = table->rows() - 1;
    const QString size =
        start == 0  ? accessions(rows)
        : rows == 1 ? tr("%n accession (%1 in the starting collection)", nullptr, rows).arg(start)
                    : tr("%n accessions (%1 in the starting collection)", nullptr, rows).arg(start);
    const int holds = held(percent);
    const QString total = QString::number(m_total);
    // An imported workspace may hold a cell that is no allele; nothing is
    // counted then rather than something wrong.
    const bool counted = holds >= 0 && m_total >= 0;
    const QString unreadable = tr("a cell of the tables is not an allele");
    if (!isExact(*m_workspace)) {
        const QString reported = tr("the search reports %1 of %2 alleles")
                                     .arg(result.count(percent))
                                     .arg(counted ? total : QStringLiteral("?"));
        return size + separator + reported + separator +
               (counted ? tr("they hold %1 (%2 %)").arg(holds).arg(percentText(holds, m_total))
                        : unreadable);
    }
    const int entry = percent - 1;
    const int chosen = result.entries().value(entry).second.size();
    const int bound = result.lowerBounds().value(entry, -1);
    const int needed = start + bound;
    const QString proof = bound == chosen ? tr("proven smallest")
                          : bound < 0     ? tr("not proven smallest")
                          : needed == 1   ? tr("at least %n accession is needed", nullptr, needed)
                                        : tr("at least %n accessions are needed", nullptr, needed);
    return size + separator +
           (counted ? tr("they hold %1 of %2 alleles (%3 %)")
                          .arg(holds)
                          .arg(total, percentText(holds, m_total))
                    : unreadable) +
           separator + proof;
}

QString XCoreReport::runLine() const
{
    if (!m_workspace || !m_workspace->result())
        return QString();
    QStringList parts;
    if (isExact(*m_workspace)) {
        parts << tr("Exact search");
        XResult::Entries const& entries = m_workspace->result()->entries();
        QList<int> const& bounds = m_workspace->result()->lowerBounds();
        int proven = 0;
        for (int i = 0; i < entries.size(); ++i)
            proven += bounds.value(i, -1) == entries.at(i).second.size();
        parts << tr("%1 of %n cores proven smallest", nullptr, entries.size()).arg(proven);
        const double seconds = m_workspace->seconds();
        if (seconds >= 0)
            parts << tr("%1 s").arg(QString::number(seconds, 'f', seconds < 10 ? 1 : 0));
    } else {
        parts << tr("Reproducible search");
        if (m_workspace->seed() >= 0)
            parts << tr("seed %1").arg(m_workspace->seed());
        const int iterations = m_workspace->iterations();
        if (iterations >= 0)
            parts << (iterations == 1 ? tr("%n iteration", nullptr, iterations)
                                      : tr("%n iterations", nullptr, iterations));
    }
    return parts.join(separator);
}
