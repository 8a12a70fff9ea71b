#include "TableMemory.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace {

// Measured on Qt 5 (x86-64) with the probe in bench_model: a cell is a
// QVariant in a heap node plus its slot in the row (40 bytes); a row costs
// about as much again; a text cell adds its string (48 bytes for a short
// one); splitting a line keeps 16 bytes per field of that line at once.
// The raw bytes and the decoded text (two bytes a character) stand beside
// the table while it is built.
constexpr qint64 perField = 40;
constexpr qint64 perLine = 40;
constexpr qint64 perText = 48;
constexpr qint64 perSplitField = 16;
constexpr qint64 perByte = 3;

constexpr qint64 limitBytes = qint64(2) * 1024 * 1024 * 1024;

QString size(qint64 bytes)
{
    const double mb = double(bytes) / (1024.0 * 1024.0);
    if (mb < 1024.0)
        return QCoreApplication::translate("TableMemory", "%1 MB").arg(mb, 0, 'f', 1);
    return QCoreApplication::translate("TableMemory", "%1 GB").arg(mb / 1024.0, 0, 'f', 1);
}

} // namespace

TableMemory::Estimate TableMemory::estimate(QByteArray const& bytes)
{
    Estimate e;
    e.bytes = bytes.size();
    qint64 lineFeeds = 0;
    qint64 returns = 0;
    qint64 quotes = 0;
    // Per separator: in all, on the current line, on the widest line so far,
    // once for line feeds and once for carriage returns as line ends.
    qint64 total[3] = {0, 0, 0};
    qint64 lineLf[3] = {0, 0, 0};
    qint64 lineCr[3] = {0, 0, 0};
    qint64 widestLf[3] = {0, 0, 0};
    qint64 widestCr[3] = {0, 0, 0};
    auto endLine = [](qint64* line, qint64* widest) {
        for (int s = 0; s < 3; ++s) {
            widest[s] = std::max(widest[s], line[s]);
            line[s] = 0;
        }
    };
    for (char const c : bytes) {
        int s = -1;
        switch (c) {
        case ',':
            s = 0;
            break;
        case ';':
            s = 1;
            break;
        case '\t':
            s = 2;
            break;
        case '"':
            ++quotes;
            continue;
        case '\n':
            ++lineFeeds;
            endLine(lineLf, widestLf);
            continue;
        case '\r':
            ++returns;
            endLine(lineCr, widestCr);
            continue;
        default:
            continue;
        }
        ++total[s];
        ++lineLf[s];
        ++lineCr[s];
    }
    endLine(lineLf, widestLf);
    endLine(lineCr, widestCr);
    // Old Mac text ends its lines with carriage returns alone.
    const bool byReturns = lineFeeds == 0 && returns > 0;
    const qint64 ends = byReturns ? returns : lineFeeds;
    qint64 const* widest = byReturns ? widestCr : widestLf;
    const int separator = total[0] > 0 ? 0 : (total[1] >= total[2] ? 1 : 2);
    e.lines = bytes.isEmpty() ? 0 : ends + (bytes.endsWith(byReturns ? '\r' : '\n') ? 0 : 1);
    e.fields = e.lines + total[separator];
    e.widestLine = widest[separator] + 1;
    e.texts = std::max(quotes / 2, e.lines);
    e.memory = perByte * e.bytes + perField * e.fields + perLine * e.lines + perText * e.texts +
               perSplitField * e.widestLine;
    return e;
}

qint64 TableMemory::limit()
{
    return limitBytes;
}

QString TableMemory::problem(Estimate const& e)
{
    if (e.memory <= limit())
        return QString();
    return QCoreApplication::translate("TableMemory",
                                       "is too large to read: its %1 hold %2 fields, which would "
                                       "take about %3 of memory, and Vireon reads tables of up "
                                       "to %4")
        .arg(size(e.bytes), QLocale(QLocale::English).toString(e.fields), size(e.memory),
             size(limit()));
}
