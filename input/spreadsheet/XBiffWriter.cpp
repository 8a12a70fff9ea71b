#include "XBiffWriter.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Record identifiers.
const quint16 idBof = 0x0809;
const quint16 idEof = 0x000A;
const quint16 idCodepage = 0x0042;
const quint16 idWindow1 = 0x003D;
const quint16 idFont = 0x0031;
const quint16 idXf = 0x00E0;
const quint16 idStyle = 0x0293;
const quint16 idBoundSheet = 0x0085;
const quint16 idSst = 0x00FC;
const quint16 idContinue = 0x003C;
const quint16 idExtSst = 0x00FF;
const quint16 idDimensions = 0x0200;
const quint16 idWindow2 = 0x023E;
const quint16 idNumber = 0x0203;
const quint16 idRk = 0x027E;
const quint16 idLabelSst = 0x00FD;
const quint16 idBlank = 0x0201;

// Longest record body; longer data goes on in CONTINUE records.
const int maxRecordData = 8224;
// Cells use the first cell format, which follows the 15 style formats.
const quint16 cellXf = 15;
const quint16 bofGlobals = 0x0005;
const quint16 bofWorksheet = 0x0010;

bool isCompressible(QString const& text)
{
    for (QChar ch : text)
        if (ch.unicode() > 0xFF)
            return false;
    return true;
}

} // namespace

// Little-endian byte writer that frames records: begin() writes the header
// and end() fills in the body length.
class XBiffWriter::Sink
{
public:
    QByteArray bytes;

    int size() const { return bytes.size(); }
    void u8(quint8 v) { bytes.append(char(v)); }
    void u16(quint16 v)
    {
        char b[2];
        qToLittleEndian(v, b);
        bytes.append(b, 2);
    }
    void u32(quint32 v)
    {
        char b[4];
        qToLittleEndian(v, b);
        bytes.append(b, 4);
    }
    void f64(double v)
    {
        quint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        char b[8];
        qToLittleEndian(bits, b);
        bytes.append(b, 8);
    }
    void patchU32(int at, quint32 v) { qToLittleEndian(v, bytes.data() + at); }

    void begin(quint16 id)
    {
        u16(id);
        m_lengthAt = size();
        u16(0);
    }
    void end() { qToLittleEndian(quint16(size() - m_lengthAt - 2), bytes.data() + m_lengthAt); }
    // Bytes still free in the current record's body.
    int room() const { return maxRecordData - (size() - m_lengthAt - 2); }
    // Offset of the current record's header.
    int recordStart() const { return m_lengthAt - 2; }

    // Characters from..to-1, one byte each or UTF-16LE.
    void chars(QString const& text, int from, int to, bool compressed)
    {
        for (int i = from; i < to; ++i) {
            if (compressed)
                u8(quint8(text.at(i).unicode()));
            else
                u16(text.at(i).unicode());
        }
    }

private:
    int m_lengthAt = 0;
};

XBiffWriter::XBiffWriter(int sheetCount) : m_sheetCount(std::max(1, sheetCount)) {}

bool XBiffWriter::setNumber(int row, int column, double value)
{
    if (row < 0 || row >= maxRows || column < 0 || column >= maxColumns)
        return false;
    m_cells.push_back({quint32(row), quint16(column), Cell::Number, value, 0});
    return true;
}

bool XBiffWriter::setText(int row, int column, QString const& text)
{
    if (row < 0 || row >= maxRows || column < 0 || column >= maxColumns ||
        text.size() > maxTextLength)
        return false;
    if (text.isEmpty()) {
        m_cells.push_back({quint32(row), quint16(column), Cell::Blank, 0.0, 0});
        return true;
    }
    auto found = m_stringIndex.constFind(text);
    quint32 index;
    if (found != m_stringIndex.constEnd()) {
        index = found.value();
    } else {
        index = quint32(m_strings.size());
        m_strings << text;
        m_stringIndex.insert(text, index);
    }
    m_cells.push_back({quint32(row), quint16(column), Cell::Text, 0.0, index});
    return true;
}

QByteArray XBiffWriter::workbook() const
{
    Sink out;
    std::vector<int> sheetOffsetFields;
    writeGlobals(out, sheetOffsetFields);
    for (int i = 0; i < m_sheetCount; ++i) {
        out.patchU32(sheetOffsetFields[size_t(i)], quint32(out.size()));
        writeSheet(out, i);
    }
    return out.bytes;
}

void XBiffWriter::writeGlobals(Sink& out, std::vector<int>& sheetOffsetFields) const
{
    writeBof(out, bofGlobals);
    writeCodepage(out);
    writeWindow1(out);
    // Font index 4 does not exist in the format, so four records cover 0-3.
    for (int i = 0; i < 4; ++i)
        writeFont(out);
    for (int i = 0; i < 15; ++i)
        writeXf(out, true);
    writeXf(out, false);
    writeStyle(out);
    for (int i = 0; i < m_sheetCount; ++i)
        sheetOffsetFields.push_back(writeBoundSheet(out, QStringLiteral("Sheet%1").arg(i + 1)));
    writeSst(out);
    writeEof(out);
}

void XBiffWriter::writeSheet(Sink& out, int index) const
{
    const bool withCells = index == 0;
    writeBof(out, bofWorksheet);
    writeDimensions(out, withCells);
    if (withCells) {
        std::vector<Cell const*> order;
        order.reserve(m_cells.size());
        for (Cell const& cell : m_cells)
            order.push_back(&cell);
        // Readers expect cells in row-major order.
        std::stable_sort(order.begin(), order.end(), [](Cell const* a, Cell const* b) {
            return a->row != b->row ? a->row < b->row : a->column < b->column;
        });
        for (Cell const* cell : order) {
            const double v = cell->number;
            if (cell->kind == Cell::Text)
                writeLabelSst(out, *cell);
            else if (cell->kind == Cell::Blank)
                writeBlank(out, *cell);
            else if (std::floor(v) == v && v >= -(1 << 29) && v < (1 << 29))
                writeRk(out, *cell, qint32(v));
            else
                writeNumber(out, *cell);
        }
    }
    writeWindow2(out, withCells);
    writeEof(out);
}

void XBiffWriter::writeBof(Sink& out, quint16 type)
{
    out.begin(idBof);
    out.u16(0x0600); // BIFF8
    out.u16(type);
    out.u16(0x0DBB); // build
    out.u16(0x07CC); // year
    out.u32(0);      // file history
    out.u32(0x0006); // lowest version that can read the file
    out.end();
}

void XBiffWriter::writeEof(Sink& out)
{
    out.begin(idEof);
    out.end();
}

void XBiffWriter::writeCodepage(Sink& out)
{
    out.begin(idCodepage);
    out.u16(1200); // UTF-16
    out.end();
}

void XBiffWriter::writeWindow1(Sink& out)
{
    out.begin(idWindow1);
    out.u16(0);      // left
    out.u16(0);      // top
    out.u16(0x3A5C); // width
    out.u16(0x23BE); // height
    out.u16(0x0038); // show scroll bars and sheet tabs
    out.u16(0);      // active sheet
    out.u16(0);      // first visible tab
    out.u16(1);      // selected tabs
    out.u16(0x0258); // tab bar width ratio
    out.end();
}

void XBiffWriter::writeFont(Sink& out)
{
    const QByteArray name("Arial");
    out.begin(idFont);
    out.u16(200);    // 10 pt in twips
    out.u16(0);      // no italic, strike-out
    out.u16(0x7FFF); // automatic colour
    out.u16(400);    // normal weight
    out.u16(0);      // no super- or subscript
    out.u8(0);       // no underline
    out.u8(0);       // family
    out.u8(0);       // character set
    out.u8(0);
    out.u8(quint8(name.size()));
    out.u8(0); // compressed
    out.bytes.append(name);
    out.end();
}

void XBiffWriter::writeXf(Sink& out, bool isStyle)
{
    out.begin(idXf);
    out.u16(0);                         // font
    out.u16(0);                         // number format: General
    out.u16(isStyle ? 0xFFF5 : 0x0001); // locked; a style has no parent
    out.u8(0x20);                       // bottom-aligned
    out.u8(0);                          // no rotation
    out.u8(0);                          // no indent
    out.u8(isStyle ? 0x00 : 0xF8);      // attributes taken from the parent style
    out.u32(0);                         // no borders
    out.u32(0);                         // border colours
    out.u16(0x20C0);                    // automatic pattern colours
    out.end();
}

void XBiffWriter::writeStyle(Sink& out)
{
    out.begin(idStyle);
    out.u16(0x8000); // built-in, format 0
    out.u8(0);       // "Normal"
    out.u8(0xFF);
    out.end();
}

int XBiffWriter::writeBoundSheet(Sink& out, QString const& name)
{
    out.begin(idBoundSheet);
    const int offsetField = out.size();
    out.u32(0); // the sheet's BOF offset, filled in later
    out.u16(0); // visible worksheet
    out.u8(quint8(name.size()));
    out.u8(0);
    out.chars(name, 0, name.size(), true);
    out.end();
    return offsetField;
}

void XBiffWriter::writeSst(Sink& out) const
{
    const quint32 unique = quint32(m_strings.size());
    const quint16 perBucket = quint16(std::max<quint32>(8, (unique + 127) / 128));
    std::vector<quint32> bucketStarts;
    std::vector<quint16> bucketOffsets;

    quint32 total = 0;
    for (Cell const& cell : m_cells)
        total += cell.kind == Cell::Text ? 1 : 0;

    out.begin(idSst);
    out.u32(total);
    out.u32(unique);
    for (quint32 i = 0; i < unique; ++i) {
        QString const& text = m_strings.at(int(i));
        const bool compressed = isCompressible(text);
        const int charSize = compressed ? 1 : 2;
        // A string's header and first character never straddle two records.
        if (out.room() < 3 + charSize) {
            out.end();
            out.begin(idContinue);
        }
        if (i % perBucket == 0) {
            bucketStarts.push_back(quint32(out.size()));
            bucketOffsets.push_back(quint16(out.size() - out.recordStart()));
        }
        out.u16(quint16(text.size()));
        out.u8(compressed ? 0x00 : 0x01);
        int done = 0;
        while (done < text.size()) {
            const int fit = std::min(text.size() - done, out.room() / charSize);
            if (fit == 0) {
                // The rest continues in a new record, led by its own flags.
                out.end();
                out.begin(idContinue);
                out.u8(compressed ? 0x00 : 0x01);
                continue;
            }
            out.chars(text, done, done + fit, compressed);
            done += fit;
        }
    }
    out.end();
    writeExtSst(out, bucketStarts, bucketOffsets, perBucket);
}

void XBiffWriter::writeExtSst(Sink& out, std::vector<quint32> const& starts,
                              std::vector<quint16> const& offsets, quint16 perBucket)
{
    out.begin(idExtSst);
    out.u16(perBucket);
    for (size_t i = 0; i < starts.size(); ++i) {
        out.u32(starts[i]);
        out.u16(offsets[i]);
        out.u16(0);
    }
    out.end();
}

void XBiffWriter::writeDimensions(Sink& out, bool withCells) const
{
    quint32 lastRow = 0;
    quint16 lastColumn = 0;
    const bool any = withCells && !m_cells.empty();
    if (any) {
        for (Cell const& cell : m_cells) {
            lastRow = std::max(lastRow, cell.row + 1);
            lastColumn = std::max(lastColumn, quint16(cell.column + 1));
        }
    }
    out.begin(idDimensions);
    out.u32(0);          // first row
    out.u32(lastRow);    // last row + 1
    out.u16(0);          // first column
    out.u16(lastColumn); // last column + 1
    out.u16(0);
    out.end();
}

void XBiffWriter::writeWindow2(Sink& out, bool selected)
{
    out.begin(idWindow2);
    // Grid lines, headings, zeros, outline symbols; the first sheet is
    // the selected and shown one.
    out.u16(selected ? 0x06B6 : 0x00B6);
    out.u16(0);  // top row
    out.u16(0);  // left column
    out.u32(64); // automatic grid-line colour
    out.u16(0);  // zoom in page-break preview: default
    out.u16(0);  // zoom in normal view: default
    out.u32(0);
    out.end();
}

void XBiffWriter::writeNumber(Sink& out, Cell const& cell)
{
    out.begin(idNumber);
    out.u16(quint16(cell.row));
    out.u16(cell.column);
    out.u16(cellXf);
    out.f64(cell.number);
    out.end();
}

void XBiffWriter::writeRk(Sink& out, Cell const& cell, qint32 value)
{
    out.begin(idRk);
    out.u16(quint16(cell.row));
    out.u16(cell.column);
    out.u16(cellXf);
    // A 30-bit integer, flagged as integer and not scaled by 100.
    out.u32((quint32(value) << 2) | 0x02);
    out.end();
}

void XBiffWriter::writeLabelSst(Sink& out, Cell const& cell)
{
    out.begin(idLabelSst);
    out.u16(quint16(cell.row));
    out.u16(cell.column);
    out.u16(cellXf);
    out.u32(cell.stringIndex);
    out.end();
}

void XBiffWriter::writeBlank(Sink& out, Cell const& cell)
{
    out.begin(idBlank);
    out.u16(quint16(cell.row));
    out.u16(cell.column);
    out.u16(cellXf);
    out.end();
}
