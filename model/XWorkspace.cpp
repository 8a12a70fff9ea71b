#include "XWorkspace.h"

#include "StrictInt.h"
#include "TextLines.h"
#include "TextSource.h"
#include "XCsv.h"
#include "XResult.h"

#include <QStringList>

namespace {

const QString hasSourceKey = QStringLiteral("HasSource");
const QString sliderKey = QStringLiteral("SliderValue");
// Written for a result of the exact search, which carries lower bounds, and
// for any run whose settings are recorded (setReproducibleRun, setExactRun).
const QString searchKey = QStringLiteral("Search");
const QString boundsKey = QStringLiteral("LowerBounds");
const QString iterationsKey = QStringLiteral("Iterations");
const QString seedKey = QStringLiteral("Seed");
const QString budgetKey = QStringLiteral("Budget");
const QString secondsKey = QStringLiteral("Seconds");
const QLatin1String sectionEnd("#");

// Collects the lines up to the next "#" line, each with its line end.
// Returns false when the text ends first: the section is incomplete.
bool readSection(TextLines& lines, QString& buffer)
{
    buffer.clear();
    QStringRef line;
    while (lines.next(line)) {
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

// A table the views can show: a label column, at least one allele column,
// and every row as wide as the header row.
bool isWhole(XCsv const& table)
{
    return table.columns() >= 2 && table.isRectangular();
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

void XWorkspace::setReproducibleRun(int const& iterations, int const& seed)
{
    m_settings.insert(searchKey, QStringLiteral("reproducible"));
    m_settings.insert(iterationsKey, iterations);
    m_settings.insert(seedKey, seed);
}

void XWorkspace::setExactRun(int const& budgetSeconds, double const& seconds)
{
    m_settings.insert(searchKey, QStringLiteral("exact"));
    m_settings.insert(budgetKey, budgetSeconds);
    m_settings.insert(secondsKey, QString::number(seconds, 'f', 1));
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

bool XWorkspace::isComplete() const
{
    if (!m_csv || !m_result || m_csv->rows() < 2 || !isWhole(*m_csv))
        return false;
    if (hasSource() != (m_src != nullptr))
        return false;
    if (m_src && (!isWhole(*m_src) || m_src->at(0) != m_csv->at(0)))
        return false;
    if (m_cutOff || !m_result->isWellFormed() || m_result->entries().size() != 100)
        return false;
    for (XResult::Entry const& entry : m_result->entries()) {
        // A core of k rows is drawn from k distinct rows of the table.
        if (entry.second.size() >= m_csv->rows())
            return false;
        for (int row : entry.second) {
            if (row < 1 || row >= m_csv->rows())
                return false;
        }
    }
    return true;
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
            if (line == sectionEnd) {
                closed = true;
                break;
            }
            const int eq = line.indexOf(QLatin1Char('='));
            if (eq < 0)
                continue; // empty, or not a setting at all
            const int eq2 = line.indexOf(QLatin1Char('='), eq + 1);
            const QStringRef value = eq2 < 0 ? line.mid(eq + 1) : line.mid(eq + 1, eq2 - eq - 1);
            m_settings.insert(line.left(eq).trimmed().toString(), value.trimmed().toString());
        }
        if (!closed || !readSection(lines, buffer))
            return;

        // The old result refers to the old tables, so all three go together.
        delete m_result;
        delete m_src;
        delete m_csv;
        m_result = nullptr;
        m_src = nullptr;
        m_csv = new XCsv(buffer);

        if (hasSource()) {
            if (!readSection(lines, buffer))
                return;
            m_src = new XCsv(buffer);
        }
        if (!readSection(lines, buffer))
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
