#pragma once

#include "XCsv.h"

#include <QString>

// What a table must be before a search can take it, in one place for the
// wizard, the window, both searches, the workspace reader and vireon-cli:
// accessions present (a row below the header row), at least one allele
// column, and a starting collection whose header row is the input's, cell
// for cell. The messages are the ones the user reads; the searches word
// their own short errors but decide with these same functions.
namespace TableRules {

// At least one row below the header row.
bool hasAccessions(XCsv::Grid const& grid);
bool hasAccessions(XCsv const& table);
// At least one column beside the label column.
bool hasAlleleColumns(XCsv const& table);
// The index of the first column whose header differs between the two
// tables (their lengths differing counts, at the shorter's end), or -1 when
// the header rows are equal. A table without rows has no header row, which
// differs from any other.
int firstHeaderDifference(XCsv::Grid const& input, XCsv::Grid const& start);
bool sameHeaders(XCsv::Grid const& input, XCsv::Grid const& start);

// Why a table that was read cannot be searched, as the user is told it;
// empty when nothing keeps it from a search. "The file is empty." for a
// file without text (a byte-order mark alone included); a complaint when the
// table has no row below its header row, or else when it has no allele
// column (text split by something other than commas).
QString problem(XCsv const& table);
// Names the first column whose header differs between the two tables,
// empty when they agree (or either has no rows).
QString headerProblem(XCsv const& input, XCsv const& start);

// A table read as a single column: most often text separated by something
// other than commas.
QString noAlleleColumnsMessage();
// For a table text whose every data line was left out because its number
// of fields differs from the header row's.
QString noMatchingLinesMessage(int headerFields);
// A table with its header row alone.
QString noAccessionsMessage();

} // namespace TableRules
