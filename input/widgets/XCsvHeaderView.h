#pragma once

#include <QHash>
#include <QHeaderView>

class QTableView;

// A table header whose sections fit their contents: the header text and the
// cells of that column (for rows, the cell height). Unlike the toolkit's own
// resize-to-contents mode, which measures every section again after each
// edit and each resize of the window, it measures only the sections a change
// touches, so tables of a thousand rows and columns stay quick to edit.
class XCsvHeaderView : public QHeaderView
{
    Q_OBJECT

public:
    XCsvHeaderView(Qt::Orientation orientation, QTableView* table);

    void setModel(QAbstractItemModel* model) override;
    // Fits every section now.
    void fitAll();

protected:
    bool event(QEvent* e) override;

private:
    void fitSections(int first, int last);
    void growForLines(int first, int last);
    int fittedSize(int section) const;
    int cellWidth(int row, int column) const;
    int contentSize(int section) const;
    void scheduleFitAll();
    void onDataChanged(QModelIndex const& topLeft, QModelIndex const& bottomRight);
    void onHeaderDataChanged(Qt::Orientation orientation, int first, int last);
    void onRowsInserted(QModelIndex const& parent, int first, int last);
    void onColumnsInserted(QModelIndex const& parent, int first, int last);
    void onRowsRemoved(QModelIndex const& parent, int first, int last);
    void onColumnsRemoved(QModelIndex const& parent, int first, int last);

    QTableView* m_table;
    // Text advance by cell text: allele tables repeat few distinct values.
    mutable QHash<QString, int> m_advance;
    bool m_fitPending = false;
};
