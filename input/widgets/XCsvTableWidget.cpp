#include "XCsvTableWidget.h"

#include "XCsvHeaderView.h"
#include "XCsvTableModel.h"

#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>

namespace {
// Marks the models setCsv() made, so that the view deletes only its own.
const char* const kOwnModel = "vireonViewOwnsModel";
} // namespace

XCsvTableWidget::XCsvTableWidget(bool const& readOnly, QWidget* parent) : QTableView(parent)
{
    // Both headers fit their sections to the contents.
    setHorizontalHeader(new XCsvHeaderView(Qt::Horizontal, this));
    setVerticalHeader(new XCsvHeaderView(Qt::Vertical, this));
    if (!readOnly) {
        connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
                &XCsvTableWidget::renameHorizontalHeader);
        connect(verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
                &XCsvTableWidget::renameVerticalHeader);
    }
}

XCsvTableWidget::~XCsvTableWidget()
{
    QAbstractItemModel* current = model();
    if (current && current->property(kOwnModel).toBool())
        delete current;
}

void XCsvTableWidget::setCsv(XCsv* csv, int const& markedRows)
{
    if (!csv) {
        setModel(nullptr);
        return;
    }
    auto* next = new XCsvTableModel(csv, true, nullptr);
    next->setProperty(kOwnModel, true);
    next->setMarkedRows(markedRows);
    setModel(next);
}

void XCsvTableWidget::setModel(QAbstractItemModel* model)
{
    QAbstractItemModel* previous = this->model();
    QTableView::setModel(model);
    if (previous && previous != model && previous->property(kOwnModel).toBool())
        delete previous;
    if (!model)
        return;
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        if (auto* fitting = qobject_cast<XCsvHeaderView*>(header))
            fitting->fitAll();
    }
}

void XCsvTableWidget::renameHorizontalHeader(int section)
{
    rename(Qt::Horizontal, section, tr("Rename column header"));
}

void XCsvTableWidget::renameVerticalHeader(int section)
{
    rename(Qt::Vertical, section, tr("Rename row header"));
}

void XCsvTableWidget::rename(Qt::Orientation orientation, int section, QString const& title)
{
    QAbstractItemModel* m = model();
    if (!m)
        return;
    const QString current = m->headerData(section, orientation, Qt::DisplayRole).toString();
    bool ok = false;
    const QString text = QInputDialog::getText(this, title, tr("Select a new text for header"),
                                               QLineEdit::Normal, current, &ok);
    if (!ok || text.isEmpty())
        return;
    m->setHeaderData(section, orientation, text, Qt::EditRole);
}
