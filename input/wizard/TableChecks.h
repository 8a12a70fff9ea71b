#pragma once

#include <QColor>
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

// Names the first column whose header differs between the two tables.
QString headerProblem(XCsv const& input, XCsv const& start);

// The warnings under a table, one per line: what the reader said of the file
// (its encoding), then what TableNotes finds in the table itself.
QString notes(QStringList const& readNotes, XCsv const& table);

} // namespace TableChecks
