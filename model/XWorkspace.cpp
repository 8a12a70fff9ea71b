#include "XWorkspace.h"

#include "StrictInt.h"
#include "TableRules.h"
#include "TextLines.h"
#include "TextSource.h"
#include "XCsv.h"
#include "XResult.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

const QString hasSourceKey = QStringLiteral("HasSource");
const QString sliderKey = QStringLiteral("SliderValue");
// Written for a result of the exact search, which carries lower bounds, and
// for any run whose settings are recorded (setRun).
const QString searchKey = QStringLiteral("Search");
const QString boundsKey = QStringLiteral("LowerBounds");
const QString iterationsKey = QStringLiteral("Iterations");
const QString seedKey = QStringLiteral("Seed");
const QString budgetKey = QStringLiteral("Budget");
const QString secondsKey = QStringLiteral("Seconds");
const QLatin1String sectionEnd("#");

// Collects the lines up to the next "#" line, each with its line end, and
// counts them in *number. Returns false when the text ends first: the
// section is incomplete.
bool readSection(TextLines& lines, QString& buffer, int* number)
{
    buffer.clear();
    QStringRef line;
    while (lines.next(line)) {
        ++*number;
        if (line == sectionEnd)
            return true;
        buffer += line;
        buffer += QLatin1Char('\n');
    }
    return false;
}

// Whether only blank lines are left: a file may end with a few.
bool onlyBlankLinesLeft(TextLines lines)
{
    QStringRef line;
    while (lines.next(line)) {
        if (!line.trimmed().isEmpty())
            return false;
    }
    return true;
}

// The texts of this file, translated in the context of XWorkspace.
struct Msg
{
    Q_DECLARE_TR_FUNCTIONS(XWorkspace)
};

// A table the views can show: a label column, at least one allele column,
// and every line as wide as the header row. `first` is the line of the
// workspace text on which the table's section begins.
QString tableProblem(XCsv const& table, int first)
{
    auto line = [&table, first](int row) { return first + table.lineOf(row) - 1; };
    const QString ragged = Msg::tr("the number of fields differs from the header row's");
    if (!table.leftOutLines().isEmpty())
        return XWorkspace::atLine(first + table.leftOutLines().constFirst() - 1, ragged);
    if (!TableRules::hasAlleleColumns(table))
        return XWorkspace::atLine(first, Msg::tr("the table has no allele columns"));
    for (int r = 0; r < table.rows(); ++r) {
        if (table.at(r).size() != table.columns())
            return XWorkspace::atLine(line(r), ragged);
    }
    return QString();
}

} // namespace

XWorkspace::XWorkspace(XCsv* csv, XCsv* src, XResult* result, QObject* parent)
    : XFile(parent), m_csv(csv), m_src(src), m_result(result)
{
    if (m_src)
        m_settings.insert(hasSourceKey, true);
    if (m_result && !m_result->lowerBounds().isEmpty()) {
        QStringList bounds;
        for (int bound : m_result->lowerBounds())
            bounds << QString::number(bound);
        m_settings.insert(searchKey, QStringLiteral("exact"));
        m_settings.insert(boundsKey, bounds.join(QLatin1Char(',')));
    }
}

XWorkspace::XWorkspace(QString const& source, QObject* parent) : XFile(parent)
{
    QString text = readTextSource(source);
    if (!text.isEmpty())
        fromString(text);
}

XWorkspace::~XWorkspace()
{
    delete m_csv;
    delete m_src;
    delete m_result;
}

bool XWorkspace::hasSource() const
{
    return m_settings.value(hasSourceKey).toBool();
}

int XWorkspace::wholeSetting(QString const& key) const
{
    const auto it = m_settings.constFind(key);
    if (it == m_settings.constEnd())
        return -1;
    bool ok = false;
    // Text read from a file goes through the strict conversion: " 7" is no number.
    const int value =
        it->userType() == QMetaType::QString ? strictToInt(it->toString(), &ok) : it->toInt(&ok);
    return ok ? value : -1;
}

int XWorkspace::slider() const
{
    return wholeSetting(sliderKey);
}

QString XWorkspace::search() const
{
    return m_settings.value(searchKey).toString();
}

XSearchKind XWorkspace::searchKind() const
{
    const QString kind = search();
    const bool exact =
        kind == QLatin1String("exact") || (kind.isEmpty() && m_settings.contains(boundsKey));
    return exact ? XSearchKind::Exact : XSearchKind::Reproducible;
}

void XWorkspace::setRun(XSearchSettings const& settings, double const& seconds)
{
    switch (settings.kind) {
    case XSearchKind::Reproducible:
        m_settings.insert(searchKey, QStringLiteral("reproducible"));
        m_settings.insert(iterationsKey, settings.iterations);
        m_settings.insert(seedKey, settings.seed);
        break;
    case XSearchKind::Exact:
        m_settings.insert(searchKey, QStringLiteral("exact"));
        m_settings.insert(budgetKey, settings.budgetSeconds);
        m_settings.insert(secondsKey, QString::number(seconds, 'f', 1));
        break;
    }
}

int XWorkspace::iterations() const
{
    return wholeSetting(iterationsKey);
}

int XWorkspace::seed() const
{
    return wholeSetting(seedKey);
}

int XWorkspace::budget() const
{
    return wholeSetting(budgetKey);
}

double XWorkspace::seconds() const
{
    bool ok = false;
    const double value = m_settings.value(secondsKey).toString().toDouble(&ok);
    return ok && value >= 0 ? value : -1.0;
}

void XWorkspace::setSlider(int const& value)
{
    m_settings.insert(sliderKey, value);
}

QString XWorkspace::atLine(int line, QString const& what)
{
    return line > 0 ? Msg::tr("line %1: %2").arg(line).arg(what) : what;
}

QString XWorkspace::problem() const
{
    if (!m_csv || !m_result || m_cutOff || hasSource() != (m_src != nullptr))
        return Msg::tr("it does not hold a whole analysis");
    QString table = tableProblem(*m_csv, m_lines.input);
    if (!table.isEmpty())
        return table;
    if (!TableRules::hasAccessions(*m_csv))
        return atLine(m_lines.input, Msg::tr("the input table has no accessions"));
    const int accessions = m_csv->rows() - 1;
    if (m_src) {
        table = tableProblem(*m_src, m_lines.start);
        if (!table.isEmpty())
            return table;
        if (!TableRules::sameHeaders(m_csv->data(), m_src->data()))
            return atLine(m_lines.start + m_src->lineOf(0) - 1,
                          Msg::tr("the starting collection's header row differs from the input "
                                  "table's"));
    }
    auto line = [this](int entry) { return m_lines.result + m_result->lineOf(entry) - 1; };
    if (!m_result->isWellFormed())
        return atLine(m_lines.result + m_result->damagedLine() - 1,
                      Msg::tr("a result line holds something other than row numbers and an allele "
                              "count of 0 or more"));
    XResult::Entries const& entries = m_result->entries();
    if (entries.size() != 100)
        return atLine(
            m_lines.result,
            Msg::tr("the result has %1 lines, and a search writes 100").arg(entries.size()));
    for (int i = 0; i < entries.size(); ++i) {
        QList<int> const& rows = entries.at(i).second;
        // A core of k rows is drawn from k distinct rows of the table.
        if (rows.size() > accessions)
            return atLine(line(i),
                          Msg::tr("the core lists %1 accessions, and the input table has %2")
                              .arg(rows.size())
                              .arg(accessions));
        for (int row : rows) {
            if (row < 1 || row > accessions)
                return atLine(line(i),
                              Msg::tr("row %1 is not an accession of the input table, which has %2")
                                  .arg(row)
                                  .arg(accessions));
        }
    }
    return QString();
}

QString XWorkspace::toString() const
{
    QString out;
    for (auto it = m_settings.constBegin(); it != m_settings.constEnd(); ++it)
        out += it.key() + QLatin1Char('=') + it.value().toString() + QLatin1Char('\n');
    out += QLatin1String("\n#");
    auto section = [&out](QString const& text) {
        out += QLatin1Char('\n') + text + QLatin1String("\n#");
    };
    section(m_csv ? m_csv->toString() : QString());
    if (hasSource())
        section(m_src ? m_src->toString() : QString());
    section(m_result ? m_result->toString() : QString());
    return out;
}

void XWorkspace::fromString(QString& text)
{
    TextLines lines(text);
    QString buffer;
    QStringRef line;
    int number = 0;
    // The text may hold several workspaces one after the other; each later
    // one merges its settings and replaces the objects. A section cut off by
    // the end of the text ends the reading: nothing is made of it.
    while (!lines.atEnd()) {
        if (onlyBlankLinesLeft(lines))
            return;
        // Whatever follows must form another whole workspace; a damaged tail
        // makes the whole text suspect.
        m_cutOff = true;
        bool closed = false;
        while (lines.next(line)) {
            ++number;
            if (line == sectionEnd) {
                closed = true;
                break;
            }
            const int eq = line.indexOf(QLatin1Char('='));
            if (eq < 0)
                continue; // empty, or not a setting at all
            const int eq2 = line.indexOf(QLatin1Char('='), eq + 1);
            const QStringRef value = eq2 < 0 ? line.mid(eq + 1) : line.mid(eq + 1, eq2 - eq - 1);
            const QString name = line.left(eq).trimmed().toString();
            m_settings.insert(name, value.trimmed().toString());
            m_lines.settings.insert(name, number);
        }
        if (!closed)
            return;
        m_lines.input = number + 1;
        if (!readSection(lines, buffer, &number))
            return;

        // The old result refers to the old tables, so all three go together.
        delete m_result;
        delete m_src;
        delete m_csv;
        m_result = nullptr;
        m_src = nullptr;
        m_lines.start = 0;
        m_lines.result = 0;
        m_csv = new XCsv(buffer);

        if (hasSource()) {
            m_lines.start = number + 1;
            if (!readSection(lines, buffer, &number))
                return;
            m_src = new XCsv(buffer);
        }
        m_lines.result = number + 1;
        if (!readSection(lines, buffer, &number))
            return;
        m_result = new XResult(buffer, m_csv, m_src);
        if (m_settings.contains(boundsKey)) {
            QList<int> bounds;
            for (QString const& part :
                 m_settings.value(boundsKey).toString().split(QLatin1Char(',')))
                bounds << strictToInt(part);
            m_result->setLowerBounds(bounds);
        }
        m_cutOff = false;
    }
}
