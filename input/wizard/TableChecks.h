#pragma once

#include <QColor>

// The colours in which the wizard shows what model/TableRules and
// model/TableNotes say of a table before Finish.
namespace TableChecks {

// Red: blocks Next. Text of the status line's warnings: does not block.
QColor problemColor();
QColor warningColor();

} // namespace TableChecks
