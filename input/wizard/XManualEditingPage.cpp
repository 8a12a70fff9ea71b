#include "XManualEditingPage.h"

#include "WizardFocus.h"
#include "XCellValue.h"
#include "XCsv.h"
#include "XWizard.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

XManualEditingPage::XManualEditingPage(QWidget* parent)
    : QWizardPage(parent), m_rows(new QSpinBox(this)), m_columns(new QSpinBox(this)),
      m_fill(new QLineEdit(this)),
      m_hint(new QLabel(tr("Click on the button to create a table using the values above."), this)),
      m_create(new QPushButton(tr("Create"), this)), m_status(new QLabel(this)),
      m_edit(new QPushButton(tr("Edit"), this))
{
    setTitle(tr("Manual editing"));
    setSubTitle(tr("Create and edit a new table"));
    m_rows->setMinimum(1);
    m_columns->setMinimum(1);
    m_status->setWordWrap(true);
    m_rows->setObjectName(QStringLiteral("rows"));
    m_columns->setObjectName(QStringLiteral("columns"));
    m_fill->setObjectName(QStringLiteral("fill"));
    m_hint->setObjectName(QStringLiteral("hint"));
    m_create->setObjectName(QStringLiteral("create"));
    m_status->setObjectName(QStringLiteral("status"));
    m_edit->setObjectName(QStringLiteral("edit"));

    auto* inputs = new QGridLayout;
    inputs->addWidget(new QLabel(tr("Rows"), this), 0, 0);
    inputs->addWidget(m_rows, 0, 1);
    inputs->addWidget(new QLabel(tr("Columns"), this), 1, 0);
    inputs->addWidget(m_columns, 1, 1);
    inputs->addWidget(new QLabel(tr("Fill character"), this), 2, 0);
    inputs->addWidget(m_fill, 2, 1);
    auto* create = new QHBoxLayout;
    create->addWidget(m_hint, 1);
    create->addWidget(m_create);
    auto* status = new QHBoxLayout;
    status->addWidget(m_status, 1);
    status->addWidget(m_edit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(inputs);
    layout->addLayout(create);
    layout->addLayout(status);
    layout->addStretch(1);

    connect(m_create, &QPushButton::clicked, this, &XManualEditingPage::createButtonClicked);
    connect(m_edit, &QPushButton::clicked, this, &XManualEditingPage::editButtonClicked);
}

XManualEditingPage::~XManualEditingPage() = default;

int XManualEditingPage::nextId() const
{
    return XWizard::SettingsPage;
}

XCsv* XManualEditingPage::takeCsv()
{
    return m_csv.take();
}

void XManualEditingPage::initializePage()
{
    m_csv.drop();
    m_rows->setValue(10);
    m_columns->setValue(10);
    m_fill->setText(XCellValue::missingMark());
    m_rows->setEnabled(true);
    m_columns->setEnabled(true);
    m_hint->show();
    m_create->show();
    m_status->hide();
    m_edit->hide();
}

bool XManualEditingPage::isComplete() const
{
    return m_csv.isReady();
}

void XManualEditingPage::createButtonClicked()
{
    // The fill text goes in exactly as typed: empty or long texts included.
    const QString fill = m_fill->text();
    const int rows = m_rows->value();
    const int columns = m_columns->value();
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (int c = 1; c <= columns; ++c)
        header << QStringLiteral("Column %1").arg(c);
    grid << header;
    for (int r = 1; r <= rows; ++r) {
        XCsv::Row row{QStringLiteral("Row %1").arg(r)};
        for (int c = 1; c <= columns; ++c)
            row << fill;
        grid << row;
    }
    m_csv.reset(new XCsv(grid, nullptr));
    // The size is fixed from here on; the editor changes it row by row.
    m_rows->setEnabled(false);
    m_columns->setEnabled(false);
    m_hint->hide();
    m_create->hide();
    switchState(m_csv.hasErrors());
    editButtonClicked();
}

void XManualEditingPage::editButtonClicked()
{
    if (!m_csv.table())
        return;
    m_csv.edit();
    switchState(m_csv.hasErrors());
    focusForward(wizard());
}

void XManualEditingPage::switchState(bool const& hasErrors)
{
    EditedTable::showStatus(m_status, m_edit, hasErrors);
    emit completeChanged();
}
