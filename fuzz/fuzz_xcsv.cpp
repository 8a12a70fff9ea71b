// Comma-separated table text: the text constructor, fromString appending to
// an existing table, the written form read back, and the reading of a
// file's text with the separator found in it. Each input is read no more
// often than these need: every reading costs as much as the others.

#include "FuzzText.h"
#include "XCsv.h"

#include <cstdlib>
#include <memory>

namespace {

// Rows before the first line of several fields hold one cell each; from that
// line on every row has exactly columns() cells.
void checkShape(XCsv const& table, int firstRow)
{
    bool wide = false;
    for (int r = firstRow; r < table.rows(); ++r) {
        const int cells = table.at(r).size();
        if (cells > 1 && !wide) {
            if (table.columns() != cells)
                abort();
            wide = true;
        } else if (wide ? cells != table.columns() : cells != 1) {
            abort();
        }
    }
    if (!wide && table.columns() != 0)
        abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    QString text = fuzzText(data, size);

    XCsv table(text);
    checkShape(table, 0);

    // A rectangular table survives writing: what was written once reads back
    // to the same text. (One-cell rows above the header are written with the
    // header's separators, so other tables need not.)
    const QString written = table.toString();
    if (table.columns() >= 2 && table.isRectangular()) {
        XCsv reread(written);
        if (reread.toString() != written)
            abort();
    }

    XCsv appended;
    const int before = appended.rows();
    appended.fromString(text);
    checkShape(appended, before);
    if (appended.rows() != before + table.rows())
        abort();

    // The reading of a file's text, with the separator found in it: the
    // comma reads exactly as the text constructor above (fromString on an
    // empty table), another separator by the same shape rules.
    QChar separator;
    const std::unique_ptr<XCsv> chosen(XCsv::fromText(text, &separator));
    checkShape(*chosen, 0);
    if (separator == QLatin1Char(',')) {
        if (chosen->data() != table.data() || chosen->columns() != table.columns())
            abort();
    } else if (XCsv::separatorNote(separator).isEmpty()) {
        abort();
    }
    return 0;
}
