#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QPair>
#include <QVector>

class XCsv;

// Shows the data part of a table (grid row 0 and column 0 become the
// headers, so model cell (r, c) is grid cell (r + 1, c + 1)) and keeps the
// positions of invalid allele cells in the order they were found.
class XCsvTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Cell = QPair<int, int>;

    // Does not take the table: the caller keeps it alive while the model lives.
    XCsvTableModel(XCsv* csv, bool const& readOnly, QObject* parent = nullptr);

    int rowCount(QModelIndex const& parent = QModelIndex()) const override;
    int columnCount(QModelIndex const& parent = QModelIndex()) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;
    bool setData(QModelIndex const& index, QVariant const& value, int role = Qt::EditRole) override;
    bool setHeaderData(int section, Qt::Orientation orientation, QVariant const& value,
                       int role = Qt::EditRole) override;

    // Insertions take a grid position (the model index before which the new
    // line goes, plus one; 0 counts as 1), removals a model index. Only one
    // line at a time; the last data row or column is never removed.
    bool insertRows(int position, int count, QModelIndex const& parent = QModelIndex()) override;
    bool insertColumns(int position, int count, QModelIndex const& parent = QModelIndex()) override;
    bool removeRows(int row, int count, QModelIndex const& parent = QModelIndex()) override;
    bool removeColumns(int column, int count, QModelIndex const& parent = QModelIndex()) override;

    void checkCell(int const& row, int const& column);
    void check();

    // Invalid cells as (row, column), oldest first, each once.
    QList<Cell> const& errors() const;
    bool hasErrors() const { return m_open > 0; }
    bool isError(QVariant const& value) const;

    // The first `count` data rows get a bold, tinted label: in a core table
    // they are the starting collection, there before the search chose.
    void setMarkedRows(int const& count) { m_markedRows = count; }
    int markedRows() const { return m_markedRows; }

signals:
    // After every cell check and every insertion or removal.
    void modified();

private:
    enum class Axis { Row, Column };

    bool insertLine(Axis axis, int position, int count, QModelIndex const& parent);
    bool removeLine(Axis axis, int index, int count, QModelIndex const& parent);
    bool hasCell(int row, int column) const;
    int* slot(int row, int column) const;
    void addError(int row, int column);
    void dropError(int row, int column);
    void compact() const;
    void reindex(int minRows = 0, int minColumns = 0);

    XCsv* m_csv;
    const bool m_readOnly;
    // The list may hold stale entries (errors since fixed) until the next
    // compaction. m_slots is a grid over the model's cells holding, for each
    // open error, the index of its entry in the list, and -1 elsewhere: an
    // entry is open when its cell's slot points back at it. Membership and
    // removal are thus constant-time on large tables, while errors() still
    // reads in order of discovery.
    mutable QList<Cell> m_errors;
    mutable QVector<int> m_slots;
    int m_slotRows = 0;
    int m_slotColumns = 0;
    int m_open = 0;
    mutable int m_stale = 0;
    int m_markedRows = 0;
};
