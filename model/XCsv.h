#pragma once

#include "XFile.h"

#include <QList>
#include <QStringList>
#include <QVariant>
#include <QVector>

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
    // A table read from the content of a file the user chose, never taken
    // for a file name however short, with the separator that separatorOf()
    // finds in it; *separator, when given, receives that separator.
    static XCsv* fromText(QString text, QChar* separator = nullptr);
    // The character that separates the fields of a table file: a comma,
    // unless no line holds one (so commas would give a single column) and
    // the first line holds semicolons or tabs, as spreadsheets write text in
    // locales whose decimal mark is the comma. Then the one of those two that
    // the first line holds more often, semicolons on a tie.
    static QChar separatorOf(QString const& text);
    // What the user is told about a file read with a separator other than
    // the comma; empty for the comma.
    static QString separatorNote(QChar separator);
    ~XCsv() override;

    QVariant const& at(int const& row, int const& column) const
    {
        return m_data.at(row).at(column);
    }
    Row const& at(int const& row) const { return m_data.at(row); }
    Grid const& data() const { return m_data; }
    int rows() const { return m_data.size(); }
    int columns() const { return m_columns; }
    // The header row as text (the corner cell first); empty for an empty
    // table.
    QStringList headers() const;
    // Whether every row holds exactly columns() cells.
    bool isRectangular() const;
    // Line numbers (from 1) of the non-blank lines that reading text left out
    // because their number of fields differs from the header row's.
    QList<int> const& leftOutLines() const { return m_leftOut; }
    // The line (from 1) of the text a row was read from, so that messages
    // about a row can name the line of its file; row + 1 for a table not
    // read from text, or once rows have been added or removed.
    int lineOf(int row) const;

    bool addRow(int const& index, QString const& label, QVariant const& fill);
    bool removeRow(int const& index);
    bool addColumn(int const& index, QString const& header, QVariant const& fill);
    bool removeColumn(int const& index);
    bool setCell(int const& row, int const& column, QVariant const& value);

    QString toString() const override;
    // Appends the rows read from comma-separated text.
    void fromString(QString& text) override;

private:
    // Appends the rows of text whose fields are separated by separator.
    void read(QString const& text, QChar separator);

    Grid m_data;
    int m_columns = 0;
    QList<int> m_leftOut;
    QVector<int> m_lines;
};
