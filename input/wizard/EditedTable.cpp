#include "EditedTable.h"

#include "CenterResize.h"
#include "TableChecks.h"
#include "XCsv.h"
#include "XCsvEditor.h"
#include "XCsvTableModel.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPalette>
#include <QPushButton>

EditedTable::~EditedTable()
{
    drop();
}

bool EditedTable::isReady() const
{
    // The model exists exactly while there is a table.
    return m_model && !m_model->hasErrors();
}

bool EditedTable::hasErrors() const
{
    return m_model && m_model->hasErrors();
}

void EditedTable::reset(XCsv* table)
{
    drop();
    m_table = table;
    if (m_table)
        m_model = new XCsvTableModel(m_table, true, nullptr);
}

void EditedTable::drop()
{
    delete m_model;
    delete m_table;
    m_model = nullptr;
    m_table = nullptr;
}

XCsv* EditedTable::take()
{
    XCsv* table = m_table;
    delete m_model;
    m_model = nullptr;
    m_table = nullptr;
    return table;
}

void EditedTable::edit()
{
    if (!m_table)
        return;
    XCsvEditor editor(m_table, true, nullptr);
    centerResize(editor, 60);
    editor.exec();
    m_model->check();
}

void EditedTable::showStatus(QLabel* label, QPushButton* editButton, bool hasErrors,
                             QString const& problem)
{
    QPalette palette;
    QString text;
    if (!problem.isEmpty() || hasErrors)
        palette.setBrush(QPalette::WindowText,
                         QBrush(TableChecks::problemColor(), Qt::SolidPattern));
    if (!problem.isEmpty()) {
        text = problem;
    } else if (hasErrors) {
        text = QCoreApplication::translate(
            "XCsvSelectionPage",
            "There are errors in the table. Click on the Edit button to fix them.");
    } else {
        text = QCoreApplication::translate(
            "XCsvSelectionPage", "Click on the Edit button to make changes to the table.");
    }
    label->setPalette(palette);
    label->setText(text);
    label->show();
    editButton->show();
}
