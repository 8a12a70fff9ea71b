#pragma once

#include "FileFormats.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

// Builds the "Workbook" stream of a BIFF8 .xls file: a workbook of empty
// worksheets whose first sheet holds the cells given. Only what readers
// need is written: one font family, the built-in styles, a shared string
// table and plain number and text cells.
class XBiffWriter
{
public:
    static constexpr int maxRows = maxRowsOf(WorkbookKind::Xls);
    static constexpr int maxColumns = maxColumnsOf(WorkbookKind::Xls);
    static constexpr int maxTextLength = 32767;

    explicit XBiffWriter(int sheetCount = 3);

    // Both refuse a position outside the sheet (and setText a text longer
    // than a cell can hold) and return false. Setting a cell twice keeps
    // both records, so callers set each cell once. An empty text becomes a
    // blank cell: some readers reject empty shared strings.
    bool setNumber(int row, int column, double value);
    bool setText(int row, int column, QString const& text);

    QByteArray workbook() const;

private:
    struct Cell
    {
        quint32 row;
        quint16 column;
        enum Kind : quint8 { Number, Text, Blank } kind;
        double number;
        quint32 stringIndex;
    };
    class Sink;

    void writeGlobals(Sink& out, std::vector<int>& sheetOffsetFields) const;
    void writeSheet(Sink& out, int index) const;

    static void writeBof(Sink& out, quint16 type);
    static void writeEof(Sink& out);
    static void writeCodepage(Sink& out);
    static void writeWindow1(Sink& out);
    static void writeFont(Sink& out);
    static void writeXf(Sink& out, bool isStyle);
    static void writeStyle(Sink& out);
    static int writeBoundSheet(Sink& out, QString const& name);
    void writeSst(Sink& out) const;
    static void writeExtSst(Sink& out, std::vector<quint32> const& starts,
                            std::vector<quint16> const& offsets, quint16 perBucket);
    void writeDimensions(Sink& out, bool withCells) const;
    static void writeWindow2(Sink& out, bool selected);
    static void writeNumber(Sink& out, Cell const& cell);
    static void writeRk(Sink& out, Cell const& cell, qint32 value);
    static void writeLabelSst(Sink& out, Cell const& cell);
    static void writeBlank(Sink& out, Cell const& cell);

    int m_sheetCount;
    std::vector<Cell> m_cells;
    QHash<QString, quint32> m_stringIndex;
    QStringList m_strings;
};
