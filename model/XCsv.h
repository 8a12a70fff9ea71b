#pragma once

#include "XFile.h"

#include <QList>
#include <QVariant>

// A table of accessions. Row 0 holds the column headers (the corner cell
// first), column 0 holds the row labels; both are part of the grid, so
// rows() and columns() count them. Cells are ints or text ("*" for missing).
class XCsv : public XFile
{
    Q_OBJECT

public:
    using Row = QList<QVariant>;
    using Grid = QList<Row>;

    // The default table: "Name","H1","H2" over two accessions, all text.
    explicit XCsv(QObject* parent = nullptr);
    // Shares the grid as it stands. The table has no parent whatever is
    // passed: the caller owns it.
    explicit XCsv(Grid const& data, QObject* parent = nullptr);
    // A file name or comma-separated text (see readTextSource).
    explicit XCsv(QString const& source, QObject* parent = nullptr);
    // A table read from comma-separated text that is never taken for a file
    // name, however short: the content of a file the user chose.
    static XCsv* fromText(QString text);
    ~XCsv() override;

    QVariant const& at(int const& row, int const& column) const
    {
        return m_data.at(row).at(column);
    }
    Row const& at(int const& row) const { return m_data.at(row); }
    Grid const& data() const { return m_data; }
    int rows() const { return m_data.size(); }
    int columns() const { return m_columns; }
    // Whether every row holds exactly columns() cells.
    bool isRectangular() const;
    // Line numbers (from 1) of the non-blank lines that reading text left out
    // because their number of fields differs from the header row's.
    QList<int> const& leftOutLines() const { return m_leftOut; }

    bool addRow(int const& index, QString const& label, QVariant const& fill);
    bool removeRow(int const& index);
    bool addColumn(int const& index, QString const& header, QVariant const& fill);
    bool removeColumn(int const& index);
    bool setCell(int const& row, int const& column, QVariant const& value);

    QString toString() const override;
    // Appends the rows read from comma-separated text.
    void fromString(QString& text) override;

private:
    Grid m_data;
    int m_columns = 0;
    QList<int> m_leftOut;
};
