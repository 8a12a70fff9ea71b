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
    layout->addWidget(new QLabel(tr("<b>Rows</b>: Accessions"), this));
    layout->addWidget(new QLabel(tr("<b>Columns</b>: Microsatellite markers"), this));
    for (FileFormat const& format : fileFormats()) {
        if (!format.samplePicture)
            continue;
        auto* picture = new QLabel(this);
        picture->setObjectName(QString::fromLatin1(format.sampleName));
        // A missing picture leaves its label empty.
        picture->setPixmap(QPixmap(QString::fromLatin1(format.samplePicture)));
        layout->addWidget(new QLabel(this));
        layout->addWidget(new QLabel(tr(format.sampleText), this));
        layout->addWidget(picture);
    }
    layout->addWidget(m_close);
}
