#include "XCsvHeaderView.h"

#include <QEvent>
#include <QTableView>
#include <QTimer>

XCsvHeaderView::XCsvHeaderView(Qt::Orientation orientation, QTableView* table)
    : QHeaderView(orientation, table), m_table(table)
{
    // As the table view sets up its own headers: click to select a line.
    setSectionsClickable(true);
    setHighlightSections(true);
    setSectionResizeMode(QHeaderView::Fixed);
}

void XCsvHeaderView::setModel(QAbstractItemModel* next)
{
    QAbstractItemModel* previous = model();
    if (previous == next)
        return;
    if (previous)
        disconnect(previous, nullptr, this, nullptr);
    QHeaderView::setModel(next);
    m_advance.clear();
    if (!next)
        return;
    connect(next, &QAbstractItemModel::dataChanged, this, &XCsvHeaderView::onDataChanged);
    connect(next, &QAbstractItemModel::headerDataChanged, this,
            &XCsvHeaderView::onHeaderDataChanged);
    connect(next, &QAbstractItemModel::rowsInserted, this, &XCsvHeaderView::onRowsInserted);
    connect(next, &QAbstractItemModel::columnsInserted, this, &XCsvHeaderView::onColumnsInserted);
    connect(next, &QAbstractItemModel::rowsRemoved, this, &XCsvHeaderView::onRowsRemoved);
    connect(next, &QAbstractItemModel::columnsRemoved, this, &XCsvHeaderView::onColumnsRemoved);
    connect(next, &QAbstractItemModel::modelReset, this, &XCsvHeaderView::scheduleFitAll);
    connect(next, &QAbstractItemModel::layoutChanged, this, &XCsvHeaderView::scheduleFitAll);
    // The table view takes the model after its headers and measures no cell
    // before: fit once it has (the table view also asks for it at once).
    scheduleFitAll();
}

bool XCsvHeaderView::event(QEvent* e)
{
    switch (e->type()) {
    case QEvent::Polish:
    case QEvent::FontChange:
    case QEvent::StyleChange:
        m_advance.clear();
        scheduleFitAll();
        break;
    default:
        break;
    }
    return QHeaderView::event(e);
}

void XCsvHeaderView::fitAll()
{
    m_fitPending = false;
    if (model())
        fitSections(0, count() - 1);
}

void XCsvHeaderView::scheduleFitAll()
{
    if (m_fitPending)
        return;
    m_fitPending = true;
    QTimer::singleShot(0, this, [this]() {
        if (m_fitPending)
            fitAll();
    });
}

void XCsvHeaderView::fitSections(int first, int last)
{
    last = qMin(last, count() - 1);
    for (int s = qMax(first, 0); s <= last; ++s) {
        const int size = fittedSize(s);
        if (size != sectionSize(s))
            resizeSection(s, size);
    }
}

int XCsvHeaderView::fittedSize(int section) const
{
    const QSize header = sectionSizeFromContents(section);
    const int own = orientation() == Qt::Horizontal ? header.width() : header.height();
    const int size = qMax(own, contentSize(section));
    return qBound(minimumSectionSize(), size, maximumSectionSize());
}

int XCsvHeaderView::cellWidth(int row, int column) const
{
    const QString text = model()->index(row, column).data().toString();
    auto it = m_advance.constFind(text);
    if (it == m_advance.constEnd())
        it = m_advance.insert(text, m_table->fontMetrics().horizontalAdvance(text));
    return it.value();
}

// The cells' share of a section, as the view's delegate measures them; the
// widest text of a column is found by its advance and measured once.
int XCsvHeaderView::contentSize(int section) const
{
    QAbstractItemModel* m = model();
    const int grid = m_table->showGrid() ? 1 : 0;
    if (orientation() == Qt::Vertical) {
        // Cells hold one line of text: any cell of the row gives its height.
        if (m->columnCount() == 0)
            return 0;
        return m_table->sizeHintForIndex(m->index(section, 0)).height() + grid;
    }
    const int rows = m->rowCount();
    int widest = -1, widestRow = -1;
    for (int r = 0; r < rows; ++r) {
        const int w = cellWidth(r, section);
        if (w > widest) {
            widest = w;
            widestRow = r;
        }
    }
    if (widestRow < 0)
        return 0;
    return m_table->sizeHintForIndex(m->index(widestRow, section)).width() + grid;
}

// New rows can only widen columns: measure just their cells.
void XCsvHeaderView::growForLines(int first, int last)
{
    const int columns = model()->columnCount();
    const int grid = m_table->showGrid() ? 1 : 0;
    for (int c = 0; c < columns; ++c) {
        int widest = sectionSize(c);
        for (int r = first; r <= last; ++r) {
            if (cellWidth(r, c) >= widest)
                widest =
                    qMax(widest, m_table->sizeHintForIndex(model()->index(r, c)).width() + grid);
        }
        if (widest > sectionSize(c))
            resizeSection(c, qMin(widest, maximumSectionSize()));
    }
}

void XCsvHeaderView::onDataChanged(QModelIndex const& topLeft, QModelIndex const& bottomRight)
{
    if (orientation() == Qt::Horizontal)
        fitSections(topLeft.column(), bottomRight.column());
    else
        fitSections(topLeft.row(), bottomRight.row());
}

void XCsvHeaderView::onHeaderDataChanged(Qt::Orientation changed, int first, int last)
{
    if (changed == orientation())
        fitSections(first, last);
}

void XCsvHeaderView::onRowsInserted(QModelIndex const& parent, int first, int last)
{
    if (parent.isValid())
        return;
    if (orientation() == Qt::Vertical)
        fitSections(first, last);
    else
        growForLines(first, last);
}

void XCsvHeaderView::onColumnsInserted(QModelIndex const& parent, int first, int last)
{
    if (!parent.isValid() && orientation() == Qt::Horizontal)
        fitSections(first, last);
}

void XCsvHeaderView::onRowsRemoved(QModelIndex const& parent, int, int)
{
    // The widest cell of a column may have gone.
    if (!parent.isValid() && orientation() == Qt::Horizontal)
        scheduleFitAll();
}

void XCsvHeaderView::onColumnsRemoved(QModelIndex const& parent, int first, int)
{
    // Row heights come from the first column.
    if (!parent.isValid() && orientation() == Qt::Vertical && first == 0)
        scheduleFitAll();
}
