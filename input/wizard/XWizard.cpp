#include "XWizard.h"

#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XFirstPage.h"
#include "XManualEditingPage.h"
#include "XSettingsPage.h"

#include <QMessageBox>
#include <QPushButton>

XWizard::XWizard(QWidget* parent)
    : QWizard(parent), m_selection(new XCsvSelectionPage(this)),
      m_manual(new XManualEditingPage(this))
{
    setPage(FirstPage, new XFirstPage(this));
    setPage(SelectionPage, m_selection);
    setPage(ManualPage, m_manual);
    setPage(SettingsPage, new XSettingsPage(this));
    connect(this, &QDialog::finished, this, qOverload<int>(&XWizard::finished));
    // Enter on a focused Back would go back and lose the page's table.
    if (auto* back = qobject_cast<QPushButton*>(button(QWizard::BackButton)))
        back->setAutoDefault(false);
}

bool XWizard::holdsTables() const
{
    return m_selection->csv() || m_selection->src() || m_manual->csv();
}

void XWizard::reject()
{
    if (holdsTables()) {
        QMessageBox box(QMessageBox::Question, tr("Discard Tables"),
                        tr("Discard the tables of this analysis?"), QMessageBox::NoButton, this);
        QPushButton* discard = box.addButton(tr("Discard"), QMessageBox::DestructiveRole);
        QPushButton* keep = box.addButton(tr("Cancel"), QMessageBox::RejectRole);
        box.setDefaultButton(keep);
        box.setEscapeButton(keep);
        box.exec();
        if (box.clickedButton() != discard)
            return;
    }
    QWizard::reject();
}

void XWizard::finished(int result)
{
    XCsv* csv = m_selection->takeCsv();
    XCsv* src = m_selection->takeSrc();
    XCsv* manual = m_manual->takeCsv();
    if (result != QDialog::Accepted) {
        delete csv;
        delete src;
        delete manual;
        return;
    }
    const int iterations = field(QStringLiteral("iterations")).toInt();
    const int seed = field(QStringLiteral("seed")).toInt();
    emit searchChosen(field(QStringLiteral("exact")).toBool(),
                      field(QStringLiteral("budget")).toInt());
    if (field(QStringLiteral("file")).toBool()) {
        delete manual;
        emit filesChosen(csv ? m_selection->csvFile() : QString(),
                         src ? m_selection->srcFile() : QString());
        emit finished(csv, src, iterations, seed);
    } else {
        delete csv;
        delete src;
        emit filesChosen(QString(), QString());
        emit finished(manual, nullptr, iterations, seed);
    }
}
