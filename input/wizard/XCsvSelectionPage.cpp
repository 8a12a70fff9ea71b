#include "XCsvSelectionPage.h"

#include "TableStatus.h"
#include "XCsv.h"
#include "XCsvTableModel.h"
#include "XFileDialog.h"
#include "XSpreadsheet.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

XCsvSelectionPage::XCsvSelectionPage(QWidget* parent)
    : QWizardPage(parent), m_csvFile(new QLineEdit(this)),
      m_csvBrowse(new QPushButton(tr("Browse..."), this)), m_csvStatus(new QLabel(this)),
      m_csvEdit(new QPushButton(tr("Edit"), this)),
      m_srcCheckbox(new QCheckBox(tr("Start from an existing core collection"), this)),
      m_srcFile(new QLineEdit(this)), m_srcBrowse(new QPushButton(tr("Browse..."), this)),
      m_srcStatus(new QLabel(this)), m_srcEdit(new QPushButton(tr("Edit"), this))
{
    setTitle(tr("Select file"));
    setSubTitle(tr("Preview and edit the input spreadsheet"));
    m_csvFile->setReadOnly(true);
    m_srcFile->setReadOnly(true);
    m_csvStatus->setWordWrap(true);
    m_srcStatus->setWordWrap(true);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_csvFile, 0, 0);
    layout->addWidget(m_csvBrowse, 0, 1);
    layout->addWidget(m_csvStatus, 1, 0);
    layout->addWidget(m_csvEdit, 1, 1);
    layout->addWidget(m_srcCheckbox, 2, 0, 1, 2);
    layout->addWidget(m_srcFile, 3, 0);
    layout->addWidget(m_srcBrowse, 3, 1);
    layout->addWidget(m_srcStatus, 4, 0);
    layout->addWidget(m_srcEdit, 4, 1);
    layout->setRowStretch(5, 1);

    connect(m_csvBrowse, &QPushButton::clicked, this, &XCsvSelectionPage::csvBrowseButtonClicked);
    connect(m_csvEdit, &QPushButton::clicked, this, &XCsvSelectionPage::csvEditButtonClicked);
    connect(m_srcCheckbox, &QCheckBox::toggled, this, &XCsvSelectionPage::srcCheckboxToggled);
    connect(m_srcBrowse, &QPushButton::clicked, this, &XCsvSelectionPage::srcBrowseButtonClicked);
    connect(m_srcEdit, &QPushButton::clicked, this, &XCsvSelectionPage::srcEditButtonClicked);
}

XCsvSelectionPage::~XCsvSelectionPage()
{
    dropCsv();
    dropSrc();
}

void XCsvSelectionPage::dropCsv()
{
    delete m_csvModel;
    delete m_csv;
    m_csvModel = nullptr;
    m_csv = nullptr;
}

void XCsvSelectionPage::dropSrc()
{
    delete m_srcModel;
    delete m_src;
    m_srcModel = nullptr;
    m_src = nullptr;
}

XCsv* XCsvSelectionPage::takeCsv()
{
    XCsv* csv = m_csv;
    m_csv = nullptr;
    return csv;
}

XCsv* XCsvSelectionPage::takeSrc()
{
    XCsv* src = m_src;
    m_src = nullptr;
    return src;
}

void XCsvSelectionPage::initializePage()
{
    dropCsv();
    dropSrc();
    m_csvFile->clear();
    m_srcCheckbox->setChecked(false);
    m_csvStatus->hide();
    m_csvEdit->hide();
    m_srcCheckbox->hide();
    switchSrcSection(false);
}

bool XCsvSelectionPage::isComplete() const
{
    if (!m_csv || !m_csvModel || m_csvModel->hasErrors())
        return false;
    if (m_srcCheckbox->isChecked())
        return m_src && m_srcModel && !m_srcModel->hasErrors();
    return true;
}

XCsv* XCsvSelectionPage::parseFile(QString const& fileName) const
{
    QString error;
    XCsv* table = XSpreadsheet::read(fileName, &error);
    if (!table)
        QMessageBox::critical(nullptr, tr("Error"), error);
    return table;
}

XCsv* XCsvSelectionPage::browse(QString& fileName)
{
    fileName =
        XFileDialog::openFileName(this, tr("Spreadsheets %1").arg(QStringLiteral("(*.csv *.xls)")))
            .trimmed();
    return fileName.isEmpty() ? nullptr : parseFile(fileName);
}

void XCsvSelectionPage::csvBrowseButtonClicked()
{
    QString fileName;
    XCsv* table = browse(fileName);
    if (!table)
        return;
    dropCsv();
    m_csv = table;
    m_csvModel = new XCsvTableModel(m_csv, true, this);
    m_csvFile->setText(fileName);
    m_srcCheckbox->show();
    m_srcCheckbox->setChecked(false);
    switchState(m_csvStatus, m_csvEdit, m_csvModel->hasErrors());
}

void XCsvSelectionPage::csvEditButtonClicked()
{
    if (!m_csv)
        return;
    TableStatus::edit(m_csv, m_csvModel);
    switchState(m_csvStatus, m_csvEdit, m_csvModel->hasErrors());
}

void XCsvSelectionPage::srcCheckboxToggled(bool checked)
{
    switchSrcSection(checked);
    emit completeChanged();
}

void XCsvSelectionPage::srcBrowseButtonClicked()
{
    QString fileName;
    XCsv* table = browse(fileName);
    if (!table)
        return;
    dropSrc();
    m_src = table;
    m_srcModel = new XCsvTableModel(m_src, true, this);
    m_srcFile->setText(fileName);
    switchState(m_srcStatus, m_srcEdit, m_srcModel->hasErrors());
}

void XCsvSelectionPage::srcEditButtonClicked()
{
    if (!m_src)
        return;
    TableStatus::edit(m_src, m_srcModel);
    switchState(m_srcStatus, m_srcEdit, m_srcModel->hasErrors());
}

void XCsvSelectionPage::switchState(QLabel* label, QPushButton* editButton, bool const& hasErrors)
{
    TableStatus::show(label, editButton, hasErrors);
    emit completeChanged();
}

void XCsvSelectionPage::switchSrcSection(bool const& on)
{
    dropSrc();
    m_srcFile->clear();
    m_srcStatus->hide();
    m_srcEdit->hide();
    m_srcFile->setVisible(on);
    m_srcBrowse->setVisible(on);
}
