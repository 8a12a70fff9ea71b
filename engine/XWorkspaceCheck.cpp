#include "XWorkspaceCheck.h"

#include "StrictInt.h"
#include "TextFile.h"
#include "XAlleles.h"
#include "XCsv.h"
#include "XResult.h"
#include "XSearch.h"
#include "XWorkspace.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

#include <cmath>
#include <limits>
#include <vector>

namespace {

// The texts of this file, translated in the context of XWorkspaceCheck.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XWorkspaceCheck)
};

QString quoted(QString const& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

class Check
{
public:
    explicit Check(XWorkspace const& workspace) : m_workspace(workspace), m_lines(workspace.lines())
    {
    }

    QString run();

private:
    QString setting(QString const& name) const
    {
        return m_workspace.settings().value(name).toString();
    }
    bool has(QString const& name) const { return m_workspace.settings().contains(name); }
    QString at(QString const& name, QString const& what) const
    {
        return XWorkspace::atLine(m_lines.settings.value(name), what);
    }
    QString atEntry(int i, QString const& what) const
    {
        return XWorkspace::atLine(m_lines.result + m_result->lineOf(i) - 1, what);
    }
    // A setting that must be a whole number from low to high when present.
    QString wholeSetting(QString const& name, qint64 low, qint64 high, QString const& kind) const;
    QString settingsProblem() const;
    QString cellProblem(XCsv const* table, int firstLine) const;
    QString boundsProblem() const;
    struct Totals
    {
        int startAll = 0;  // keys the starting collection holds, (marker, 0) too
        int total = 0;     // the search's total
        int reachable = 0; // what the reproducible search's cores can hold
    };
    // Gives every allele above 0 an id and counts the totals.
    Totals indexAlleles();
    // Against its own bounds and the entry before it.
    QString sequenceProblem(int i, Totals const& totals) const;
    QString shareProblem(int i, Totals const& totals) const;
    QString exactProblem(int i);
    QString entriesProblem();
    // The alleles (above 0) of the starting collection and of a core's rows.
    int heldAboveZero(QList<int> const& rows);

    XWorkspace const& m_workspace;
    XWorkspace::Lines const& m_lines;
    // Set once the form is checked.
    XCsv const* m_csv = nullptr;
    XResult const* m_result = nullptr;
    bool m_exact = false;
    QStringList m_headers;
    // Per input row (from 0), the ids of its alleles above 0; the starting
    // collection's as a set of ids.
    std::vector<std::vector<int>> m_rowAlleles;
    std::vector<int> m_startAlleles;
    int m_ids = 0;
};

QString Check::wholeSetting(QString const& name, qint64 low, qint64 high, QString const& kind) const
{
    if (!has(name))
        return QString();
    bool ok = false;
    const int value = strictToInt(setting(name), &ok);
    if (ok && value >= low && value <= high)
        return QString();
    return at(name, Msg::tr("%1 is %2, where %3 belongs").arg(name, quoted(setting(name)), kind));
}

QString Check::settingsProblem() const
{
    const QString search = setting(QStringLiteral("Search"));
    if (has(QStringLiteral("Search")) && search != QLatin1String("reproducible") &&
        search != QLatin1String("exact"))
        return at(QStringLiteral("Search"),
                  Msg::tr("the search %1 is none that Vireon knows (reproducible or exact)")
                      .arg(quoted(search)));
    const QString source = setting(QStringLiteral("HasSource"));
    if (has(QStringLiteral("HasSource")) && source != QLatin1String("true") &&
        source != QLatin1String("false"))
        return at(QStringLiteral("HasSource"),
                  Msg::tr("HasSource is %1, where true or false belongs").arg(quoted(source)));
    const int intMax = std::numeric_limits<int>::max();
    const int intMin = std::numeric_limits<int>::min();
    for (QString const& problem :
         {wholeSetting(QStringLiteral("SliderValue"), 1, 100,
                       Msg::tr("a whole number from 1 to 100")),
          wholeSetting(QStringLiteral("Iterations"), 1, intMax,
                       Msg::tr("a whole number of at least 1")),
          wholeSetting(QStringLiteral("Seed"), intMin, intMax, Msg::tr("a whole number")),
          wholeSetting(QStringLiteral("Budget"), 0, intMax,
                       Msg::tr("a whole number of 0 or more"))}) {
        if (!problem.isEmpty())
            return problem;
    }
    if (has(QStringLiteral("Seconds"))) {
        bool ok = false;
        const double seconds = setting(QStringLiteral("Seconds")).toDouble(&ok);
        if (!ok || !std::isfinite(seconds) || seconds < 0)
            return at(QStringLiteral("Seconds"),
                      Msg::tr("Seconds is %1, where a number of 0 or more belongs")
                          .arg(quoted(setting(QStringLiteral("Seconds")))));
    }
    if (has(QStringLiteral("LowerBounds")) && search == QLatin1String("reproducible"))
        return at(QStringLiteral("LowerBounds"),
                  Msg::tr("lower bounds come from the exact search, and this result is the "
                          "reproducible search's"));
    return QString();
}

QString Check::cellProblem(XCsv const* table, int firstLine) const
{
    int row = 0;
    int column = 0;
    if (!table || !XAlleles::firstNonAllele(*table, &row, &column))
        return QString();
    return XWorkspace::atLine(
        firstLine + table->lineOf(row) - 1,
        Msg::tr("%1 under marker %2 is not an allele (a whole number of 0 or "
                "more, or * for a missing one)")
            .arg(quoted(table->at(row, column).toString()), m_headers.value(column)));
}

QString Check::boundsProblem() const
{
    const QString name = QStringLiteral("LowerBounds");
    if (!has(name))
        return at(QStringLiteral("Search"), Msg::tr("the exact search's lower bounds are missing"));
    const QStringList parts = setting(name).split(QLatin1Char(','));
    XResult::Entries const& entries = m_result->entries();
    if (parts.size() != entries.size())
        return at(name,
                  Msg::tr("there are %1 lower bounds, and the exact search writes one for each "
                          "of the 100 shares")
                      .arg(parts.size()));
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        const int bound = strictToInt(parts.at(i), &ok);
        const int size = entries.at(i).second.size();
        if (!ok || bound < 0 || bound > size)
            return at(name, Msg::tr("the lower bound %1 for %2 % is not a whole number from 0 to "
                                    "the core's size, %3")
                                .arg(quoted(parts.at(i)))
                                .arg(i + 1)
                                .arg(size));
    }
    return QString();
}

int Check::heldAboveZero(QList<int> const& rows)
{
    std::vector<char> held(size_t(m_ids), 0);
    int count = 0;
    auto hold = [&held, &count](std::vector<int> const& alleles) {
        for (int id : alleles) {
            if (!held[size_t(id)]) {
                held[size_t(id)] = 1;
                ++count;
            }
        }
    };
    hold(m_startAlleles);
    for (int row : rows)
        hold(m_rowAlleles[size_t(row - 1)]);
    return count;
}

Check::Totals Check::indexAlleles()
{
    // The alleles as the searches read them, with an id for each above 0.
    XAlleles::Matrix startMatrix;
    XAlleles::AlleleMap startMap;
    XAlleles::Matrix matrix;
    if (XCsv const* start = m_workspace.src())
        XAlleles::encode(*start, m_headers, startMatrix, startMap);
    XAlleles::AlleleMap fullMap = startMap;
    XAlleles::encode(*m_csv, m_headers, matrix, fullMap);
    QHash<QPair<QString, int>, int> ids;
    auto idsOf = [this, &ids](QList<int> const& encoded) {
        std::vector<int> alleles;
        for (int j = 1; j < encoded.size(); ++j) {
            if (encoded.at(j) <= 0)
                continue;
            const QPair<QString, int> key(m_headers.value(j), encoded.at(j));
            auto found = ids.constFind(key);
            if (found == ids.constEnd())
                found = ids.insert(key, ids.size());
            alleles.push_back(found.value());
        }
        return alleles;
    };
    for (QList<int> const& encoded : startMatrix) {
        for (int id : idsOf(encoded))
            m_startAlleles.push_back(id);
    }
    for (QList<int> const& encoded : matrix)
        m_rowAlleles.push_back(idsOf(encoded));
    m_ids = ids.size();

    Totals totals;
    totals.startAll = startMap.size();
    totals.total = m_exact ? m_ids : fullMap.size();
    // The reproducible search's cores never hold the input's (marker, 0)
    // pairs, which its total counts.
    for (auto it = fullMap.constBegin(); it != fullMap.constEnd(); ++it)
        totals.reachable += it.key().second > 0 || startMap.contains(it.key());
    return totals;
}

QString Check::sequenceProblem(int i, Totals const& totals) const
{
    XResult::Entries const& entries = m_result->entries();
    const int count = entries.at(i).first;
    QList<int> const& rows = entries.at(i).second;
    if (count > totals.total)
        return atEntry(i, Msg::tr("the count %1 is more than the %2 alleles the tables hold")
                              .arg(count)
                              .arg(totals.total));
    if (!m_exact && rows.isEmpty() && count != totals.startAll)
        return atEntry(i, Msg::tr("the core is empty, so it holds the starting collection's %1 "
                                  "alleles, not %2")
                              .arg(totals.startAll)
                              .arg(count));
    if (i == 0)
        return QString();
    XResult::Entry const& before = entries.at(i - 1);
    if (count < before.first)
        return atEntry(i, Msg::tr("the count %1 falls below the %2 of the share before it, and a "
                                  "search's counts never fall")
                              .arg(count)
                              .arg(before.first));
    // Cores are found at growing sizes, one for each size tried.
    if (rows.size() < before.second.size())
        return atEntry(i, Msg::tr("the core of %1 accessions is smaller than the %2 of the share "
                                  "before it, and a search's cores never shrink")
                              .arg(rows.size())
                              .arg(before.second.size()));
    if (!m_exact && rows.size() == before.second.size() && entries.at(i) != before)
        return atEntry(i, Msg::tr("the core differs from the one before it in the same number of "
                                  "accessions, and the search keeps one core for each size"));
    return QString();
}

QString Check::shareProblem(int i, Totals const& totals) const
{
    const int p = i + 1;
    const int count = m_result->entries().at(i).first;
    // The share p % of the total, compared as the searches compare it.
    const qint64 target = XSearch::target(p, totals.total);
    if (XSearch::meets(count, target))
        return QString();
    // The reproducible search stops short only with every row in the core,
    // or where no core could reach the share.
    if (!m_exact && (m_result->entries().at(i).second.size() >= m_csv->rows() - 1 ||
                     !XSearch::meets(totals.reachable, target)))
        return QString();
    return atEntry(i, Msg::tr("the count %1 falls short of %2 % of the %3 alleles, which the core "
                              "for that share reaches")
                          .arg(count)
                          .arg(p)
                          .arg(totals.total));
}

QString Check::exactProblem(int i)
{
    XResult::Entries const& entries = m_result->entries();
    const int count = entries.at(i).first;
    QList<int> const& rows = entries.at(i).second;
    const QSet<int> distinct(rows.cbegin(), rows.cend());
    if (distinct.size() != rows.size())
        return atEntry(i, Msg::tr("the core lists a row twice, and the exact search lists each row "
                                  "once"));
    // Shares of one core need one count.
    const int held =
        i > 0 && rows == entries.at(i - 1).second ? entries.at(i - 1).first : heldAboveZero(rows);
    if (count == held)
        return QString();
    return atEntry(i, (m_workspace.src() ? Msg::tr("the count %1 differs from the %2 alleles the "
                                                   "core holds with the starting collection")
                                         : Msg::tr("the count %1 differs from the %2 alleles the "
                                                   "core holds"))
                          .arg(count)
                          .arg(held));
}

QString Check::entriesProblem()
{
    const Totals totals = indexAlleles();
    for (int i = 0; i < m_result->entries().size(); ++i) {
        QString problem = sequenceProblem(i, totals);
        if (problem.isEmpty())
            problem = shareProblem(i, totals);
        if (problem.isEmpty() && m_exact)
            problem = exactProblem(i);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QString Check::run()
{
    // Settings first: a HasSource that is no truth value misreads the
    // sections after it.
    QString problem = settingsProblem();
    if (problem.isEmpty())
        problem = m_workspace.problem();
    if (!problem.isEmpty())
        return problem;
    m_csv = m_workspace.csv();
    m_result = m_workspace.result();
    m_headers = m_csv->headers();
    problem = cellProblem(m_workspace.src(), m_lines.start);
    if (problem.isEmpty())
        problem = cellProblem(m_csv, m_lines.input);
    if (!problem.isEmpty())
        return problem;
    m_exact = m_workspace.searchKind() == XSearchKind::Exact;
    if (m_exact) {
        problem = boundsProblem();
        if (!problem.isEmpty())
            return problem;
    }
    return entriesProblem();
}

} // namespace

QString XWorkspaceCheck::problem(XWorkspace const& workspace)
{
    return Check(workspace).run();
}

XWorkspaceCheck::Reading XWorkspaceCheck::read(QString const& path)
{
    Reading reading;
    // The file's content, never the name-or-text rule: a long path is a path.
    QString text;
    if (!TextFile::read(path, &text, &reading.unreadable))
        return reading;
    auto workspace = std::make_unique<XWorkspace>(nullptr, nullptr, nullptr);
    workspace->fromString(text);
    reading.invalid = problem(*workspace);
    if (reading.invalid.isEmpty())
        reading.workspace = std::move(workspace);
    return reading;
}
