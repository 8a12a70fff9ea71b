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
    const QList<QPair<QString, QString>> texts = {
        {"rows", "<b>Rows</b>: Accessions"},
        {"columns", "<b>Columns</b>: Microsatellite markers"},
        {"csvCaption", "Comma-separated values (<b>.csv</b>) file"},
        {"csvPicture", ""},
        {"excelCaption", "Microsoft Excel (<b>.xls</b>) file"},
        {"excelPicture", ""}};
    int previous = -1;
    for (auto const& named : texts) {
        auto* label = m_dialog->findChild<QLabel*>(named.first);
        QVERIFY2(label, qPrintable(named.first));
        QCOMPARE(label->text(), named.second);
        // From top to bottom in this order.
        QVERIFY(layout->indexOf(label) > previous);
        previous = layout->indexOf(label);
    }
    auto* close = m_dialog->findChild<QPushButton*>(QStringLiteral("close"));
    QVERIFY(close);
    QCOMPARE(layout->indexOf(close), layout->count() - 1);
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
