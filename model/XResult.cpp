#include "XResult.h"

#include "StrictInt.h"
#include "TextLines.h"
#include "TextSource.h"
#include "XCsv.h"

#include <QSet>
#include <QVector>

XResult::XResult(Entries const& entries, XCsv const* csv, XCsv const* src, QObject* parent)
    : XFile(parent), m_csv(csv), m_src(src), m_entries(entries)
{
}

XResult::XResult(QString const& source, XCsv const* csv, XCsv const* src, QObject* parent)
    : XFile(parent), m_csv(csv), m_src(src)
{
    QString text = readTextSource(source);
    if (!text.isEmpty())
        fromString(text);
}

XResult::~XResult()
{
    // Several entries may share one table; delete each once.
    QSet<XCsv*> deleted;
    for (XCsv* table : qAsConst(m_cache)) {
        if (!deleted.contains(table)) {
            deleted.insert(table);
            delete table;
        }
    }
}

int XResult::count(int const& i) const
{
    return i >= 1 && i <= m_entries.size() ? m_entries.at(i - 1).first : 0;
}

XCsv* XResult::csv(int const& i)
{
    const auto cached = m_cache.constFind(i);
    if (cached != m_cache.constEnd())
        return cached.value();
    if (i < 1 || i > m_entries.size())
        return nullptr;

    // Lists only grow with the percentage, so an equal core can only stand
    // before the first longer list.
    QList<int> const& rows = m_entries.at(i - 1).second;
    for (int j = 1; j <= m_entries.size(); ++j) {
        QList<int> const& other = m_entries.at(j - 1).second;
        if (other.size() > rows.size())
            break;
        const auto found = m_cache.constFind(j);
        if (found != m_cache.constEnd() && other == rows) {
            m_cache.insert(i, found.value());
            return found.value();
        }
    }

    XCsv::Grid grid;
    if (m_src)
        grid = m_src->data();
    else if (m_csv && m_csv->rows() > 0)
        grid << m_csv->at(0);
    if (m_csv) {
        for (int r : rows) {
            // Row 0 copies the header row; rows that do not exist are left out.
            if (r >= 0 && r < m_csv->rows())
                grid << m_csv->at(r);
        }
    }
    XCsv* table = new XCsv(grid);
    m_cache.insert(i, table);
    return table;
}

QString XResult::toString() const
{
    // Always the 100 percentages, but never past the entries a short text held.
    QString out;
    const int lines = qMin(100, m_entries.size());
    for (int i = 0; i < lines; ++i) {
        for (int row : m_entries.at(i).second)
            out += QString::number(row) + QLatin1Char(',');
        out += QString::number(m_entries.at(i).first) + QLatin1Char('\n');
    }
    return out;
}

void XResult::fromString(QString& text)
{
    TextLines lines(text);
    QStringRef line;
    int number = 0;
    // Line numbers stay true only for a result read from this text alone.
    if (m_lines.size() != m_entries.size())
        m_lines.clear();
    while (lines.next(line)) {
        ++number;
        line = line.trimmed();
        if (line.isEmpty())
            continue;
        const QVector<QStringRef> parts = line.split(QLatin1Char(','));
        QList<int> rows;
        rows.reserve(parts.size() - 1);
        bool ok = true;
        bool damaged = false;
        for (int p = 0; p + 1 < parts.size(); ++p) {
            rows << strictToInt(parts.at(p), &ok);
            damaged = damaged || !ok;
        }
        const int count = strictToInt(parts.last(), &ok);
        if (damaged || !ok || count < 0) {
            if (m_damagedLine == 0)
                m_damagedLine = number;
        }
        m_entries << Entry(count, rows);
        if (m_lines.size() + 1 == m_entries.size())
            m_lines << number;
    }
}
