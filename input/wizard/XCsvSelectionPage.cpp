#include "XCsvSelectionPage.h"

#include "FileFormats.h"
#include "TableChecks.h"
#include "TableNotes.h"
#include "TableReading.h"
#include "TableRules.h"
#include "WizardFocus.h"
#include "XCsv.h"
#include "XFileDialog.h"
#include "XSpreadsheet.h"
#include "XWizard.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>

namespace {

// The warnings under a table, one per line: what the reader said of the file
// (its encoding), then what TableNotes finds in the table itself.
QString shownNotes(QStringList const& readNotes, XCsv const& table)
{
    return (readNotes + TableNotes::notes(table)).join(QLatin1Char('\n'));
}

} // namespace

XCsvSelectionPage::XCsvSelectionPage(QWidget* parent)
    : QWizardPage(parent), m_csvFile(new QLineEdit(this)),
      m_csvBrowse(new QPushButton(tr("Browse..."), this)), m_csvStatus(new QLabel(this)),
      m_csvEdit(new QPushButton(tr("Edit"), this)), m_csvNote(new QLabel(this)),
      m_srcCheckbox(new QCheckBox(tr("Start from an existing core collection"), this)),
      m_srcFile(new QLineEdit(this)), m_srcBrowse(new QPushButton(tr("Browse..."), this)),
      m_srcStatus(new QLabel(this)), m_srcEdit(new QPushButton(tr("Edit"), this)),
      m_srcNote(new QLabel(this))
{
    setTitle(tr("Select file"));
    setSubTitle(tr("Preview and edit the input spreadsheet"));
    m_csvFile->setReadOnly(true);
    m_srcFile->setReadOnly(true);
    QPalette warning;
    warning.setBrush(QPalette::WindowText, QBrush(TableChecks::warningColor()));
    for (QLabel* label : {m_csvStatus, m_srcStatus, m_csvNote, m_srcNote})
        label->setWordWrap(true);
    for (QLabel* note : {m_csvNote, m_srcNote})
        note->setPalette(warning);

    m_csvFile->setObjectName(QStringLiteral("inputFile"));
    m_csvBrowse->setObjectName(QStringLiteral("inputBrowse"));
    m_csvStatus->setObjectName(QStringLiteral("inputStatus"));
    m_csvEdit->setObjectName(QStringLiteral("inputEdit"));
    m_csvNote->setObjectName(QStringLiteral("inputNote"));
    m_srcCheckbox->setObjectName(QStringLiteral("startCheck"));
    m_srcFile->setObjectName(QStringLiteral("startFile"));
    m_srcBrowse->setObjectName(QStringLiteral("startBrowse"));
    m_srcStatus->setObjectName(QStringLiteral("startStatus"));
    m_srcEdit->setObjectName(QStringLiteral("startEdit"));
    m_srcNote->setObjectName(QStringLiteral("startNote"));

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_csvFile, 0, 0);
    layout->addWidget(m_csvBrowse, 0, 1);
    layout->addWidget(m_csvStatus, 1, 0);
    layout->addWidget(m_csvEdit, 1, 1);
    layout->addWidget(m_csvNote, 2, 0, 1, 2);
    layout->addWidget(m_srcCheckbox, 3, 0, 1, 2);
    layout->addWidget(m_srcFile, 4, 0);
    layout->addWidget(m_srcBrowse, 4, 1);
    layout->addWidget(m_srcStatus, 5, 0);
    layout->addWidget(m_srcEdit, 5, 1);
    layout->addWidget(m_srcNote, 6, 0, 1, 2);
    layout->setRowStretch(7, 1);

    connect(m_csvBrowse, &QPushButton::clicked, this, &XCsvSelectionPage::csvBrowseButtonClicked);
    connect(m_csvEdit, &QPushButton::clicked, this, &XCsvSelectionPage::csvEditButtonClicked);
    connect(m_srcCheckbox, &QCheckBox::toggled, this, &XCsvSelectionPage::srcCheckboxToggled);
    connect(m_srcBrowse, &QPushButton::clicked, this, &XCsvSelectionPage::srcBrowseButtonClicked);
    connect(m_srcEdit, &QPushButton::clicked, this, &XCsvSelectionPage::srcEditButtonClicked);
}

XCsvSelectionPage::~XCsvSelectionPage() = default;

int XCsvSelectionPage::nextId() const
{
    return XWizard::SettingsPage;
}

XCsv* XCsvSelectionPage::takeCsv()
{
    return m_csv.take();
}

XCsv* XCsvSelectionPage::takeSrc()
{
    return m_src.take();
}

QString XCsvSelectionPage::csvFile() const
{
    return m_csvFile->text();
}

QString XCsvSelectionPage::srcFile() const
{
    return m_srcFile->text();
}

void XCsvSelectionPage::initializePage()
{
    m_csv.drop();
    m_src.drop();
    m_csvFile->clear();
    m_srcCheckbox->setChecked(false);
    m_csvStatus->hide();
    m_csvEdit->hide();
    m_csvNote->hide();
    m_csvProblem.clear();
    m_srcCheckbox->hide();
    switchSrcSection(false);
}

bool XCsvSelectionPage::isComplete() const
{
    if (!m_csv.isReady() || !m_csvProblem.isEmpty())
        return false;
    return !m_srcCheckbox->isChecked() || (m_src.isReady() && m_srcProblem.isEmpty());
}

XCsv* XCsvSelectionPage::parseFile(QString const& fileName, QStringList* notes) const
{
    QString error;
    XCsv* table = nullptr;
    if (TableReading::read(window(), fileName, &table, &error, notes) == TableReading::Failed)
        QMessageBox::critical(nullptr, tr("Error"), error);
    return table;
}

XCsv* XCsvSelectionPage::browse(QString& fileName, QStringList* notes)
{
    const QString filter = tr("Spreadsheets %1").arg(QLatin1Char('(') + readablePatterns() + ')');
    fileName = XFileDialog::openFileName(this, filter).trimmed();
    return fileName.isEmpty() ? nullptr : parseFile(fileName, notes);
}

void XCsvSelectionPage::csvBrowseButtonClicked()
{
    QString fileName;
    QStringList notes;
    XCsv* table = browse(fileName, &notes);
    if (!table)
        return;
    m_csvReadNotes = notes;
    m_csv.reset(table);
    m_csvFile->setText(fileName);
    m_srcCheckbox->show();
    m_srcCheckbox->setChecked(false);
    refresh();
}

void XCsvSelectionPage::csvEditButtonClicked()
{
    if (!m_csv.table())
        return;
    m_csv.edit();
    refresh();
    focusForward(wizard());
}

void XCsvSelectionPage::srcCheckboxToggled(bool checked)
{
    switchSrcSection(checked);
    emit completeChanged();
}

void XCsvSelectionPage::srcBrowseButtonClicked()
{
    QString fileName;
    QStringList notes;
    XCsv* table = browse(fileName, &notes);
    if (!table)
        return;
    m_srcReadNotes = notes;
    m_src.reset(table);
    m_srcFile->setText(fileName);
    refresh();
}

void XCsvSelectionPage::srcEditButtonClicked()
{
    if (!m_src.table())
        return;
    m_src.edit();
    refresh();
    focusForward(wizard());
}

void XCsvSelectionPage::refresh()
{
    m_csvProblem.clear();
    m_srcProblem.clear();
    if (XCsv const* csv = m_csv.table()) {
        m_csvProblem = TableRules::problem(*csv);
        EditedTable::showStatus(m_csvStatus, m_csvEdit, m_csv.hasErrors(), m_csvProblem);
        m_csvNote->setText(shownNotes(m_csvReadNotes, *csv));
        m_csvNote->setVisible(!m_csvNote->text().isEmpty());
    }
    if (XCsv const* src = m_src.table()) {
        m_srcProblem = TableRules::problem(*src);
        if (m_srcProblem.isEmpty() && m_csv.table())
            m_srcProblem = TableRules::headerProblem(*m_csv.table(), *src);
        EditedTable::showStatus(m_srcStatus, m_srcEdit, m_src.hasErrors(), m_srcProblem);
        m_srcNote->setText(shownNotes(m_srcReadNotes, *src));
        m_srcNote->setVisible(!m_srcNote->text().isEmpty());
    }
    emit completeChanged();
}

void XCsvSelectionPage::switchSrcSection(bool const& on)
{
    m_src.drop();
    m_srcFile->clear();
    m_srcProblem.clear();
    m_srcStatus->hide();
    m_srcEdit->hide();
    m_srcNote->hide();
    m_srcFile->setVisible(on);
    m_srcBrowse->setVisible(on);
}
