#include "XCsv.h"

#include "StrictInt.h"
#include "TextLines.h"
#include "TextSource.h"

#include <QCoreApplication>
#include <QVector>

XCsv::XCsv(QObject* parent) : XFile(parent), m_columns(3)
{
    m_data << Row{QStringLiteral("Name"), QStringLiteral("H1"), QStringLiteral("H2")}
           << Row{QStringLiteral("Accession1"), QStringLiteral("1"), QStringLiteral("2")}
           << Row{QStringLiteral("Accession2"), QStringLiteral("3"), QStringLiteral("4")};
}

XCsv::XCsv(Grid const& data, QObject*) : XFile(nullptr), m_data(data)
{
    m_columns = m_data.isEmpty() ? 0 : m_data.constFirst().size();
}

XCsv::XCsv(QString const& source, QObject* parent) : XFile(parent)
{
    QString text = readTextSource(source);
    if (!text.isEmpty())
        fromString(text);
}

XCsv* XCsv::fromText(QString text, QChar* separator)
{
    const QChar found = separatorOf(text);
    if (separator)
        *separator = found;
    auto* table = new XCsv(Grid());
    table->read(text, found);
    return table;
}

QChar XCsv::separatorOf(QString const& text)
{
    const QChar comma(QLatin1Char(','));
    if (text.contains(comma))
        return comma;
    TextLines lines(text);
    QStringRef first;
    if (!lines.next(first))
        return comma;
    const int semicolons = first.count(QLatin1Char(';'));
    const int tabs = first.count(QLatin1Char('\t'));
    if (semicolons == 0 && tabs == 0)
        return comma;
    return QLatin1Char(semicolons >= tabs ? ';' : '\t');
}

QString XCsv::separatorNote(QChar separator)
{
    if (separator == QLatin1Char(';'))
        return QCoreApplication::translate(
            "XCsv", "This file separates its fields with semicolons; it was read that way.");
    if (separator == QLatin1Char('\t'))
        return QCoreApplication::translate(
            "XCsv", "This file separates its fields with tabs; it was read that way.");
    return QString();
}

XCsv::~XCsv() = default;

bool XCsv::isRectangular() const
{
    for (Row const& row : m_data) {
        if (row.size() != m_columns)
            return false;
    }
    return true;
}

int XCsv::lineOf(int row) const
{
    return row >= 0 && row < m_lines.size() ? m_lines.at(row) : row + 1;
}

bool XCsv::addRow(int const& index, QString const& label, QVariant const& fill)
{
    if (index < 0 || index > rows())
        return false;
    m_lines.clear();
    Row row;
    row.reserve(qMax(m_columns, 1));
    row << QVariant(label);
    for (int c = 1; c < m_columns; ++c)
        row << fill;
    m_data.insert(index, row);
    return true;
}

bool XCsv::removeRow(int const& index)
{
    if (index < 0 || index >= rows())
        return false;
    m_lines.clear();
    m_data.removeAt(index);
    return true;
}

bool XCsv::addColumn(int const& index, QString const& header, QVariant const& fill)
{
    // Without a header row there is nowhere to put the header.
    if (index < 0 || index > m_columns || m_data.isEmpty())
        return false;
    for (int r = 0; r < m_data.size(); ++r) {
        Row& row = m_data[r];
        const QVariant value = r == 0 ? QVariant(header) : fill;
        if (index >= row.size())
            row.append(value);
        else
            row.insert(index, value);
    }
    ++m_columns;
    return true;
}

bool XCsv::removeColumn(int const& index)
{
    if (index < 0 || index >= m_columns)
        return false;
    for (Row& row : m_data) {
        if (index < row.size())
            row.removeAt(index);
    }
    --m_columns;
    return true;
}

bool XCsv::setCell(int const& row, int const& column, QVariant const& value)
{
    // Rows shorter than the column count exist; refusing beats a crash.
    if (row < 0 || column < 0 || row >= rows() || column >= m_columns ||
        column >= m_data.at(row).size())
        return false;
    m_data[row][column] = value;
    return true;
}

QString XCsv::toString() const
{
    QString out;
    const QLatin1Char quote('"');
    for (Row const& row : m_data) {
        for (int c = 0; c < row.size(); ++c) {
            QVariant const& cell = row.at(c);
            if (cell.userType() == QMetaType::QString)
                out += quote + cell.toString() + quote;
            else
                out += cell.toString();
            // The stored column count decides, not the row's length: short
            // rows end early and long rows run their extra cells together.
            if (c < m_columns - 1)
                out += QLatin1Char(',');
        }
        out += QLatin1Char('\n');
    }
    return out;
}

void XCsv::fromString(QString& text)
{
    read(text, QLatin1Char(','));
}

namespace {

// The line without the white space around it. A separator that is white
// space itself (the tab) stays, so that empty first and last fields count.
QStringRef trimmedLine(QStringRef const& line, QChar separator)
{
    if (!separator.isSpace())
        return line.trimmed();
    int begin = 0;
    int end = line.size();
    while (begin < end && line.at(begin).isSpace() && line.at(begin) != separator)
        ++begin;
    while (end > begin && line.at(end - 1).isSpace() && line.at(end - 1) != separator)
        --end;
    return line.mid(begin, end - begin);
}

} // namespace

void XCsv::read(QString const& text, QChar separator)
{
    m_columns = 0;
    m_leftOut.clear();
    // Line numbers stay true only for a table read from this text alone.
    if (m_lines.size() != m_data.size())
        m_lines.clear();
    TextLines lines(text);
    QStringRef line;
    int number = 0;
    while (lines.next(line)) {
        ++number;
        const QStringRef trimmed = trimmedLine(line, separator);
        const QVector<QStringRef> fields = trimmed.split(separator);
        if (m_columns == 0) {
            if (fields.size() > 1)
                m_columns = fields.size();
        } else if (fields.size() != m_columns) {
            if (!trimmed.isEmpty())
                m_leftOut << number;
            continue;
        }
        Row row;
        row.reserve(fields.size());
        for (QStringRef const& field : fields) {
            bool ok = false;
            const int integer = strictToInt(field, &ok);
            if (ok) {
                row << QVariant(integer);
                continue;
            }
            QStringRef value = field.trimmed();
            if (value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
                value = value.size() < 2 ? value.left(0) : value.mid(1, value.size() - 2);
            row << QVariant(value.toString());
        }
        m_data << row;
        if (m_lines.size() + 1 == m_data.size())
            m_lines << number;
    }
}

QStringList XCsv::headers() const
{
    QStringList headers;
    if (!m_data.isEmpty()) {
        for (QVariant const& cell : m_data.first())
            headers << cell.toString();
    }
    return headers;
}
