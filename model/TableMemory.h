#pragma once

#include <QByteArray>
#include <QString>

// What reading a table text costs in memory, estimated from the bytes of
// its file before any of it is decoded: the file's size matters less than
// its shape. 127 MB of commas is one line of 133 million empty fields, and
// every field becomes a cell of about 40 bytes, so it would take gigabytes;
// the same bytes as a table of three-digit alleles take a tenth of that.
// Every text file the user picks becomes tables (a table file, or a
// workspace that holds them), so each is estimated before it is read.
namespace TableMemory {

struct Estimate
{
    qint64 bytes = 0;
    qint64 lines = 0;
    // Fields of all lines together, and of the widest line.
    qint64 fields = 0;
    qint64 widestLine = 0;
    // Cells that will hold text (quoted fields, and one label a line).
    qint64 texts = 0;
    // The peak memory of reading the text into a table, in bytes.
    qint64 memory = 0;
};

// Counts lines (a line feed ends one; a carriage return too where the text
// has no line feed) and fields (separated by commas, or where there is no
// comma by semicolons or tabs, as XCsv::separatorOf decides) in one pass.
// A bound from above that stays within twice the measured peak for every
// shape tried (bench_model), and close to it for ordinary tables.
Estimate estimate(QByteArray const& bytes);

// The most memory a table may take to read. A constant for now: every table
// of ordinary shape within TextFile's size limit fits in it, and the
// hostile shapes (commas alone, "1," repeated) do not. A limit drawn from
// the machine's memory would replace it here.
qint64 limit();

// "is too large to read: its 127.0 MB hold 133,169,152 fields, which would
// take about 5.2 GB of memory, and Vireon reads tables of up to 2.0 GB";
// empty when the estimate is within the limit.
QString problem(Estimate const& estimate);

} // namespace TableMemory
