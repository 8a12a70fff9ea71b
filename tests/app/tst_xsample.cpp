#include "VireonResources.h"
#include "XSample.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

class TestXSample : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void layout();
    void closeButtonEndsDialog();
    void windowCloseEndsDialog();
    void picturesShown();
    void missingPicturesLeaveLabelsEmpty();

private:
    XSample* m_dialog = nullptr;
};

void TestXSample::init()
{
    initVireonResources();
    m_dialog = new XSample;
}

void TestXSample::cleanup()
{
    delete m_dialog;
    m_dialog = nullptr;
}

void TestXSample::layout()
{
    auto* layout = qobject_cast<QVBoxLayout*>(m_dialog->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 9);
    const QStringList texts = {"<b>Rows</b>: Accessions",
                               "<b>Columns</b>: Microsatellite markers",
                               "",
                               "Comma-separated values (<b>.csv</b>) file",
                               "",
                               "",
                               "Microsoft Excel (<b>.xls</b>) file",
                               ""};
    for (int i = 0; i < 8; ++i) {
        auto* label = qobject_cast<QLabel*>(layout->itemAt(i)->widget());
        QVERIFY2(label, qPrintable(QString::number(i)));
        QCOMPARE(label->text(), texts.at(i));
    }
    auto* close = qobject_cast<QPushButton*>(layout->itemAt(8)->widget());
    QVERIFY(close);
    QCOMPARE(close->text(), QStringLiteral("Close"));
    QCOMPARE(m_dialog->windowTitle(), QString());
}

void TestXSample::closeButtonEndsDialog()
{
    auto* close = m_dialog->findChild<QPushButton*>(QStringLiteral("close"));
    QTimer::singleShot(0, close, [close] { QTest::mouseClick(close, Qt::LeftButton); });
    QCOMPARE(m_dialog->exec(), int(QDialog::Rejected));
    QVERIFY(!m_dialog->isVisible());
}

void TestXSample::windowCloseEndsDialog()
{
    QTimer::singleShot(0, m_dialog, [this] { m_dialog->close(); });
    QCOMPARE(m_dialog->exec(), int(QDialog::Rejected));
    QVERIFY(!m_dialog->isVisible());
}

void TestXSample::picturesShown()
{
    for (char const* name : {"csvPicture", "excelPicture"}) {
        auto* picture = m_dialog->findChild<QLabel*>(QLatin1String(name));
        QVERIFY(picture->pixmap(Qt::ReturnByValue).width() > 300);
    }
}

void TestXSample::missingPicturesLeaveLabelsEmpty()
{
    // Take the images away for this one dialog.
    Q_CLEANUP_RESOURCE(vireon);
    delete m_dialog;
    m_dialog = new XSample;
    Q_INIT_RESOURCE(vireon);
    for (char const* name : {"csvPicture", "excelPicture"}) {
        auto* picture = m_dialog->findChild<QLabel*>(QLatin1String(name));
        QVERIFY(picture);
        QVERIFY(picture->pixmap(Qt::ReturnByValue).isNull());
    }
}

QTEST_MAIN(TestXSample)
#include "tst_xsample.moc"
