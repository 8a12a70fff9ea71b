#include "XWizard.h"

#include "XCsv.h"
#include "XCsvSelectionPage.h"
#include "XFirstPage.h"
#include "XManualEditingPage.h"
#include "XSettingsPage.h"

XWizard::XWizard(QWidget* parent)
    : QWizard(parent), m_selection(new XCsvSelectionPage(this)),
      m_manual(new XManualEditingPage(this))
{
    setPage(FirstPage, new XFirstPage(this));
    setPage(SelectionPage, m_selection);
    setPage(ManualPage, m_manual);
    setPage(SettingsPage, new XSettingsPage(this));
    connect(this, &QDialog::finished, this, qOverload<int>(&XWizard::finished));
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
    if (field(QStringLiteral("file")).toBool()) {
        delete manual;
        emit finished(csv, src, iterations, seed);
    } else {
        delete csv;
        delete src;
        emit finished(manual, nullptr, iterations, seed);
    }
}
