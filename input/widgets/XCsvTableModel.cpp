#include "XCsvTableModel.h"

#include "XCellValue.h"
#include "XCsv.h"

#include <QBrush>
#include <QFont>
#include <QSet>

namespace {
// "Row 4", "Column 7": numbered from the new count of rows or columns and
// skipped past names already taken. Two columns of the same name would be
// read as the two allele columns of one marker.
QString uniqueName(XCsv const& csv, bool rows, QString const& stem)
{
    QSet<QString> taken;
    const int count = rows ? csv.rows() : csv.columns();
    for (int i = 1; i < count; ++i) {
        const QVariant cell = rows ? csv.at(i).value(0) : csv.at(0).value(i);
        taken.insert(cell.toString());
    }
    for (int n = count;; ++n) {
        const QString name = stem + QLatin1Char(' ') + QString::number(n);
        if (!taken.contains(name))
            return name;
    }
}
} // namespace

XCsvTableModel::XCsvTableModel(XCsv* csv, bool const& readOnly, QObject* parent)
    : QAbstractTableModel(parent), m_csv(csv), m_readOnly(readOnly)
{
    reindex();
    check();
}

int XCsvTableModel::rowCount(QModelIndex const& parent) const
{
    // A table has no children below its cells; item views rely on it.
    if (parent.isValid() || !m_csv)
        return 0;
    return qMax(m_csv->rows() - 1, 0);
}

int XCsvTableModel::columnCount(QModelIndex const& parent) const
{
    if (parent.isValid() || !m_csv)
        return 0;
    return qMax(m_csv->columns() - 1, 0);
}

bool XCsvTableModel::hasCell(int row, int column) const
{
    // Rows shorter than the column count can exist; they show empty cells.
    return row >= 0 && column >= 0 && row + 1 < m_csv->rows() &&
           column + 1 < m_csv->at(row + 1).size();
}

QVariant XCsvTableModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.model() != this)
        return QVariant();
    const int row = index.row(), column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return hasCell(row, column) ? m_csv->at(row + 1, column + 1) : QVariant();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::BackgroundRole: {
        const QVariant value = hasCell(row, column) ? m_csv->at(row + 1, column + 1) : QVariant();
        if (XCellValue::isMissing(value))
            return QBrush(Qt::lightGray);
        if (isError(value))
            return QBrush(Qt::red);
        return QVariant();
    }
    default:
        // No edit-role value: an editor opened on a cell starts empty.
        return QVariant();
    }
}

QVariant XCsvTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical && section >= 0 && section < m_markedRows) {
        switch (role) {
        case Qt::FontRole: {
            QFont font;
            font.setBold(true);
            return font;
        }
        case Qt::ForegroundRole:
            return QBrush(Qt::darkBlue);
        case Qt::ToolTipRole:
            return tr("In the starting collection");
        default:
            break;
        }
    }
    if (role != Qt::DisplayRole || !m_csv || section < 0)
        return QVariant();
    if (orientation == Qt::Horizontal) {
        if (m_csv->rows() < 1 || section + 1 >= m_csv->at(0).size())
            return QVariant();
        return m_csv->at(0, section + 1);
    }
    if (section + 1 >= m_csv->rows() || m_csv->at(section + 1).isEmpty())
        return QVariant();
    return m_csv->at(section + 1, 0);
}

Qt::ItemFlags XCsvTableModel::flags(QModelIndex const& index) const
{
    // The root is no cell; item views expect it to carry no flags.
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!m_readOnly)
        result |= Qt::ItemIsEditable;
    return result;
}

bool XCsvTableModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
    if (m_readOnly || role != Qt::EditRole)
        return false;
    // An invalid index would otherwise land on the corner cell.
    if (!index.isValid() || index.model() != this)
        return false;
    if (!m_csv->setCell(index.row() + 1, index.column() + 1, value))
        return false;
    checkCell(index.row(), index.column());
    emit dataChanged(index, index);
    return true;
}

bool XCsvTableModel::setHeaderData(int section, Qt::Orientation orientation, QVariant const& value,
                                   int role)
{
    if (m_readOnly || role != Qt::EditRole || section < 0)
        return false;
    const bool done = orientation == Qt::Horizontal ? m_csv->setCell(0, section + 1, value)
                                                    : m_csv->setCell(section + 1, 0, value);
    if (done)
        emit headerDataChanged(orientation, section, section);
    return done;
}

bool XCsvTableModel::insertRows(int position, int count, QModelIndex const& parent)
{
    return insertLine(Axis::Row, position, count, parent);
}

bool XCsvTableModel::insertColumns(int position, int count, QModelIndex const& parent)
{
    return insertLine(Axis::Column, position, count, parent);
}

bool XCsvTableModel::removeRows(int row, int count, QModelIndex const& parent)
{
    return removeLine(Axis::Row, row, count, parent);
}

bool XCsvTableModel::removeColumns(int column, int count, QModelIndex const& parent)
{
    return removeLine(Axis::Column, column, count, parent);
}

bool XCsvTableModel::insertLine(Axis axis, int position, int count, QModelIndex const& parent)
{
    if (count != 1 || parent.isValid() || !m_csv)
        return false;
    // Never before the header row or the label column.
    if (position == 0)
        position = 1;
    const bool rows = axis == Axis::Row;
    // Checked before announcing the insertion, so views never see a refused one.
    const int limit = rows ? m_csv->rows() : m_csv->columns();
    if (position < 0 || position > limit || m_csv->rows() < 1)
        return false;
    const int index = position - 1;
    bool done;
    // The names become data of the table and its files, as the wizard's
    // "Row n" and "Column n" do, so they are not translated.
    if (rows) {
        beginInsertRows(QModelIndex(), index, index);
        done = m_csv->addRow(position, uniqueName(*m_csv, true, QStringLiteral("Row")),
                             XCellValue::missingMark());
        endInsertRows();
    } else {
        beginInsertColumns(QModelIndex(), index, index);
        done = m_csv->addColumn(position, uniqueName(*m_csv, false, QStringLiteral("Column")),
                                XCellValue::missingMark());
        endInsertColumns();
    }
    if (!done)
        return false;
    compact();
    for (Cell& cell : m_errors) {
        int& line = rows ? cell.first : cell.second;
        if (line >= index)
            ++line;
    }
    reindex();
    emit modified();
    return true;
}

bool XCsvTableModel::removeLine(Axis axis, int index, int count, QModelIndex const& parent)
{
    if (count != 1 || parent.isValid() || !m_csv)
        return false;
    const bool rows = axis == Axis::Row;
    const int lines = rows ? m_csv->rows() : m_csv->columns();
    // Keep the last data line; refuse out-of-range indices before announcing.
    if (lines < 3 || index < 0 || index + 1 >= lines)
        return false;
    bool done;
    // The names become data of the table and its files, as the wizard's
    // "Row n" and "Column n" do, so they are not translated.
    if (rows) {
        beginRemoveRows(QModelIndex(), index, index);
        done = m_csv->removeRow(index + 1);
        endRemoveRows();
    } else {
        beginRemoveColumns(QModelIndex(), index, index);
        done = m_csv->removeColumn(index + 1);
        endRemoveColumns();
    }
    if (!done)
        return false;
    compact();
    QList<Cell> kept;
    kept.reserve(m_errors.size());
    for (Cell cell : qAsConst(m_errors)) {
        int& line = rows ? cell.first : cell.second;
        if (line == index)
            continue;
        if (line > index)
            --line;
        kept << cell;
    }
    m_errors = kept;
    reindex();
    emit modified();
    return true;
}

void XCsvTableModel::checkCell(int const& row, int const& column)
{
    static const QVariant none;
    if (isError(hasCell(row, column) ? m_csv->at(row + 1, column + 1) : none))
        addError(row, column);
    else
        dropError(row, column);
    emit modified();
}

void XCsvTableModel::check()
{
    const int rows = rowCount(), columns = columnCount();
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c)
            checkCell(r, c);
    }
}

QList<XCsvTableModel::Cell> const& XCsvTableModel::errors() const
{
    compact();
    return m_errors;
}

bool XCsvTableModel::isError(QVariant const& value) const
{
    return !XCellValue::isAllele(value);
}

int* XCsvTableModel::slot(int row, int column) const
{
    if (row < 0 || column < 0 || row >= m_slotRows || column >= m_slotColumns)
        return nullptr;
    return m_slots.data() + qsizetype(row) * m_slotColumns + column;
}

void XCsvTableModel::addError(int row, int column)
{
    int* s = slot(row, column);
    if (!s) {
        // A cell beyond the grid: the table grew behind the model's back.
        reindex(row + 1, column + 1);
        s = slot(row, column);
    }
    if (*s >= 0)
        return;
    *s = m_errors.size();
    m_errors.append(Cell(row, column));
    ++m_open;
}

void XCsvTableModel::dropError(int row, int column)
{
    int* s = slot(row, column);
    if (!s || *s < 0)
        return;
    *s = -1;
    --m_open;
    ++m_stale;
    // Compacting once the stale entries outnumber the open ones keeps the
    // list at most twice its useful size at linear total cost.
    if (m_stale > 64 && m_stale > m_open)
        compact();
}

void XCsvTableModel::compact() const
{
    if (m_stale == 0)
        return;
    QList<Cell> open;
    open.reserve(m_open);
    for (int i = 0; i < m_errors.size(); ++i) {
        Cell const& cell = m_errors.at(i);
        int* s = slot(cell.first, cell.second);
        if (s && *s == i) {
            *s = open.size();
            open << cell;
        }
    }
    m_errors = open;
    m_stale = 0;
}

void XCsvTableModel::reindex(int minRows, int minColumns)
{
    // Covers the table and every listed cell; the list must be compact.
    compact();
    int rows = qMax(minRows, rowCount()), columns = qMax(minColumns, columnCount());
    for (Cell const& cell : qAsConst(m_errors)) {
        rows = qMax(rows, cell.first + 1);
        columns = qMax(columns, cell.second + 1);
    }
    m_slotRows = rows;
    m_slotColumns = columns;
    m_slots.fill(-1, rows * columns);
    for (int i = 0; i < m_errors.size(); ++i)
        *slot(m_errors.at(i).first, m_errors.at(i).second) = i;
    m_open = m_errors.size();
}
