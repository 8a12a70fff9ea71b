// The result's text form: reading, writing back, and the core tables built
// from the entries over a small input table.

#include "FuzzText.h"
#include "XCsv.h"
#include "XResult.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size)
{
    const QString text = fuzzText(data, size);

    XResult result(text, nullptr, nullptr);
    // The written form holds at most 100 entries and reads back exactly.
    const QString written = result.toString();
    XResult reread(written, nullptr, nullptr);
    if (reread.entries() != result.entries().mid(0, 100))
        abort();

    // Row numbers come from outside: the core tables must cope with any.
    // The entries are those just read; reading the text again would only
    // double the cost of each input.
    XCsv input;
    XCsv start;
    XResult withTables(result.entries(), &input, &start);
    const int shown = qMin(100, withTables.entries().size());
    for (int i = 1; i <= shown; ++i) {
        XCsv const* core = withTables.csv(i);
        if (!core || core->rows() < start.rows() || withTables.count(i) != result.count(i))
            abort();
    }
    return 0;
}
