#pragma once

#include <QString>

class QLabel;
class QPushButton;
class XCsv;
class XCsvTableModel;

// A table a wizard page is preparing, with the model that checks its cells.
// The page owns both until take() hands the table on.
class EditedTable
{
public:
    EditedTable() = default;
    ~EditedTable();
    EditedTable(EditedTable const&) = delete;
    EditedTable& operator=(EditedTable const&) = delete;

    XCsv* table() const { return m_table; }
    // There is a table and every cell of it is valid.
    bool isReady() const;
    bool hasErrors() const;

    // Owns table from now on (deleting the one held before) and checks it.
    void reset(XCsv* table);
    // Deletes the table and its model.
    void drop();
    // Hands the table over without deleting it; its model goes, since it
    // would point at a table the page no longer owns.
    XCsv* take();

    // Opens the table editor on the table (in place, 60 % of the screen),
    // then checks the whole table again. Does nothing without a table.
    void edit();
    // The problem in red when there is one, else the red "there are errors"
    // text, or the plain invitation to edit; shows the label and the Edit button.
    static void showStatus(QLabel* label, QPushButton* editButton, bool hasErrors,
                           QString const& problem = QString());

private:
    XCsv* m_table = nullptr;
    XCsvTableModel* m_model = nullptr;
};
