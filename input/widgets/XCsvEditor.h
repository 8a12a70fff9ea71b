#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class XCsv;
class XCsvTableModel;
class XCsvTableWidget;

// Modal dialog in which the user corrects a table in place: cells edited in
// the view, headers renamed by double-click, rows and columns inserted and
// removed from a tool row, and Find jumping to the oldest invalid cell.
class XCsvEditor : public QDialog
{
    Q_OBJECT

public:
    // Edits csv itself (no copy, no undo); the caller keeps it alive.
    // editable only decides whether the row and column tools are shown.
    XCsvEditor(XCsv* csv, bool const& editable, QWidget* parent = nullptr);

public slots:
    void checkErrors();
    void highlightError();
    void prependRow();
    void appendRow();
    void removeRows();
    void prependColumn();
    void appendColumn();
    void removeColumns();

private:
    enum class Axis { Row, Column };

    void insertLine(Axis axis, bool before);
    void removeLines(Axis axis);
    QList<int> selectedLines(Axis axis) const;

    XCsvTableModel* m_model;
    XCsvTableWidget* m_view;
    QPushButton* m_find;
    QLabel* m_note;
};
