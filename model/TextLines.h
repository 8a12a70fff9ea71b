#pragma once

#include <QString>
#include <QStringRef>

// Walks a text line by line without copying it. A line ends at "\n" or at
// the end of the text; neither that nor one carriage return before it is
// part of the line, and a final line feed does not start another line. This
// is how QTextStream::readLine splits text, without its per-line allocations.
class TextLines
{
public:
    explicit TextLines(QString const& text);

    bool atEnd() const { return m_pos >= m_text.size(); }
    // Returns false at the end of the text.
    bool next(QStringRef& line);

private:
    QString const& m_text;
    int m_pos = 0;
};
