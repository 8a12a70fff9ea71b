#include "TerminalText.h"

#include <QTextStream>

#include <cstdio>

QString terminalText(QString const& text)
{
    QString shown;
    shown.reserve(text.size());
    for (QChar const c : text) {
        const ushort u = c.unicode();
        if (u == '\n') {
            shown += c;
        } else if (u == '\t') {
            shown += QLatin1String("\\t");
        } else if (u == '\r') {
            shown += QLatin1String("\\r");
        } else if (u < 0x20 || u == 0x7f) {
            shown += QStringLiteral("\\x%1").arg(u, 2, 16, QLatin1Char('0'));
        } else if (u >= 0x80 && u < 0xa0) {
            shown += QStringLiteral("\\u%1").arg(u, 4, 16, QLatin1Char('0'));
        } else {
            shown += c;
        }
    }
    return shown;
}

void printError(QString const& text)
{
    if (text.isEmpty())
        return;
    QTextStream err(stderr);
    err << terminalText(text);
    if (!text.endsWith(QLatin1Char('\n')))
        err << '\n';
}
