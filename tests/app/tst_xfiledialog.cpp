#include "ModalDialogs.h"
#include "XFileDialog.h"

#include <QFileDialog>
#include <QtTest>

class TestXFileDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void openHookAnswers();
    void saveHookAnswers();
    void hooksAreSeparate();
    void emptyHookOpensRealDialog_data();
    void emptyHookOpensRealDialog();
};

void TestXFileDialog::cleanup()
{
    stopWatchingModals();
    XFileDialog::setOpenHook({});
    XFileDialog::setSaveHook({});
}

void TestXFileDialog::openHookAnswers()
{
    QWidget window;
    QWidget* seenParent = nullptr;
    QString seenFilter;
    XFileDialog::setOpenHook([&](QWidget* parent, QString const& filter) {
        seenParent = parent;
        seenFilter = filter;
        return QStringLiteral("/data/in.csv");
    });
    QCOMPARE(XFileDialog::openFileName(&window, QStringLiteral("Spreadsheets (*.csv *.xls)")),
             QStringLiteral("/data/in.csv"));
    QCOMPARE(seenParent, &window);
    QCOMPARE(seenFilter, QStringLiteral("Spreadsheets (*.csv *.xls)"));
}

void TestXFileDialog::saveHookAnswers()
{
    QString seenFilter;
    XFileDialog::setSaveHook([&](QWidget*, QString const& filter) {
        seenFilter = filter;
        return QStringLiteral("/data/out.ccw");
    });
    QCOMPARE(XFileDialog::saveFileName(nullptr, QStringLiteral("Workspaces (*.ccw)")),
             QStringLiteral("/data/out.ccw"));
    QCOMPARE(seenFilter, QStringLiteral("Workspaces (*.ccw)"));
}

void TestXFileDialog::hooksAreSeparate()
{
    int opens = 0;
    int saves = 0;
    XFileDialog::setOpenHook([&](QWidget*, QString const&) {
        ++opens;
        return QStringLiteral("open");
    });
    XFileDialog::setSaveHook([&](QWidget*, QString const&) {
        ++saves;
        return QStringLiteral("save");
    });
    QCOMPARE(XFileDialog::openFileName(nullptr, QString()), QStringLiteral("open"));
    QCOMPARE(XFileDialog::saveFileName(nullptr, QString()), QStringLiteral("save"));
    QCOMPARE(XFileDialog::saveFileName(nullptr, QString()), QStringLiteral("save"));
    QCOMPARE(opens, 1);
    QCOMPARE(saves, 2);
}

void TestXFileDialog::emptyHookOpensRealDialog_data()
{
    QTest::addColumn<bool>("save");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
}

void TestXFileDialog::emptyHookOpensRealDialog()
{
    QFETCH(bool, save);
    XFileDialog::setOpenHook([](QWidget*, QString const&) { return QStringLiteral("hooked"); });
    XFileDialog::setSaveHook([](QWidget*, QString const&) { return QStringLiteral("hooked"); });
    // Clearing a hook brings the real dialog back; cancelling it gives no name.
    XFileDialog::setOpenHook({});
    XFileDialog::setSaveHook({});
    QString filters;
    whenModalOpens([&filters](QWidget* modal) {
        if (auto* dialog = qobject_cast<QFileDialog*>(modal))
            filters = dialog->nameFilters().join(QLatin1Char(';'));
        modal->close();
    });
    const QString filter = QStringLiteral("Spreadsheets (*.csv *.xls)");
    const QString name = save ? XFileDialog::saveFileName(nullptr, filter)
                              : XFileDialog::openFileName(nullptr, filter);
    QCOMPARE(name, QString());
    QCOMPARE(filters, filter);
}

QTEST_MAIN(TestXFileDialog)
#include "tst_xfiledialog.moc"
