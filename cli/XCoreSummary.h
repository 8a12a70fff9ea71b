#pragma once

#include <QCoreApplication>
#include <QString>

class XCsv;
class XResult;

// The command line's summary of a result: one line per distinct core with
// the percentages it serves, its accessions (starting collection included),
// the alleles the search reports and the alleles its accessions hold,
// recounted from the tables; then the total and the seed.
class XCoreSummary
{
    Q_DECLARE_TR_FUNCTIONS(XCoreSummary)

public:
    static QString text(XResult& result, int const& total, int const& seed);
    // The same with the seed as it is to be shown ("not recorded").
    static QString text(XResult& result, int const& total, QString const& seed);
    // The exact search's summary: per core, "minimal" or the lower bound
    // "≥ B" (in accessions, starting collection included), then the alleles
    // and the (marker, 0) pairs left out of them, and a last line with the
    // entries proven and the time (negative: not recorded).
    static QString exactText(XResult& result, int const& total, int const& zeroPairs,
                             double const& seconds);
    // Where a table holds a cell that is not an allele, for the line after
    // "Invalid value in csv.": `input row 136 (AFBTLAG9436), column INRA5:
    // "1.5"`, rows counted as a spreadsheet shows them (the header is row 1);
    // `input row 2048, column 16384 (no header): ""` where the row has no
    // name and the column no header. Empty when there is none.
    static QString invalidCell(QString const& which, XCsv const* table);
    // The lines above for the starting collection ("start") and the input,
    // each ending in a newline.
    static QString invalidCells(XCsv const* start, XCsv const* input);
};
