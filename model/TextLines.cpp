#include "TextLines.h"

TextLines::TextLines(QString const& text) : m_text(text)
{
    // A byte-order mark is framing, not part of the first line.
    if (!m_text.isEmpty() && m_text.at(0) == QChar(0xFEFF))
        m_pos = 1;
}

bool TextLines::next(QStringRef& line)
{
    if (atEnd())
        return false;
    int end = m_text.indexOf(QLatin1Char('\n'), m_pos);
    if (end < 0)
        end = m_text.size();
    const int next = end + 1;
    // One carriage return before the line end goes, whether the line ends
    // with a line feed or with the text.
    if (end > m_pos && m_text.at(end - 1) == QLatin1Char('\r'))
        --end;
    line = m_text.midRef(m_pos, end - m_pos);
    m_pos = next;
    return true;
}
