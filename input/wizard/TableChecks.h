#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

class XCsv;

// What the wizard tells the user about a table before Finish, so that a
// table the search would refuse is repaired while the repairs can be kept.
// Each function returns an empty text when there is nothing to say.
namespace TableChecks {

// Red: blocks Next. Text of the status line's warnings: does not block.
QColor problemColor();
QColor warningColor();

// "The file is empty." for an empty file; a complaint when the table has no
// row below its header row, or else when it has no allele column (text split
// by something other than commas).
QString accessionProblem(XCsv const& table, QString const& fileName);

// Names the first column whose header differs between the two tables.
QString headerProblem(XCsv const& input, XCsv const& start);

// Lines the reader left out because their field count differs from the header's.
QString leftOutWarning(QList<int> const& lines);

// The warnings under a table, one per line: what the reader said of the file
// (its encoding), then the lines it left out.
QString notes(QStringList const& readNotes, QList<int> const& leftOut);

} // namespace TableChecks
