#include "XSample.h"

#include "FileFormats.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

XSample::XSample(QWidget* parent) : QDialog(parent), m_close(new QPushButton(tr("Close"), this))
{
    m_close->setObjectName(QStringLiteral("close"));
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    auto* rows = new QLabel(tr("<b>Rows</b>: Accessions"), this);
    auto* columns = new QLabel(tr("<b>Columns</b>: Microsatellite markers"), this);
    rows->setObjectName(QStringLiteral("rows"));
    columns->setObjectName(QStringLiteral("columns"));
    layout->addWidget(rows);
    layout->addWidget(columns);
    for (FileFormat const& format : fileFormats()) {
        if (!format.samplePicture)
            continue;
        const QString name = QString::fromLatin1(format.sampleName);
        auto* caption = new QLabel(tr(format.sampleText), this);
        caption->setObjectName(name + QStringLiteral("Caption"));
        auto* picture = new QLabel(this);
        picture->setObjectName(name + QStringLiteral("Picture"));
        // A missing picture leaves its label empty.
        picture->setPixmap(QPixmap(QString::fromLatin1(format.samplePicture)));
        layout->addWidget(new QLabel(this));
        layout->addWidget(caption);
        layout->addWidget(picture);
    }
    layout->addWidget(m_close);
}
