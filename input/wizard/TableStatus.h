#pragma once

class QLabel;
class QPushButton;
class XCsv;
class XCsvTableModel;

// What the two table pages share: the status line under a table, and the
// editor opened on it.
namespace TableStatus {

// Red "there are errors" text, or the plain invitation to edit; shows the
// label and the Edit button.
void show(QLabel* label, QPushButton* editButton, bool const& hasErrors);

// Opens the table editor on csv (in place, 60 % of the screen), then checks
// the whole table again. Does nothing without a table.
void edit(XCsv* csv, XCsvTableModel* model);

} // namespace TableStatus
