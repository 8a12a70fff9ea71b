#pragma once

#include "XFile.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QVector>

class XCsv;

// What one run of the search produced: for each percentage 1..100 of all
// alleles, the number of alleles covered and the input rows of the core.
class XResult : public XFile
{
    Q_OBJECT

public:
    // (alleles covered, row numbers of the input table, 1 = first data row)
    using Entry = QPair<int, QList<int>>;
    using Entries = QList<Entry>;

    XResult(Entries const& entries, XCsv const* csv, XCsv const* src, QObject* parent = nullptr);
    // A file name or the result's text form (see readTextSource).
    XResult(QString const& source, XCsv const* csv, XCsv const* src, QObject* parent = nullptr);
    ~XResult() override;

    // Alleles covered by entry i, 1-based; 0 outside the entries.
    int count(int const& i) const;
    // The table of the core of entry i, 1-based: the starting collection's
    // rows (or the input's header row), then the chosen rows. Built once and
    // shared by every entry with the same core; the result owns it.
    XCsv* csv(int const& i);

    Entries const& entries() const { return m_entries; }
    XCsv const* input() const { return m_csv; }
    XCsv const* source() const { return m_src; }

    // Per entry, no core with fewer rows holds its share (equal to the
    // entry's size when it is proven minimal). Only the exact search gives
    // them; empty otherwise. Not part of the text form.
    QList<int> const& lowerBounds() const { return m_lowerBounds; }
    void setLowerBounds(QList<int> const& bounds) { m_lowerBounds = bounds; }

    // False once the text form held a part that is not a whole number or a
    // negative allele count: no search writes such a line, so the text is
    // damaged. (A row may stand twice in one core: swaps can bring it back.)
    bool isWellFormed() const { return m_damagedLine == 0; }
    // The first line (from 1) of the text form that made the result damaged;
    // 0 while it is well formed.
    int damagedLine() const { return m_damagedLine; }
    // The line (from 1) of the text form entry i (from 0) was read from;
    // i + 1 for entries not read from text.
    int lineOf(int i) const { return i >= 0 && i < m_lines.size() ? m_lines.at(i) : i + 1; }

    QString toString() const override;
    // Appends the entries read from the text form.
    void fromString(QString& text) override;

private:
    XCsv const* m_csv;
    XCsv const* m_src;
    Entries m_entries;
    QMap<int, XCsv*> m_cache;
    QList<int> m_lowerBounds;
    int m_damagedLine = 0;
    QVector<int> m_lines;
};
