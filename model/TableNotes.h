#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class XCsv;

// What the user is told about a table that was read but may not be what its
// file meant: lines left out, a marker whose name returns after another
// marker's columns, accession names that stand twice. The wizard shows these
// notes in orange and vireon-cli prints them on standard error, so both say
// the same. Each function returns an empty text when there is nothing to say.
namespace TableNotes {

// Lines the reader left out because their number of fields differs from the
// header row's, by line number (from 1), the first ten listed.
QString leftOut(QList<int> const& lines);

// A run of adjacent columns that share one marker name.
struct ColumnRun
{
    QString name;
    int first = 0; // grid column, the label column being 0
    int last = 0;
};

// The runs of the header row (the corner cell left out), in column order.
QList<ColumnRun> columnRuns(QStringList const& headers);
// Whether some marker name stands in two runs of columns: the search counts
// the alleles of both as one marker.
bool hasReturningMarker(QStringList const& headers);
// Names each marker whose name returns after another marker's columns, with
// its column ranges as a spreadsheet numbers them (the label column is 1):
// "M" (columns 2-3 and 6-7).
QString returningMarkers(QStringList const& headers);
// Names the accession names that stand in more than one row, with the rows
// as a spreadsheet numbers them (the header row is 1): the file's lines, so
// lines left out before them count too.
QString duplicateNames(XCsv const& table);

// All of the above for a table, one note a line.
QStringList notes(XCsv const& table);

} // namespace TableNotes
