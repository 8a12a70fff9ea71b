#include "TableStatus.h"

#include "CenterResize.h"
#include "XCsvEditor.h"
#include "XCsvTableModel.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPalette>
#include <QPushButton>

namespace TableStatus {

void show(QLabel* label, QPushButton* editButton, bool const& hasErrors)
{
    QPalette palette;
    QString text;
    if (hasErrors) {
        palette.setBrush(QPalette::WindowText, QBrush(Qt::red, Qt::SolidPattern));
        text = QCoreApplication::translate(
            "XCsvSelectionPage",
            "There are errors in the csv file. Click on the Edit button to fix them.");
    } else {
        text = QCoreApplication::translate(
            "XCsvSelectionPage", "Click on the Edit button to make changes to the csv file.");
    }
    label->setPalette(palette);
    label->setText(text);
    label->show();
    editButton->show();
}

void edit(XCsv* csv, XCsvTableModel* model)
{
    if (!csv)
        return;
    XCsvEditor editor(csv, true, nullptr);
    centerResize(editor, 60);
    editor.exec();
    model->check();
}

} // namespace TableStatus
