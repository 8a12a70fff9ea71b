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
    std::unique_ptr<XCsv> csv(m_selection->takeCsv());
    std::unique_ptr<XCsv> src(m_selection->takeSrc());
    std::unique_ptr<XCsv> manual(m_manual->takeCsv());
    if (result != QDialog::Accepted)
        return;
    XAnalysisRequest request;
    if (field(QStringLiteral("file")).toBool()) {
        request.files.add(AnalysisInputs::InputTable, csv ? m_selection->csvFile() : QString());
        request.files.add(AnalysisInputs::StartingCollection,
                          src ? m_selection->srcFile() : QString());
        request.input = std::move(csv);
        request.start = std::move(src);
    } else {
        request.input = std::move(manual);
    }
    if (field(QStringLiteral("exact")).toBool()) {
        request.settings = XSearchSettings::exact(field(QStringLiteral("budget")).toInt());
    } else {
        request.settings = XSearchSettings::reproducible(
            field(QStringLiteral("iterations")).toInt(), field(QStringLiteral("seed")).toInt());
    }
    emit finished(request);
}
