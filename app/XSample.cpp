#include "XSample.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

XSample::XSample(QWidget* parent)
    : QDialog(parent), m_csvPicture(new QLabel(this)), m_excelPicture(new QLabel(this)),
      m_close(new QPushButton(tr("Close"), this))
{
    m_csvPicture->setObjectName(QStringLiteral("csvPicture"));
    m_excelPicture->setObjectName(QStringLiteral("excelPicture"));
    m_close->setObjectName(QStringLiteral("close"));
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    // A missing picture leaves its label empty.
    m_csvPicture->setPixmap(QPixmap(QStringLiteral(":/img/csv_example")));
    m_excelPicture->setPixmap(QPixmap(QStringLiteral(":/img/excel_example")));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("<b>Rows</b>: Accessions"), this));
    layout->addWidget(new QLabel(tr("<b>Columns</b>: Microsatellite markers"), this));
    layout->addWidget(new QLabel(this));
    layout->addWidget(new QLabel(tr("Comma-separated values (<b>.csv</b>) file"), this));
    layout->addWidget(m_csvPicture);
    layout->addWidget(new QLabel(this));
    layout->addWidget(new QLabel(tr("Microsoft Excel (<b>.xls</b>) file"), this));
    layout->addWidget(m_excelPicture);
    layout->addWidget(m_close);
}
