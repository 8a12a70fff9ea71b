#include "XCsvSelectionPage.h"

#include "XCsv.h"
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

XCsvSelectionPage::~XCsvSelectionPage() = default;

XCsv* XCsvSelectionPage::takeCsv()
{
    return m_csv.take();
}

XCsv* XCsvSelectionPage::takeSrc()
{
    return m_src.take();
}

void XCsvSelectionPage::initializePage()
{
    m_csv.drop();
    m_src.drop();
    m_csvFile->clear();
    m_srcCheckbox->setChecked(false);
    m_csvStatus->hide();
    m_csvEdit->hide();
    m_srcCheckbox->hide();
    switchSrcSection(false);
}

bool XCsvSelectionPage::isComplete() const
{
    if (!m_csv.isReady())
        return false;
    return !m_srcCheckbox->isChecked() || m_src.isReady();
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
    m_csv.reset(table);
    m_csvFile->setText(fileName);
    m_srcCheckbox->show();
    m_srcCheckbox->setChecked(false);
    switchState(m_csvStatus, m_csvEdit, m_csv.hasErrors());
}

void XCsvSelectionPage::csvEditButtonClicked()
{
    if (!m_csv.table())
        return;
    m_csv.edit();
    switchState(m_csvStatus, m_csvEdit, m_csv.hasErrors());
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
    m_src.reset(table);
    m_srcFile->setText(fileName);
    switchState(m_srcStatus, m_srcEdit, m_src.hasErrors());
}

void XCsvSelectionPage::srcEditButtonClicked()
{
    if (!m_src.table())
        return;
    m_src.edit();
    switchState(m_srcStatus, m_srcEdit, m_src.hasErrors());
}

void XCsvSelectionPage::switchState(QLabel* label, QPushButton* editButton, bool const& hasErrors)
{
    EditedTable::showStatus(label, editButton, hasErrors);
    emit completeChanged();
}

void XCsvSelectionPage::switchSrcSection(bool const& on)
{
    m_src.drop();
    m_srcFile->clear();
    m_srcStatus->hide();
    m_srcEdit->hide();
    m_srcFile->setVisible(on);
    m_srcBrowse->setVisible(on);
}
