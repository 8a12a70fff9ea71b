#include "XCsvEditor.h"

#include "VireonResources.h"
#include "XCsvTableModel.h"
#include "XCsvTableWidget.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

XCsvEditor::XCsvEditor(XCsv* csv, bool const& editable, QWidget* parent) : QDialog(parent)
{
    initVireonResources();

    // The dialog owns its model; the table stays the caller's.
    m_model = new XCsvTableModel(csv, false, this);
    m_view = new XCsvTableWidget(false, this);
    m_view->setModel(m_model);

    m_find = new QPushButton(tr("Find"), this);
    m_note = new QLabel(tr("Click on the button to find and correct errors."), this);
    QPalette palette = m_note->palette();
    palette.setBrush(QPalette::WindowText, QBrush(Qt::red));
    m_note->setPalette(palette);
    m_find->hide();
    m_note->hide();
    auto* close = new QPushButton(tr("Close"), this);

    connect(m_model, &XCsvTableModel::modified, this, &XCsvEditor::checkErrors);
    connect(m_find, &QPushButton::clicked, this, &XCsvEditor::highlightError);
    connect(close, &QPushButton::clicked, this, &XCsvEditor::close);

    auto* layout = new QVBoxLayout(this);
    if (editable) {
        struct Tool
        {
            const char* icon;
            QString tip;
            void (XCsvEditor::*slot)();
        };
        const Tool tools[] = {
            {":/img/prepend_row", tr("Insert row before selection"), &XCsvEditor::prependRow},
            {":/img/append_row", tr("Insert row after selection"), &XCsvEditor::appendRow},
            {":/img/remove_row", tr("Remove selected row(s)."), &XCsvEditor::removeRows},
            {":/img/prepend_column", tr("Insert column before selection"),
             &XCsvEditor::prependColumn},
            {":/img/append_column", tr("Insert column after selection"), &XCsvEditor::appendColumn},
            {":/img/remove_column", tr("Remove selected column(s)"), &XCsvEditor::removeColumns},
        };
        auto* toolRow = new QHBoxLayout;
        for (Tool const& tool : tools) {
            auto* button = new QToolButton(this);
            button->setIcon(QIcon(QString::fromLatin1(tool.icon)));
            button->setIconSize(QSize(33, 33));
            button->setToolTip(tool.tip);
            connect(button, &QToolButton::clicked, this, tool.slot);
            toolRow->addWidget(button);
        }
        toolRow->addStretch();
        layout->addLayout(toolRow);
    }
    layout->addWidget(m_view);
    auto* bottomRow = new QHBoxLayout;
    bottomRow->addWidget(m_find);
    bottomRow->addWidget(m_note);
    bottomRow->addStretch();
    bottomRow->addWidget(close);
    layout->addLayout(bottomRow);

    // A parent would otherwise turn the bare hint into a child widget.
    setWindowFlags(parent ? Qt::Dialog | Qt::WindowMaximizeButtonHint
                          : Qt::WindowFlags(Qt::WindowMaximizeButtonHint));
    checkErrors();
}

void XCsvEditor::checkErrors()
{
    const bool errors = m_model->hasErrors();
    m_find->setVisible(errors);
    m_note->setVisible(errors);
}

void XCsvEditor::highlightError()
{
    if (!m_model->hasErrors())
        return;
    const XCsvTableModel::Cell first = m_model->errors().constFirst();
    m_view->setCurrentIndex(m_model->index(first.first, first.second));
    m_view->setFocus(Qt::OtherFocusReason);
}

void XCsvEditor::prependRow()
{
    insertLine(Axis::Row, true);
}

void XCsvEditor::appendRow()
{
    insertLine(Axis::Row, false);
}

void XCsvEditor::removeRows()
{
    removeLines(Axis::Row);
}

void XCsvEditor::prependColumn()
{
    insertLine(Axis::Column, true);
}

void XCsvEditor::appendColumn()
{
    insertLine(Axis::Column, false);
}

void XCsvEditor::removeColumns()
{
    removeLines(Axis::Column);
}

QList<int> XCsvEditor::selectedLines(Axis axis) const
{
    // Distinct lines in the order met; whole-line selections list every cell.
    QList<int> lines;
    QSet<int> seen;
    const QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
    for (QModelIndex const& index : selected) {
        const int line = axis == Axis::Row ? index.row() : index.column();
        if (!seen.contains(line)) {
            seen.insert(line);
            lines << line;
        }
    }
    return lines;
}

void XCsvEditor::insertLine(Axis axis, bool before)
{
    // The model's insertions take a grid position: the model index before
    // which the new line goes, plus one.
    const QList<int> lines = selectedLines(axis);
    const bool rows = axis == Axis::Row;
    int position;
    if (lines.isEmpty())
        position = before ? 0 : (rows ? m_model->rowCount() : m_model->columnCount()) + 1;
    else if (before)
        position = *std::min_element(lines.begin(), lines.end()) + 1;
    else
        position = *std::max_element(lines.begin(), lines.end()) + 2;
    if (rows)
        m_model->insertRows(position, 1);
    else
        m_model->insertColumns(position, 1);
}

void XCsvEditor::removeLines(Axis axis)
{
    // From the highest down, so earlier removals do not shift the rest.
    QList<int> lines = selectedLines(axis);
    std::sort(lines.begin(), lines.end(), std::greater<int>());
    for (int line : qAsConst(lines)) {
        if (axis == Axis::Row)
            m_model->removeRows(line, 1);
        else
            m_model->removeColumns(line, 1);
    }
}
