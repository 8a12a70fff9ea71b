#include "XFirstPage.h"

#include "XWizard.h"

#include <QRadioButton>
#include <QVBoxLayout>

XFirstPage::XFirstPage(QWidget* parent)
    : QWizardPage(parent), m_file(new QRadioButton(tr("Input from an existing file"), this)),
      m_manual(new QRadioButton(tr("Input data manually"), this))
{
    setTitle(tr("Start"));
    setSubTitle(tr("Select the action you want to perform"));
    m_file->setObjectName(QStringLiteral("fromFile"));
    m_manual->setObjectName(QStringLiteral("manually"));
    m_file->setChecked(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_file);
    layout->addWidget(m_manual);
    registerField(QStringLiteral("file"), m_file);
    registerField(QStringLiteral("manual"), m_manual);
}

int XFirstPage::nextId() const
{
    if (m_file->isChecked())
        return XWizard::SelectionPage;
    return m_manual->isChecked() ? XWizard::ManualPage : XWizard::FirstPage;
}
